// The element records of the three tiers, one per slot of the block. A slot whose bytes are all 0 is empty. Links are relative to
// the record's own slot, in slots, so that a move of a field patches only its own elements, their parent and their children. The
// members that a step down reads are the first 16 bytes, and no record has padding.
#pragma once

#include <climits>

namespace zmatrix {

/// `value` + `addend` with wraparound: counts and links of a damaged file may have any value.
inline void addTo(int& value, int addend) {
  value = static_cast<int>(static_cast<unsigned>(value) + static_cast<unsigned>(addend));
}

/// Clears a record except its name.
template <class Element>
void clearRecord(Element& element) {
  const unsigned name = element.getName();
  element = Element();
  element.setName(name);
}

}  // namespace zmatrix

/// Element of the base tier: one step of a path.
class ZQMatrixBaseElement {
 public:
  long long getValue() const { return value_; }
  void setValue(long long newValue) { value_ = newValue; }
  int getWriteCount() const { return writeCount_; }
  void setWriteCount(int count) { writeCount_ = count; }
  void incrementWriteCount() { zmatrix::addTo(writeCount_, 1); }
  void decrementWriteCount() { zmatrix::addTo(writeCount_, -1); }
  int getIndexInDimension() const { return indexInDimension_; }
  void setIndexInDimension(int index) { indexInDimension_ = index; }
  int getOffsetToNextElementInDimension() const { return offsetToNextElementInDimension_; }
  void setOffsetToNextElementInDimension(int offset) { offsetToNextElementInDimension_ = offset; }
  int getOffsetToPreviousElementInDimension() const { return offsetToPreviousElementInDimension_; }
  void setOffsetToPreviousElementInDimension(int offset) { offsetToPreviousElementInDimension_ = offset; }
  int getOffsetToElementInNextDimension() const { return offsetToElementInNextDimension_; }
  void setOffsetToElementInNextDimension(int offset) {
    offsetToElementInNextDimension_ = offset;
    indexOfFirstChild_ = unknownIndex;
  }
  void addOffsetToElementInNextDimension(int offset) { zmatrix::addTo(offsetToElementInNextDimension_, offset); }
  int getOffsetToElementInPrevDimension() const { return offsetToElementInPrevDimension_; }
  void setOffsetToElementInPrevDimension(int offset) { offsetToElementInPrevDimension_ = offset; }
  void addOffsetToElementInPrevDimension(int offset) { zmatrix::addTo(offsetToElementInPrevDimension_, offset); }
  void clearMatrixData() { zmatrix::clearRecord(*this); }

  // --- not in the file
  static constexpr int unknownIndex = INT_MIN;  ///< no element has it
  /// A cache of the first child's coordinate, from which the field's begin follows; unknownIndex until it was read.
  int getIndexOfFirstChild() const { return indexOfFirstChild_; }
  void setIndexOfFirstChild(int index) { indexOfFirstChild_ = index; }
  /// A serial number that identifies the record among all that the matrix has or had; 0 in an empty slot.
  unsigned getName() const { return name_; }
  void setName(unsigned newName) { name_ = newName; }

 private:
  int offsetToElementInPrevDimension_ = 0;  // parent; 0 only at a root
  int offsetToElementInNextDimension_ = 0;  // first child; 0 if there is none
  int indexOfFirstChild_ = unknownIndex;
  unsigned name_ = 0;
  long long value_ = 0;                         // of the last write of the path that ends here
  int writeCount_ = 0;                          // writes of that path; 0 if only longer ones were written, -1 marks for removal
  int indexInDimension_ = 0;                    // the coordinate by which the parent reaches this element
  int offsetToNextElementInDimension_ = 0;      // next sibling, above 0; 0 at the field's last element
  int offsetToPreviousElementInDimension_ = 0;  // previous sibling, below 0; 0 at the field's first element
};

/// Element of the medium tier: adds the counts that conditional probabilities need.
class ZQMatrixMediumElement : public ZQMatrixBaseElement {
 public:
  int getWriteCountWithSuccessor() const { return writeCountWithSuccessor_; }
  void setWriteCountWithSuccessor(int count) { writeCountWithSuccessor_ = count; }
  void incrementWriteCountWithSuccessor() { zmatrix::addTo(writeCountWithSuccessor_, 1); }
  void decrementWriteCountWithSuccessor() { zmatrix::addTo(writeCountWithSuccessor_, -1); }
  void addWriteCountWithSuccessor(int count) { zmatrix::addTo(writeCountWithSuccessor_, count); }
  int getWriteCountWithoutPredecessor() const { return writeCountWithoutPredecessor_; }
  void setWriteCountWithoutPredecessor(int count) { writeCountWithoutPredecessor_ = count; }
  void incrementWriteCountWithoutPredecessor() { zmatrix::addTo(writeCountWithoutPredecessor_, 1); }
  void decrementWriteCountWithoutPredecessor() { zmatrix::addTo(writeCountWithoutPredecessor_, -1); }
  void clearMatrixData() { zmatrix::clearRecord(*this); }

 private:
  int writeCountWithSuccessor_ = 0;       // writes of the path that something followed
  int writeCountWithoutPredecessor_ = 0;  // writes of the path at the very start of a sequence
};

/// Element of the full tier: adds the symbol of a phrase, or the phrase of a symbol.
class ZQMatrixElement : public ZQMatrixMediumElement {
 public:
  int getSymbolID() const { return symbolId_; }
  void setSymbolID(int symbol) { symbolId_ = symbol; }
  int getSymbolDownLinkHandle() const { return symbolDownLinkHandle_; }
  void setSymbolDownLinkHandle(int handle) { symbolDownLinkHandle_ = handle; }
  void addOffsetToSymbolDownLinkHandle(int offset) { zmatrix::addTo(symbolDownLinkHandle_, offset); }
  void clearMatrixData() { zmatrix::clearRecord(*this); }

 private:
  int symbolId_ = 0;              // basic level: the symbol that this phrase stands for; 0 for none
  int symbolDownLinkHandle_ = 0;  // symbol level: position of the phrase's end element in the level below; 0 for none
};

static_assert(sizeof(ZQMatrixBaseElement) == 40 && sizeof(ZQMatrixMediumElement) == 48 && sizeof(ZQMatrixElement) == 56,
              "element records must have no padding");
