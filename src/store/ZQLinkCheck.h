// Whether the links of a block that comes from a file answer each other, found out while its elements pass by once, in order, and
// without looking at any other element. Each link is claimed from both sides: a parent claims its first child and that child the
// parent, an element claims the next of its field and that one its predecessor. A claim is a tuple of the two slots and, between
// siblings, of the parent and the begin of the field, which both must know. The two sides agree if they make the same claims as
// often, and that is compared by a fingerprint of each side: the product of r + a + s*b over its claims (a, b), modulo the prime
// 2^61 - 1, with r and s drawn anew for each check. Two sides that differ agree with a probability of at most n / 2^61 for n
// elements (Lipton, Fingerprinting Sets, 1989; Schwartz 1980), and nobody who makes a file knows r and s.
//
// What answering links leave possible is a circle of parents, which no root leads to. Any circle has an element that stands below
// its parent. There are few of these, since most are written after their parents: from each the way up is gone afterwards.
#pragma once

#include <cstdint>
#include <cstdlib>

#include "frame/ZQArray.h"
#include "store/ZQMatrixBase.h"

namespace zmatrix {

class ZQLinkCheck {
 public:
  /// For a block whose slots go up to `lastSlot`, the first of them roots. False if memory has run out.
  [[nodiscard]] bool begin(int numberOfRoots, int lastSlot, long long largestLegalIndex);

  /// Takes note of the element in a slot. Slots must come in ascending order.
  void add(int position, const ZQMatrixBaseElement& element) {
    const int next = element.getOffsetToNextElementInDimension();
    const int previous = element.getOffsetToPreviousElementInDimension();
    const int down = element.getOffsetToElementInNextDimension();
    const int up = element.getOffsetToElementInPrevDimension();
    const long long index = element.getIndexInDimension();
    const long long slot = position;
    if (down != 0) {
      isBroken_ |= slot + down < roots_ || slot + down > top_;
      leading_.multiply(randomAddend_ + pairOf(slot, slot + down));
    }
    if (position < roots_) {
      isBroken_ |= up != 0 || previous != 0 || next != 0;
      return;
    }
    const long long parent = slot + up;
    isBroken_ |= up == 0 || parent < 0 || parent > top_ || std::llabs(index) > largestIndex_;
    if (isBroken_) return;
    const uint64_t sibling =
        randomAddend_ + multiplied(next != 0 || previous != 0 ? fieldOf(parent, slot - index) : 0, randomFactor_);
    if (next != 0) {
      isBroken_ |= next < 0 || slot + next > top_;
      leading_.multiply(sibling + pairOf(slot, slot + next) + tagOfSiblings);
    }
    if (previous != 0) {
      isBroken_ |= previous > 0 || slot + previous < roots_;
      led_.multiply(sibling + pairOf(slot + previous, slot) + tagOfSiblings);
    } else {
      led_.multiply(randomAddend_ + pairOf(parent, slot));
    }
    if (up > 0) isBelowParent_[wordOf(slot)] |= bitOf(slot);
  }

  /// True if all links of the elements that have passed, and are now in the matrix, answer each other and lead to a root.
  bool isSound(const ZQMatrixBase& matrix);

 private:
  static constexpr int waysAtOnce = 16;
  static constexpr int bitsOfPrime = 61;
  static constexpr uint64_t prime = (uint64_t{1} << bitsOfPrime) - 1;

  // A slot takes 27 bits. A claim on a pair is the two slots side by side; one on siblings has a bit above them. A field is its
  // parent beside its begin, which is below 0 or beyond the block for some and is therefore moved up by 2^32.
  static constexpr int bitsOfSlot = 27;
  static constexpr uint64_t tagOfSiblings = uint64_t{1} << 2 * bitsOfSlot;
  static constexpr int bitsOfFieldBegin = 33;
  static constexpr long long fieldBeginZero = 1LL << (bitsOfFieldBegin - 1);

  __extension__ using Wide = unsigned __int128;

  /// a * b modulo the prime, not wholly reduced: below 2^61 + 8 for factors below 2^63.
  static uint64_t multiplied(uint64_t a, uint64_t b) {
    const Wide product = static_cast<Wide>(a) * b;
    const uint64_t sum = (static_cast<uint64_t>(product) & prime) + static_cast<uint64_t>(product >> bitsOfPrime);
    return (sum & prime) + (sum >> bitsOfPrime);
  }
  static uint64_t pairOf(long long from, long long to) {
    return static_cast<uint64_t>(from) << bitsOfSlot | static_cast<uint64_t>(to);
  }
  static uint64_t fieldOf(long long parent, long long fieldBegin) {
    return static_cast<uint64_t>(parent) << bitsOfFieldBegin | static_cast<uint64_t>(fieldBegin + fieldBeginZero);
  }

  struct Fingerprint {
    uint64_t product = 1;
    void multiply(uint64_t factor) { product = multiplied(product, factor); }
    uint64_t value() const { return product % prime; }
  };

  static size_t wordOf(long long slot) { return static_cast<size_t>(slot) >> 6; }
  static uint64_t bitOf(long long slot) { return uint64_t{1} << (static_cast<size_t>(slot) & 63); }
  bool isKnown(long long slot) const { return slot < roots_ || (reachesRoot_[wordOf(slot)] & bitOf(slot)) != 0; }
  long long nextBelowParent(long long from) const;
  bool allReachRoots(const ZQMatrixBase& matrix);

  int roots_ = 0;
  int top_ = -1;
  long long largestIndex_ = 0;
  uint64_t randomAddend_ = 0;
  uint64_t randomFactor_ = 0;
  Fingerprint leading_;  // claims on what stands below or behind
  Fingerprint led_;      // claims on what stands above or before
  bool isBroken_ = false;
  ZQArray<uint64_t> isBelowParent_;  // a bit a slot
  ZQArray<uint64_t> reachesRoot_;    // a bit a slot: a way up from here is known
};

}  // namespace zmatrix
