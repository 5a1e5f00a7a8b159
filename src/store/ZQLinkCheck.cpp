#include "store/ZQLinkCheck.h"

#include <random>

namespace zmatrix {

namespace {

uint64_t randomBits() {
  try {
    std::random_device device;
    return static_cast<uint64_t>(device()) << 32 | device();
  } catch (...) {
    return reinterpret_cast<uintptr_t>(&largestAllocation);  // no device: what the loader made of the address
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
  return !isBroken_ && leading_.value() == led_.value() && allReachRoots(matrix);
}

/// The first element at or above a slot that stands below its parent; -1 if there is none.
long long ZQLinkCheck::nextBelowParent(long long from) const {
  for (size_t word = wordOf(from); word < isBelowParent_.size(); ++word) {
    const uint64_t bits = word == wordOf(from) ? isBelowParent_[word] & -bitOf(from) : isBelowParent_[word];
    if (bits != 0) return static_cast<long long>(word) * 64 + __builtin_ctzll(bits);
  }
  return -1;
}

// Parents lie anywhere, so that several ways are gone by turns: what one needs next is sent for while the others go on. A way
// ends where it is known that a root is reached, and is then known itself. After as many steps as there are slots it is a circle.
// An empty slot on the way shows that the fingerprints agreed by chance.
bool ZQLinkCheck::allReachRoots(const ZQMatrixBase& matrix) {
  struct Way {
    long long start = -1;
    long long at = -1;
    int steps = 0;
  };
  Way ways[waysAtOnce];
  long long next = nextBelowParent(0);
  int numberOfWays = 0;
  const auto begin = [&](Way& way) {
    if (next < 0) return false;
    way = {next, next};
    next = nextBelowParent(next + 1);
    return true;
  };
  while (numberOfWays < waysAtOnce && begin(ways[numberOfWays])) ++numberOfWays;
  while (numberOfWays > 0) {
    for (int i = 0; i < numberOfWays;) {
      Way& way = ways[i];
      if (!isKnown(way.at)) {
        const ZQMatrixBaseElement* element = matrix.elementAt(way.at);
        if (element == nullptr || ++way.steps > top_) return false;
        way.at += element->getOffsetToElementInPrevDimension();
        matrix.prefetchSlot(way.at);
        __builtin_prefetch(&reachesRoot_[wordOf(way.at)]);
      } else {
        for (long long at = way.start; !isKnown(at); at += matrix.elementAt(at)->getOffsetToElementInPrevDimension()) {
          reachesRoot_[wordOf(at)] |= bitOf(at);
        }
        if (!begin(way)) way = ways[--numberOfWays];
        continue;
      }
      ++i;
    }
  }
  return true;
}

}  // namespace zmatrix
