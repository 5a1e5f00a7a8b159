#include "store/ZQLinkCheck.h"

#include <random>

namespace zmatrix {

namespace {

uint64_t randomBits() {
  try {
    std::random_device device;
    return static_cast<uint64_t>(device()) << 32 | device();
  } catch (...) {
    return reinterpret_cast<uintptr_t>(&largestAllocation);  // no random device: an address that the loader chooses
  }
}

}  // namespace

bool ZQLinkCheck::begin(int numberOfRoots, int lastSlot, long long largestLegalIndex) {
  roots_ = numberOfRoots;
  top_ = lastSlot;
  largestIndex_ = largestLegalIndex;
  randomAddend_ = randomBits() % prime;
  randomFactor_ = randomBits() % prime;
  const size_t numberOfWords = static_cast<size_t>(top_ >= 0 ? top_ : 0) / 64 + 1;
  return isBelowParent_.resize(numberOfWords) && reachesRoot_.resize(numberOfWords);
}

bool ZQLinkCheck::isSound(const ZQMatrixBase& matrix) {
  return !isBroken_ && forwardClaims_.value() == backwardClaims_.value() && allReachRoots(matrix);
}

/// The first element from a slot on whose slot number is below its parent's; -1 if there is none.
long long ZQLinkCheck::nextBelowParent(long long from) const {
  for (size_t word = wordOf(from); word < isBelowParent_.size(); ++word) {
    const uint64_t bits = word == wordOf(from) ? isBelowParent_[word] & -bitOf(from) : isBelowParent_[word];
    if (bits != 0) return static_cast<long long>(word) * 64 + __builtin_ctzll(bits);
  }
  return -1;
}

// Follows the parent links from each element that lies below its parent. 16 paths are followed round-robin, prefetching each next
// record, since parents lie anywhere. A path ends at an element that is known to reach a root; then all its elements are marked
// as known. A path of more steps than there are slots is a cycle. An empty slot on a path means that the fingerprints agreed by
// chance.
bool ZQLinkCheck::allReachRoots(const ZQMatrixBase& matrix) {
  struct Path {
    long long start = -1;
    long long at = -1;
    int steps = 0;
  };
  Path paths[pathsAtOnce];
  long long next = nextBelowParent(0);
  int numberOfPaths = 0;
  const auto begin = [&](Path& path) {
    if (next < 0) return false;
    path = {next, next};
    next = nextBelowParent(next + 1);
    return true;
  };
  while (numberOfPaths < pathsAtOnce && begin(paths[numberOfPaths])) ++numberOfPaths;
  while (numberOfPaths > 0) {
    for (int i = 0; i < numberOfPaths;) {
      Path& path = paths[i];
      if (!isKnownToReachRoot(path.at)) {
        const ZQMatrixBaseElement* element = matrix.elementAt(path.at);
        if (element == nullptr || ++path.steps > top_) return false;
        path.at += element->getOffsetToElementInPrevDimension();
        matrix.prefetchSlot(path.at);
        __builtin_prefetch(&reachesRoot_[wordOf(path.at)]);
      } else {
        for (long long at = path.start; !isKnownToReachRoot(at);
             at += matrix.elementAt(at)->getOffsetToElementInPrevDimension()) {
          reachesRoot_[wordOf(at)] |= bitOf(at);
        }
        if (!begin(path)) path = paths[--numberOfPaths];
        continue;
      }
      ++i;
    }
  }
  return true;
}

}  // namespace zmatrix
