// An element in a matrix file: 32 bytes of the base tier's fields, 8 more of the medium tier's, 8 more of the full tier's. The
// first int is never negative, which tells an element from a run of empty slots. All links are relative, so nothing needs fixing
// up. A record that a save finds with a negative count is marked for removal, and is not written.
#pragma once

#include "file/ZQFileStream.h"
#include "store/ZQMatrixElements.h"

namespace zmatrix {

/// Bytes of an element by the type of the file's records.
constexpr size_t sizeOfElementInFile(int infoType) {
  return infoType < 1 ? 32 : infoType == 1 ? 40 : 48;
}

/// The same for the records of a tier.
template <class Element>
constexpr size_t sizeOfElementOf = sizeof(Element) - 8;  // what only the block needs stays out

// Each describing function names the fields of a tier once; `field` gets a getter, a setter and the offset.
template <class Field>
void describeElement(ZQMatrixBaseElement& e, Field field) {
  field(0, e.getWriteCount(), [&](int v) { e.setWriteCount(v); });
  field(4, e.getValue(), [&](long long v) { e.setValue(v); });
  field(12, e.getIndexInDimension(), [&](int v) { e.setIndexInDimension(v); });
  field(16, e.getOffsetToNextElementInDimension(), [&](int v) { e.setOffsetToNextElementInDimension(v); });
  field(20, e.getOffsetToPreviousElementInDimension(), [&](int v) { e.setOffsetToPreviousElementInDimension(v); });
  field(24, e.getOffsetToElementInNextDimension(), [&](int v) { e.setOffsetToElementInNextDimension(v); });
  field(28, e.getOffsetToElementInPrevDimension(), [&](int v) { e.setOffsetToElementInPrevDimension(v); });
}

template <class Field>
void describeElement(ZQMatrixMediumElement& e, Field field) {
  describeElement(static_cast<ZQMatrixBaseElement&>(e), field);
  field(32, e.getWriteCountWithSuccessor(), [&](int v) { e.setWriteCountWithSuccessor(v); });
  field(36, e.getWriteCountWithoutPredecessor(), [&](int v) { e.setWriteCountWithoutPredecessor(v); });
}

template <class Field>
void describeElement(ZQMatrixElement& e, Field field) {
  describeElement(static_cast<ZQMatrixMediumElement&>(e), field);
  field(40, e.getSymbolID(), [&](int v) { e.setSymbolID(v); });
  field(44, e.getSymbolDownLinkHandle(), [&](int v) { e.setSymbolDownLinkHandle(v); });
}

template <class Element>
void putElement(char* to, Element& element) {
  describeElement(element, [to](size_t offset, auto value, auto) { putLittleEndian(to + offset, value); });
}

/// Takes the fields that lie within the first `size` bytes; the others stay.
template <size_t size, class Element>
void getElement(const char* from, Element& element) {
  describeElement(element, [from](size_t offset, auto value, auto set) {
    if (offset + sizeof value <= size) set(getLittleEndian<decltype(value)>(from + offset));
  });
}

/// Nothing happens for a null element, or for one that is marked for removal.
template <class Element>
void writeMatrixElementToDisk(Element* element, ZQFileWriter& file) {
  if (element == nullptr || element->getWriteCount() < 0) return;
  putElement(file.claim(sizeOfElementOf<Element>), *element);
}

}  // namespace zmatrix
