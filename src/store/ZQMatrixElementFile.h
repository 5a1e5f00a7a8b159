// The codec of an element in a matrix file: 32 bytes for the base tier's fields, 8 more for the medium tier's, 8 more for the
// full tier's. The first int, the write count, is not negative; a negative int instead is a run of empty slots. Links are
// relative to the slot and stored as they are. A record with a negative write count is marked for removal and not written.
#pragma once

#include "file/ZQFileStream.h"
#include "store/ZQMatrixElements.h"

namespace zmatrix {

/// Bytes of an element in a file whose info records have this type.
constexpr size_t sizeOfElementInFile(int infoType) {
  return infoType < 1 ? 32 : infoType == 1 ? 40 : 48;
}

/// The same for the records of a tier.
template <class Element>
constexpr size_t sizeOfElementOf = sizeof(Element) - 8;  // without name and indexOfFirstChild

// The fields of each tier, for both directions; `field` gets offset, value and setter.
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

/// Sets the fields that lie within the first `size` bytes; the others are left as they are.
template <size_t size, class Element>
void getElement(const char* from, Element& element) {
  describeElement(element, [from](size_t offset, auto value, auto set) {
    if (offset + sizeof value <= size) set(getLittleEndian<decltype(value)>(from + offset));
  });
}

/// Writes nothing for null or for an element that is marked for removal.
template <class Element>
void writeMatrixElementToDisk(Element* element, ZQFileWriter& file) {
  if (element == nullptr || element->getWriteCount() < 0) return;
  putElement(file.claim(sizeOfElementOf<Element>), *element);
}

}  // namespace zmatrix
