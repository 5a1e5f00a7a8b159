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

bool ZQLinkCheck::begin(int numberOfRoots, int lastSlot, long long largestLegalIndex, bool isDense) {
  roots = numberOfRoots;
  top = lastSlot;
  largestIndex = largestLegalIndex;
  randomAddend = randomBits() % prime;
  randomFactor = randomBits() % prime;
  const size_t numberOfSlots = top >= 0 ? static_cast<size_t>(top) + 1 : 1;
  anchors.reset(static_cast<int*>(systemCalloc(numberOfSlots, sizeof(int))));
  if (anchors == nullptr) return false;
  if (isDense) pages.begin(anchors.get(), numberOfSlots * sizeof(int));
  return true;
}

bool ZQLinkCheck::isSound() {
  if (isBroken || leading.value() != led.value()) return false;
  for (unsigned i = 0; i < mostWaiting; ++i) passOnAnchorLater(0, 0);
  for (int position = roots; position <= top; ++position) {
    if (isBelowParent(position) && !reachesRoot(position)) return false;
  }
  return true;
}

// From anchor to anchor up to a root, and once more so that each is a root's from now on. After as many steps as there are slots
// it is a circle.
bool ZQLinkCheck::reachesRoot(int position) {
  int steps = 0;
  for (int at = position; isBelowParent(at); at = anchorAbove(at)) {
    if (++steps > top) return false;
  }
  for (int at = position; isBelowParent(at);) {
    const int above = anchorAbove(at);
    anchors[at] = 0;
    at = above;
  }
  return true;
}

}  // namespace zmatrix
