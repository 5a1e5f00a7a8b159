// The base tier: a sparse store of index vectors, a trie laid out as a double array. Each path from a root is an index vector,
// one coordinate per step. The children of an element are a field: the child for coordinate k lies at the field's begin + k, so
// one addition finds its slot. The fields of all elements and of all sub-matrices interleave in one block, so the parent link of
// the record there decides whether the slot belongs to this field. If two fields need the same slot, one of them moves as a
// whole.
//
// Invariants between calls, with p the slot of an element:
//   - all elements of a field are linked to their parent; the parent is linked to the field's first element;
//   - the elements of a field are linked both ways in the order of their slots;
//   - p - indexInDimension is the same number, the field's begin, for all elements of a field;
//   - slots below maxNumberOfMatrices hold roots only, and no occupied slot lies above maximalStack.
//
// Derived tiers hide the methods of the same name; an object is always used as its true tier.
#pragma once

#include <zmatrix/zq_types.h>

#include <cstdint>
#include <cstring>
#include <memory>
#include <new>
#include <span>

#include "frame/ZQArray.h"
#include "frame/ZQDebugChannel.h"
#include "frame/ZQPageProvider.h"
#include "frame/ZQZeroedMemory.h"
#include "settings/ZQMatrixAccessors.h"
#include "settings/ZQMatrixBaseInfo.h"
#include "settings/ZQMatrixFileHeader.h"
#include "settings/ZQRecordTable.h"
#include "store/ZQFieldCounts.h"
#include "store/ZQFreeSlotIndex.h"
#include "store/ZQMatrixElements.h"

namespace zmatrix {
struct ZQBaseTier;
struct ZQFreeSlotSearchState;
class HeldFreeSlotSearch;
template <class Tier>
struct ZQStoreWrite;
template <class Tier>
struct ZQStoreMove;
template <class Tier>
struct ZQFieldPlacement;
template <class Tier>
struct ZQStoreVerification;
template <class Tier>
struct ZQMatrixFileSave;
template <class Tier>
struct ZQMatrixFileLoad;
template <class Tier>
struct ZQMatrixElementReader;
}  // namespace zmatrix

namespace zmatrix {

/// The result of the read walk: the code of existMatrixData and, for a code of 1 or more, the position of the element.
struct FoundPath {
  int code;
  int position = -1;
};

}  // namespace zmatrix

class ZQMatrixBase : public ZQDebugChannel, public zmatrix::ZQMatrixBaseAccessors<ZQMatrixBase> {
 public:
  using Tier = zmatrix::ZQBaseTier;

  ZQMatrixBase() = default;
  /// Closes the stream of older update records and, as setMatrixDebugOff, the debug channel of the calling thread.
  virtual ~ZQMatrixBase();
  ZQMatrixBase(const ZQMatrixBase&) = delete;
  ZQMatrixBase& operator=(const ZQMatrixBase&) = delete;

  // --- set-up and release, called by creators and loads
  /// Sets up header values and an empty block. 0 if memory has run out, else 1.
  int initMatrix(int debugOutputDevice, int debugLevel, const char* debugDirectory);
  /// Frees the block with all elements; reads and writes then refuse.
  void deInitMatrix();

  static void* mMalloc(size_t size);
  static void mFree(void* pointer);
  int setMatrixDebugOn(int level);
  void setMatrixDebugOff();

  // --- members
  /// The block as an array of pointers, null for an empty slot, and the addresses of the roots' entries in it. The array is built
  /// by the call and valid until the next write or delete; null if memory has run out or there is no block.
  ZQMatrixBaseElement** getMatrixData();
  ZQMatrixBaseElement*** getMatrixDataEntryArray();
  ZQMatrixBaseElement** getMatrixDataEntry() { return getMatrixDataEntryArray()[currentMatrixId_]; }
  ZQMatrixBaseInfo** getMatrixInfoArray() { return matrixInfoArray_.data(); }
  ZQMatrixBaseInfo* getMatrixInfo() const { return matrixInfoArray_[currentMatrixId_]; }
  ZQMatrixBaseInfo* getMatrixInfo(int id) const { return matrixInfoArray_[id]; }
  ZQMatrixFileHeader* getMatrixFileHeader() const { return matrixFileHeader_.get(); }
  /// Takes ownership of the header.
  void setMatrixFileHeader(ZQMatrixFileHeader* header) { matrixFileHeader_.reset(header); }
  /// No occupied slot lies above it. Deletions don't lower it; a trim does.
  int getMaximalStack() const { return matrixFileHeader_->getMaximalStack(); }
  int getCurrentMatrixID() const { return currentMatrixId_; }
  void setCurrentMatrixID(int id) {
    if (id >= 0 && id < matrixFileHeader_->getMaxNumberOfMatrices()) currentMatrixId_ = id;
  }
  /// The lowest ID of an empty sub-matrix, or -1.
  int getNextFreeMatrixID() const;
  /// The highest ID of a sub-matrix that is not empty, or -1.
  int getHighestOccupiedMatrixID() const;
  /// Raises the number of reserved sub-matrices; refused unless all sub-matrices are empty.
  void setMaxNumberOfMatrices(int number);

  // --- fields
  int getFirstMatrixElementInDimension(int position);
  int getLastMatrixElementInDimension(int position);
  /// The number of elements of the field that holds `position`, with its first and last positions; 0 if a link is bad.
  int getNumberOfItemsAndFirstLastElementsInSameDimension(int position, int* first, int* last);
  /// The same, but counting stops at `limit`, 2 or more; first and last are then not valid.
  int countField(int position, int limit, int* first, int* last) const;
  /// The parent's slot, or null if the slot is empty or a root's.
  ZQMatrixBaseElement** getOwner(ZQMatrixBaseElement** slot);
  void clearMatrixElement(int position, int flag);

  // --- free slots and the block
  int findNearestFreeMatrixElement(int memorySearchMethod);
  int findIndexOfNearestFreeElement(int start, int* goodStart);
  int moveFieldToFreePosition(int memorySearchMethod, int* fieldBegin, int* newElementIndex, int numberOfItems, int* firstElement,
                              int* lastElement, int moveWithNewIndex);
  int expandMatrixBlock(int minimalSize);
  void setInitialMatrixBlocksize(int size);

  // --- write and read
  int writeMatrixData(const int* indexVector, int length, long long value);
  int writeMatrixElement(const int* indexVector, int length, long long value);
  int writeMatrixElement32(const int* items, int length, long long value);
  int writeMatrixElement64(const long long* items, int length, long long value);
  int insertFirstMatrixElementInNewDimension(int newPosition, int coordinate, int parentPosition);
  int insertMatrixElementInExistingDimension(int newPosition, int coordinate, int elementOfField);
  int deleteMatrixElement(const int* indexVector, int length, int keepInnerElements);
  int deleteMatrixElement32(const int* items, int length, int keepInnerElements);
  int deleteMatrixElement64(const long long* items, int length, int keepInnerElements);
  void makeMatrixEmpty();
  // noexcept lets the C function of the same name compile to a jump.
  int existMatrixData(const int* indexVector, int length) noexcept;
  int existMatrixData32(const int* items, int length);
  int existMatrixData64(const long long* items, int length);
  long long readMatrixData(const int* indexVector, int length, int* existCode, int* writeCount) noexcept;
  long long readMatrixData32(const int* items, int length, int* existCode, int* writeCount);
  long long readMatrixData64(const long long* items, int length, int* existCode, int* writeCount);
  long long readMatrixElement(const int* indexVector, int length, int* existCode) noexcept;
  long long readMatrixElement32(const int* items, int length, int* existCode);
  long long readMatrixElement64(const long long* items, int length, int* existCode);

  // --- handles
  int getMatrixHandleFromElementVector(const int* indexVector, int length) noexcept;
  int getMatrixHandleFromElementVector32(const int* items, int length);
  int getMatrixHandleFromElementVector64(const long long* items, int length);
  ZQMatrixBaseElement* getMatrixElementFromElementVector(const int* indexVector, int length, int* handle);
  ZQMatrixBaseElement* getMatrixElementFromMatrixHandle(int handle);
  int* getObjexFromMatrixHandle(int handle);
  int getLengthOfIndexVectorFromMatrixHandle(int handle);
  int* getIndexVectorFromMatrixHandle(int handle, int* length);
  int hasMatrixHandleSuccessors(int handle);
  int getNumberOfSuccessorsFromMatrixHandle(int handle);
  int* getSuccessorHandlesFromMatrixHandle(int handle, int* count);
  int* getSuccessorOcronHandlesFromMatrixHandle(int handle, int ocronCode, int* count);

  // --- the matrix file
  /// 1; -1, with a message, if the file could not be written: then an existing file is unchanged.
  int saveMatrixToDisk(const char* path);
  /// Loads a file of this tier or a lower one: 1. -1 with a message: not a matrix file, a higher tier's, or no memory for it.
  int readAndInitMatrixFromDisk(const char* path, int debugLevel);
  /// The report on the last load; its state says whether there was one.
  const zq_loadReport& getLoadReport() const { return loadReport_; }

  // --- self-tests: 1 sound, 0 faults found, -1 empty; trim 1 shrinks block and arrays to what is in use
  int perform1stMemoryTest(int which, int* numberOfWriteElements, int* numberOfEndElements, int trim);
  int performMatrixLinearTest(int* numberOfWriteElements, int* numberOfEndElements, int trim);
  int performMatrixConsistencyTest(int* numberOfWriteElements, int* numberOfEndElements, int trim);
  /// Reads vectors back and compares their values: 1, or -1 if an array is null.
  int perform2ndMemoryTest(int numberOfVectors, int** indexVectors, int* lengths, long long* values, int* errors, int* tests);

  // --- for the templates shared by all tiers
  /// The read walk: the code of existMatrixData and the position of the element found.
  zmatrix::FoundPath find(const int* indexVector, int length) noexcept;
  /// The record of a slot, or null if the slot is empty or outside the block.
  ZQMatrixBaseElement* elementAt(long long position) const {
    if (!isSlot(position)) return nullptr;
    ZQMatrixBaseElement* element = recordIn(position);
    return element->getName() != 0 ? element : nullptr;
  }
  bool isSlot(long long position) const {
    return static_cast<unsigned long long>(position) < static_cast<unsigned>(numberOfSlots_);
  }
  /// Prefetches a slot. Any position is allowed.
  void prefetchSlot(long long position) const {
    __builtin_prefetch(
        reinterpret_cast<const void*>(reinterpret_cast<uintptr_t>(slots_) + static_cast<uintptr_t>(position) * sizeOfRecord_));
  }
  /// The same for a whole record, which may lie across two cache lines.
  void prefetchWholeSlot(long long position) const {
    prefetchSlot(position);
    __builtin_prefetch(slots_ + static_cast<size_t>(position) * sizeOfRecord_ + sizeOfRecord_ - 1);
  }
  ZQMatrixBaseElement* parentOf(int position) const;
  /// The name of the record in a slot: a serial number, which no other record of the matrix has and which moves with the record.
  /// noRecord for an empty slot.
  using RecordName = unsigned;
  static constexpr RecordName noRecord = 0;
  RecordName nameOfRecordAt(long long position) const { return isSlot(position) ? recordIn(position)->getName() : noRecord; }
  /// The record of that name, if the slot still holds it, else null. `Element` is the tier's.
  template <class Element>
  Element* elementNamed(long long position, RecordName record) const {
    if (!isSlot(position)) return nullptr;
    Element* element = recordInSlot<Element>(position);
    return element->getName() == record ? element : nullptr;
  }
  /// childAt where the caller has the parent's record. `Element` is the tier's.
  template <class Element>
  int childOf(long long parentPosition, Element& parent, int coordinate) const {
    if (parent.getOffsetToElementInNextDimension() == 0 || !knowsFirstChild(parentPosition, parent)) return -1;
    const long long target =
        parentPosition + parent.getOffsetToElementInNextDimension() - parent.getIndexOfFirstChild() + coordinate;
    return childIn<Element>(target, parentPosition);
  }
  /// `target` if a child of that parent lies there, else -1. Any position is allowed.
  template <class Element>
  int childIn(long long target, long long parentPosition) const {
    if (!isSlot(target)) return -1;
    const int offsetToParent = recordInSlot<Element>(target)->getOffsetToElementInPrevDimension();
    return offsetToParent != 0 && target + offsetToParent == parentPosition ? static_cast<int>(target) : -1;
  }
  /// The record in a slot of the block, whether it is empty or not. `Element` is the tier's.
  template <class Element>
  Element* recordInSlot(long long position) const {
    return reinterpret_cast<Element*>(slots_) + position;
  }
  /// The position that the child for a coordinate has if it exists; -1 if the element has no children.
  long long slotOfChild(int parentPosition, int coordinate) const;
  /// The position of the child for a coordinate, or -1.
  int childAt(int parentPosition, int coordinate) const;
  /// As getMatrixHandleFromElementVector for a vector of `length` integers whose last item is `item`: steps down from `position`,
  /// the element of the vector without that item, instead of walking from the root.
  int handleOneItemBelow(int position, const int* item, int length) const;
  /// Makes a new, cleared record in a slot of the block. A record that the slot holds is overwritten.
  template <class Element>
  Element* createElementAt(int position) {
    freeSlots_.fill(position);
    return placeElementAt<Element>(position);
  }
  /// The same, but the caller updates the index of free slots.
  template <class Element>
  Element* placeElementAt(int position) {
    if (position >= endOfProvidedSlots_) provideSlots(position);
    Element* element = new (recordIn(position)) Element();
    if (++lastName_ == noRecord) ++lastName_;
    element->setName(lastName_);
    return element;
  }
  /// Moves the record of a slot to an empty one. The caller updates links and the index of free slots.
  template <class Element>
  void moveElement(int from, int to) {
    if (to >= endOfProvidedSlots_) provideSlots(to);
    auto* record = static_cast<Element*>(recordIn(from));
    ZQ_ASSERT(record->getName() != 0 && recordIn(to)->getName() == 0);
    new (recordIn(to)) Element(*record);
    emptySlot(from);
  }
  /// Empties a slot.
  void destroyElementAt(int position);
  /// The records of the sub-matrices, by ID.
  zmatrix::ZQRecordTable& getRecords() { return matrixInfoArray_; }
  /// Resizes the arrays of records, entries and stop flags to so many sub-matrices, sets maxNumberOfMatrices, and deletes records
  /// above it. The caller makes new records and roots. False, and maxNumberOfMatrices unchanged, if memory has run out; a smaller
  /// number never fails.
  [[nodiscard]] bool resizeSubMatrices(int number);
  /// Allowed only before there is a block.
  void setRecordSize(size_t size) { sizeOfRecord_ = size; }
  bool hasBlock() const { return slots_ != nullptr; }
  /// The number of slots in memory. The header's matrixBlockSize may differ from it: setInitialMatrixBlocksize stores a size
  /// below 1 without a resize.
  int getNumberOfSlots() const { return numberOfSlots_; }
  /// The number of deletions of elements and of releases of the block so far; while it is unchanged, no record has gone.
  unsigned getReleasedRecords() const { return releasedRecords_; }
  /// Changes with every deletion and every move of a field; while it is unchanged, cached positions are valid.
  unsigned getLayoutVersion() const { return releasedRecords_ + movedFields_; }

 protected:
  template <class Tier>
  friend struct zmatrix::ZQStoreWrite;
  template <class Tier>
  friend struct zmatrix::ZQStoreMove;
  template <class Tier>
  friend struct zmatrix::ZQFieldPlacement;
  template <class Tier>
  friend struct zmatrix::ZQStoreVerification;
  template <class Tier>
  friend struct zmatrix::ZQMatrixFileSave;
  template <class Tier>
  friend struct zmatrix::ZQMatrixFileLoad;
  template <class Tier>
  friend struct zmatrix::ZQMatrixElementReader;
  friend class zmatrix::HeldFreeSlotSearch;

  ZQMatrixBaseElement* recordIn(long long position) const {
    return reinterpret_cast<ZQMatrixBaseElement*>(slots_ + static_cast<size_t>(position) * sizeOfRecord_);
  }
  void emptySlot(int position) { memset(static_cast<void*>(recordIn(position)), 0, sizeOfRecord_); }
  void provideSlots(int position);
  /// Resizes the block's memory to so many slots. False, and nothing changed, if memory has run out.
  [[nodiscard]] bool resizeMemory(int newNumberOfSlots);
  void releaseMemory();

  /// Changes whenever an element is made, deleted or moved, or the block is resized.
  struct ContentVersion {
    const char* slots = nullptr;
    int numberOfSlots = 0;
    RecordName lastName = noRecord;
    unsigned layout = 0;
    bool operator==(const ContentVersion&) const = default;
  };
  /// Makes sure that indexOfFirstChild of an element with children is known. False if the link leads to an empty slot.
  bool knowsFirstChild(long long position, ZQMatrixBaseElement& element) const {
    return element.getIndexOfFirstChild() != ZQMatrixBaseElement::unknownIndex || readIndexOfFirstChild(position, element);
  }
  bool readIndexOfFirstChild(long long position, ZQMatrixBaseElement& element) const;
  ContentVersion getContentVersion() const { return {slots_, numberOfSlots_, lastName_, getLayoutVersion()}; }
  [[nodiscard]] bool refreshPointers();

  /// Grows matrixPtr to so many steps and starts the read walk again.
  zmatrix::FoundPath findWithRoomFor(int numberOfSteps, const int* indexVector, int length);
  [[nodiscard]] bool resizeBlock(int newSize);
  /// Replaces the block by a new one of empty slots. False if memory has run out.
  [[nodiscard]] bool makeEmptyBlock(int size);
  /// Drops elements that can't be reached from a root and rebuilds the links of the others. The number of elements dropped, or -1
  /// if memory has run out.
  [[nodiscard]] int repairLinks();
  long long largestLegalIndex() const;
  /// The first offset, in the order of the search method, at which all positions (ascending) land on free slots; 0 if the block
  /// can't grow.
  int searchShift(int memorySearchMethod, std::span<const int> positions, int fieldBegin);
  int searchFrom(int centre);
  int findIndexOfNearestFreeElement(zmatrix::ZQFreeSlotSearchState& state, int start, int* goodStart);

  std::unique_ptr<ZQMatrixFileHeader> matrixFileHeader_;
  zmatrix::ZQRecordTable matrixInfoArray_;
  char* slots_ = nullptr;  // the block: numberOfSlots_ records of the tier, one per slot
  size_t sizeOfRecord_ = sizeof(ZQMatrixBaseElement);
  zmatrix::ZQArray<ZQMatrixBaseElement**> matrixDataEntryArray_;
  int currentMatrixId_ = 0;
  int debugLevel_ = 0;
  zmatrix::ZQFreeSlotSearchState* searchState_ = nullptr;  // set by HeldFreeSlotSearch, else null
  zq_loadReport loadReport_{};

  int numberOfSlots_ = 0;       // of the block in memory
  int endOfProvidedSlots_ = 0;  // slots below are not passed to pages_ any more
  RecordName lastName_ = noRecord;
  unsigned releasedRecords_ = 0;
  unsigned movedFields_ = 0;
  zmatrix::ZQFreeSlotIndex freeSlots_;  // updated where elements are made, deleted, moved and loaded
  zmatrix::ZQFieldCounts fieldCounts_;
  zmatrix::ZQZeroedMemory memory_;  // of the block
  zmatrix::ZQPageProvider pages_;
  zmatrix::ZQArray<ZQMatrixBaseElement*> pointers_;  // the array that getMatrixData returned last
  ContentVersion versionOfPointers_;
  zmatrix::ZQArray<int> positionsOfField_;  // scratch of the move
  zmatrix::ZQArray<int> positionsToPlace_;  // the same with the positions of new elements
};

inline long long ZQMatrixBase::slotOfChild(int parentPosition, int coordinate) const {
  ZQMatrixBaseElement* parent = elementAt(parentPosition);
  if (parent == nullptr || parent->getOffsetToElementInNextDimension() == 0) return -1;
  if (!knowsFirstChild(parentPosition, *parent)) return -1;
  return static_cast<long long>(parentPosition) + parent->getOffsetToElementInNextDimension() - parent->getIndexOfFirstChild() +
         coordinate;
}

inline int ZQMatrixBase::childAt(int parentPosition, int coordinate) const {
  const long long target = slotOfChild(parentPosition, coordinate);
  if (!isSlot(target)) return -1;
  const ZQMatrixBaseElement* child = recordIn(target);  // an empty slot has no link
  if (child->getOffsetToElementInPrevDimension() == 0) return -1;
  return target + child->getOffsetToElementInPrevDimension() == parentPosition ? static_cast<int>(target) : -1;
}
