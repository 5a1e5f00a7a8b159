// The base tier: a sparse store of index vectors, a trie laid out as a double array. Each path from a root is an index vector,
// one coordinate a step. The children of an element are a field: the child for coordinate k lies at the field's begin + k, so one
// addition finds it, and its parent link tells whether the slot belongs to this field, since the fields of all elements and of
// all sub-matrices interleave in one block. Where two fields want the same slot, one of them is moved as a whole.
//
// What holds at any time, with p the slot of an element:
//   - all elements of a field carry the link to their parent; the parent's link leads to the field's first element;
//   - the elements of a field are linked both ways in the order of their slots;
//   - p - indexInDimension is the same number, the field's begin, for all elements of a field;
//   - only roots lie below maxNumberOfMatrices, and maximalStack is never below a slot that was ever occupied.
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

/// What the read walk has found: the code of existMatrixData and, for a code of 1 or more, the position of the element.
struct FoundPath {
  int code;
  int position = -1;
};

}  // namespace zmatrix

class ZQMatrixBase : public ZQDebugChannel, public zmatrix::ZQMatrixBaseAccessors<ZQMatrixBase> {
 public:
  using Tier = zmatrix::ZQBaseTier;

  ZQMatrixBase() = default;
  /// Ends the stream of older update records, and as setMatrixDebugOff does, the debug channel of the whole process.
  virtual ~ZQMatrixBase();
  ZQMatrixBase(const ZQMatrixBase&) = delete;
  ZQMatrixBase& operator=(const ZQMatrixBase&) = delete;

  // --- life; the creators and deleters drive it
  /// Sets up header values and an empty block. 0 if memory has run out, else 1.
  int initMatrix(int debugOutputDevice, int debugLevel, const char* debugDirectory);
  /// Frees all elements and the block. The object can only be deleted after it.
  void deInitMatrix();

  static void* mMalloc(size_t size);
  static void mFree(void* pointer);
  int setMatrixDebugOn(int level);
  void setMatrixDebugOff();

  // --- members
  /// The block as an array of pointers, null for an empty slot, and the addresses of the roots' entries in it: good until the
  /// next write or delete. Null if memory has run out. The array is made when it is asked for.
  ZQMatrixBaseElement** getMatrixData();
  ZQMatrixBaseElement*** getMatrixDataEntryArray();
  ZQMatrixBaseElement** getMatrixDataEntry() { return getMatrixDataEntryArray()[currentMatrixId_]; }
  ZQMatrixBaseInfo** getMatrixInfoArray() { return matrixInfoArray_.data(); }
  ZQMatrixBaseInfo* getMatrixInfo() const { return matrixInfoArray_[currentMatrixId_]; }
  ZQMatrixBaseInfo* getMatrixInfo(int id) const { return matrixInfoArray_[id]; }
  ZQMatrixFileHeader* getMatrixFileHeader() const { return matrixFileHeader_.get(); }
  /// Takes the header over.
  void setMatrixFileHeader(ZQMatrixFileHeader* header) { matrixFileHeader_.reset(header); }
  /// The highest slot that was ever occupied.
  int getMaximalStack() const { return matrixFileHeader_->getMaximalStack(); }
  int getCurrentMatrixID() const { return currentMatrixId_; }
  void setCurrentMatrixID(int id) {
    if (id >= 0 && id < matrixFileHeader_->getMaxNumberOfMatrices()) currentMatrixId_ = id;
  }
  /// The lowest ID that holds nothing, or -1.
  int getNextFreeMatrixID() const;
  /// The highest ID that holds something, or -1.
  int getHighestOccupiedMatrixID() const;
  /// Raises the number of reserved sub-matrices, while the store is empty.
  void setMaxNumberOfMatrices(int number);

  // --- fields
  int getFirstMatrixElementInDimension(int position);
  int getLastMatrixElementInDimension(int position);
  /// The number of elements of the field that holds `position`, with its first and last positions; 0 if a link is bad.
  int getNumberOfItemsAndFirstLastElementsInSameDimension(int position, int* first, int* last);
  /// The same, but it stops counting at `limit`; first and last are then not told.
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
  // What says noexcept here throws nothing, so that the C function of its name is a mere jump.
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
  /// 1; -1, with a message, if the file could not be written: then an old one stands.
  int saveMatrixToDisk(const char* path);
  /// Takes over a file of this tier or a lower one: 1. -1 with a message: no matrix file, a higher tier's, or no memory for it.
  int readAndInitMatrixFromDisk(const char* path, int debugLevel);
  /// What the last load has found; its state says if there was one.
  const zq_loadReport& getLoadReport() const { return loadReport_; }

  // --- self-tests: 1 sound, 0 a fault, -1 empty; trim 1 cuts what is not in use
  int perform1stMemoryTest(int which, int* numberOfWriteElements, int* numberOfEndElements, int trim);
  int performMatrixLinearTest(int* numberOfWriteElements, int* numberOfEndElements, int trim);
  int performMatrixConsistencyTest(int* numberOfWriteElements, int* numberOfEndElements, int trim);
  /// Reads vectors back whose values are known: 1, or -1 if an array is missing.
  int perform2ndMemoryTest(int numberOfVectors, int** indexVectors, int* lengths, long long* values, int* errors, int* tests);

  // --- for the tellings that the tiers share
  /// The read walk: what existMatrixData answers, with the position of the element found.
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
  /// Asks for a slot before it is needed. Any position is allowed.
  void prefetchSlot(long long position) const {
    __builtin_prefetch(
        reinterpret_cast<const void*>(reinterpret_cast<uintptr_t>(slots_) + static_cast<uintptr_t>(position) * sizeOfRecord_));
  }
  /// The same for a slot whose counts are wanted too: a record may lie across two lines of the cache.
  void prefetchWholeSlot(long long position) const {
    prefetchSlot(position);
    __builtin_prefetch(slots_ + static_cast<size_t>(position) * sizeOfRecord_ + sizeOfRecord_ - 1);
  }
  ZQMatrixBaseElement* parentOf(int position) const;
  /// Names the record in a slot; no other record of the matrix has the name. noRecord for an empty slot.
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
  /// childAt for a record of the tier that is at hand.
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
  /// Where the child for a coordinate lies, if it exists; -1 if the element has no children at all.
  long long slotOfChild(int parentPosition, int coordinate) const;
  /// The position of the child for a coordinate, or -1.
  int childAt(int parentPosition, int coordinate) const;
  /// What getMatrixHandleFromElementVector gives for a vector of `length` integers that ends with `item`, from the position where
  /// the vector without it ends: one item down instead of a walk from the root.
  int handleOneItemBelow(int position, const int* item, int length) const;
  /// A new, cleared record in a slot of the block. What the slot held is forgotten.
  template <class Element>
  Element* createElementAt(int position) {
    freeSlots_.fill(position);
    return placeElementAt<Element>(position);
  }
  /// The same, and the index of free slots is the caller's.
  template <class Element>
  Element* placeElementAt(int position) {
    if (position >= endOfProvidedSlots_) provideSlots(position);
    Element* element = new (recordIn(position)) Element();
    if (++lastName_ == noRecord) ++lastName_;
    element->setName(lastName_);
    return element;
  }
  /// Moves the record of a slot to an empty one, in the block alone: its links and the index of free slots are the caller's.
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
  /// Makes room for the records, entries and stop flags of so many sub-matrices, which the header then counts, and gives up the
  /// records above; their roots are the caller's. False, and nothing changed, if memory has run out; making them fewer never
  /// fails.
  [[nodiscard]] bool resizeSubMatrices(int number);
  /// Only while there is no block.
  void setRecordSize(size_t size) { sizeOfRecord_ = size; }
  bool hasBlock() const { return slots_ != nullptr; }
  /// The slots that there are, which the header's size may miss where a host has set one that makes no sense.
  int getNumberOfSlots() const { return numberOfSlots_; }
  /// Counts the elements given back so far: what a cached place in the trie is held against.
  unsigned getReleasedRecords() const { return releasedRecords_; }
  /// Differs from what it was as soon as an element has moved or was given back.
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
  /// The block's memory for so many slots. False, and nothing changed, if there is no room.
  [[nodiscard]] bool resizeMemory(int newNumberOfSlots);
  void releaseMemory();

  /// What differs as soon as an element has come, gone or moved, or the block.
  struct ContentVersion {
    const char* slots = nullptr;
    int numberOfSlots = 0;
    RecordName lastName = noRecord;
    unsigned layout = 0;
    bool operator==(const ContentVersion&) const = default;
  };
  /// Sees to it that an element with children knows the first one's coordinate. False if there is no first one.
  bool knowsFirstChild(long long position, ZQMatrixBaseElement& element) const {
    return element.getIndexOfFirstChild() != ZQMatrixBaseElement::unknownIndex || lookAtFirstChild(position, element);
  }
  bool lookAtFirstChild(long long position, ZQMatrixBaseElement& element) const;
  ContentVersion getContentVersion() const { return {slots_, numberOfSlots_, lastName_, getLayoutVersion()}; }
  [[nodiscard]] bool refreshPointers();

  zmatrix::FoundPath findWithRoomFor(int numberOfSteps, const int* indexVector, int length);
  [[nodiscard]] bool resizeBlock(int newSize);
  /// A new block without any record. False if memory has run out: then there is no block.
  [[nodiscard]] bool makeEmptyBlock(int size);
  /// Drops what cannot be reached from a root and links the rest anew. The records dropped, or -1 if memory has run out.
  [[nodiscard]] int repairLinks();
  long long largestLegalIndex() const;
  /// The offset by which the positions (ascending) fit into free slots, found in the order of the method; 0 if the block can't
  /// grow.
  int searchShift(int memorySearchMethod, std::span<const int> positions, int fieldBegin);
  int searchFrom(int centre);
  int findIndexOfNearestFreeElement(zmatrix::ZQFreeSlotSearchState& state, int start, int* goodStart);

  std::unique_ptr<ZQMatrixFileHeader> matrixFileHeader_;
  zmatrix::ZQRecordTable matrixInfoArray_;
  char* slots_ = nullptr;  // the block: numberOfSlots records of the tier, one a slot
  size_t sizeOfRecord_ = sizeof(ZQMatrixBaseElement);
  zmatrix::ZQArray<ZQMatrixBaseElement**> matrixDataEntryArray_;
  int currentMatrixId_ = 0;
  int debugLevel_ = 0;
  zmatrix::ZQFreeSlotSearchState* searchState_ = nullptr;  // of the thread, while an operation holds it
  zq_loadReport loadReport_{};

  int numberOfSlots_ = 0;       // the header's matrixBlockSize while there is a block
  int endOfProvidedSlots_ = 0;  // what lies below has its pages, or gets them one by one
  RecordName lastName_ = noRecord;
  unsigned releasedRecords_ = 0;
  unsigned movedFields_ = 0;
  zmatrix::ZQFreeSlotIndex freeSlots_;  // kept by createElementAt, destroyElementAt and the move alone
  zmatrix::ZQFieldCounts fieldCounts_;
  zmatrix::ZQZeroedMemory memory_;  // of the block
  zmatrix::ZQPageProvider pages_;
  zmatrix::ZQArray<ZQMatrixBaseElement*> pointers_;  // the block as getMatrixData tells it, when it was last asked for
  ContentVersion versionOfPointers_;
  zmatrix::ZQArray<int> positionsOfField_;  // scratch of the move
  zmatrix::ZQArray<int> positionsToPlace_;  // the same with the new element
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
