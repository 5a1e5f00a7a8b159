// Checks the links between the elements of a block that is read from a file: in one pass over the elements in slot order, without
// looking at other elements. Each link is stored in both its elements: a parent has its first child and the child its parent, an
// element has its next sibling and that one its previous sibling. Each side is a set of claims: a claim (a, b) is the pair of
// slots a and, between siblings, the parent and the field's begin b, which both siblings must agree on. All links are consistent
// if both sides make the same claims equally often. That is tested by a fingerprint of each side: the product of r + a + s*b over
// its claims, modulo the prime 2^61 - 1, with r and s drawn at random for each check. Different sides have the same fingerprint
// with a probability of at most n / 2^61 for n elements (Lipton, Fingerprinting Sets, 1989; Schwartz 1980), and the author of a
// file can't know r and s.
//
// Consistent links may still form a cycle of parents that no root leads to. Every cycle has an element whose slot lies below its
// parent's. Such elements are few, since most are written after their parents: from each of them the parent links are followed at
// the end.
#pragma once

#include <cstdint>
#include <cstdlib>

#include "frame/ZQArray.h"
#include "store/ZQMatrixBase.h"

namespace zmatrix {

class ZQLinkCheck {
 public:
  /// Prepares the check of a block whose slots go up to `lastSlot`, the first `numberOfRoots` of them roots. False if memory has
  /// run out.
  [[nodiscard]] bool begin(int numberOfRoots, int lastSlot, long long largestLegalIndex);

  /// Adds the claims of the element in a slot. Slots must come in ascending order.
  void add(int position, const ZQMatrixBaseElement& element) {
    const int next = element.getOffsetToNextElementInDimension();
    const int previous = element.getOffsetToPreviousElementInDimension();
    const int down = element.getOffsetToElementInNextDimension();
    const int up = element.getOffsetToElementInPrevDimension();
    const long long index = element.getIndexInDimension();
    const long long slot = position;
    if (down != 0) {
      isBroken_ |= slot + down < roots_ || slot + down > top_;
      forwardClaims_.multiply(randomAddend_ + pairOf(slot, slot + down));
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
      forwardClaims_.multiply(sibling + pairOf(slot, slot + next) + tagOfSiblings);
    }
    if (previous != 0) {
      isBroken_ |= previous > 0 || slot + previous < roots_;
      backwardClaims_.multiply(sibling + pairOf(slot + previous, slot) + tagOfSiblings);
    } else {
      backwardClaims_.multiply(randomAddend_ + pairOf(parent, slot));
    }
    if (up > 0) isBelowParent_[wordOf(slot)] |= bitOf(slot);
  }

  /// True if all links of the added elements, which are now in the matrix, are consistent and every element reaches a root.
  bool isSound(const ZQMatrixBase& matrix);

 private:
  static constexpr int pathsAtOnce = 16;
  static constexpr int bitsOfPrime = 61;
  static constexpr uint64_t prime = (uint64_t{1} << bitsOfPrime) - 1;

  // A slot takes 27 bits. The pair of a claim is the two slots side by side; siblings have one more bit set above them. A field
  // is its parent beside its begin; 2^32 is added to the begin, which may be negative or beyond the block.
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
  bool isKnownToReachRoot(long long slot) const { return slot < roots_ || (reachesRoot_[wordOf(slot)] & bitOf(slot)) != 0; }
  long long nextBelowParent(long long from) const;
  bool allReachRoots(const ZQMatrixBase& matrix);

  int roots_ = 0;
  int top_ = -1;
  long long largestIndex_ = 0;
  uint64_t randomAddend_ = 0;
  uint64_t randomFactor_ = 0;
  Fingerprint forwardClaims_;   // on first children and next siblings
  Fingerprint backwardClaims_;  // on parents and previous siblings
  bool isBroken_ = false;
  ZQArray<uint64_t> isBelowParent_;  // a bit per slot: its number is below its parent's
  ZQArray<uint64_t> reachesRoot_;    // a bit per slot: its parent links are known to lead to a root
};

}  // namespace zmatrix
