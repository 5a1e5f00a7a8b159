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

#include <span>

#include "frame/ZQDebugChannel.h"
#include "settings/ZQMatrixBaseInfo.h"
#include "settings/ZQMatrixFileHeader.h"
#include "settings/ZQMatrixForwards.h"
#include "store/ZQFreeSlotIndex.h"
#include "store/ZQMatrixElements.h"
#include "store/ZQPodList.h"
#include "store/ZQRecordSlab.h"

struct ZQBaseTier;

class ZQMatrixBase : public ZQDebugChannel, public ZQMatrixBaseForwards<ZQMatrixBase> {
 public:
  using Tier = ZQBaseTier;

  ZQMatrixBase() = default;
  virtual ~ZQMatrixBase() = default;
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
  ZQMatrixBaseElement** getMatrixData() { return matrixData; }
  ZQMatrixBaseElement*** getMatrixDataEntryArray() { return matrixDataEntryArray; }
  ZQMatrixBaseElement** getMatrixDataEntry() { return matrixDataEntryArray[currentMatrixID]; }
  ZQMatrixBaseInfo** getMatrixInfoArray() { return matrixInfoArray; }
  ZQMatrixBaseInfo* getMatrixInfo() const { return matrixInfoArray[currentMatrixID]; }
  ZQMatrixBaseInfo* getMatrixInfo(int id) const { return matrixInfoArray[id]; }
  ZQMatrixFileHeader* getMatrixFileHeader() const { return matrixFileHeader; }
  void setMatrixFileHeader(ZQMatrixFileHeader* header) { matrixFileHeader = header; }
  void setMatrixInfoArray(ZQMatrixBaseInfo** infos) { matrixInfoArray = infos; }
  void setMatrixDataEntryArray(ZQMatrixBaseElement*** entries) { matrixDataEntryArray = entries; }
  int getCurrentMatrixID() const { return currentMatrixID; }
  void setCurrentMatrixID(int id) {
    if (id >= 0 && id < matrixFileHeader->getMaxNumberOfMatrices()) currentMatrixID = id;
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
  int insertMatrixElementInExistingDimension(int newPosition, int coordinate, int anElementOfField);
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
  const zq_loadReport& getLoadReport() const { return loadReport; }

  // --- self-tests: 1 sound, 0 a fault, -1 empty; trim 1 cuts what is not in use
  int perform1stMemoryTest(int which, int* numberOfWriteElements, int* numberOfEndElements, int trim);
  int performMatrixLinearTest(int* numberOfWriteElements, int* numberOfEndElements, int trim);
  int performMatrixConsistencyTest(int* numberOfWriteElements, int* numberOfEndElements, int trim);
  /// Reads vectors back whose values are known: 1, or -1 if an array is missing.
  int perform2ndMemoryTest(int numberOfVectors, int** indexVectors, int* lengths, long long* values, int* errors, int* tests);

  // --- for the tellings that the tiers share
  /// The record of a slot, or null if the slot is empty or outside the block.
  ZQMatrixBaseElement* elementAt(long long position) const {
    return position >= 0 && position < numberOfSlots ? matrixData[position] : nullptr;
  }
  /// Ask for a slot, or for the record that a slot holds, before it is needed. Any position is allowed.
  void prefetchSlot(long long position) const {
    if (position >= 0 && position < numberOfSlots) __builtin_prefetch(matrixData + position);
  }
  void prefetchElementAt(long long position) const { __builtin_prefetch(elementAt(position)); }
  void prefetchFirstChildOf(int position) const {
    prefetchElementAt(static_cast<long long>(position) + matrixData[position]->getOffsetToElementInNextDimension());
  }
  ZQMatrixBaseElement* parentOf(int position) const;
  /// The position of the child for a coordinate, or -1.
  int childAt(int parentPosition, int coordinate) const;
  /// What getMatrixHandleFromElementVector gives for a vector of `length` integers that ends with `item`, from the position where
  /// the vector without it ends: one item down instead of a walk from the root.
  int handleOneItemBelow(int position, const int* item, int length) const;
  /// A new, cleared record in a slot; null if memory has run out. What the slot held is forgotten.
  template <class Element>
  Element* createElementAt(int position) {
    void* memory = records.allocate();
    if (memory == nullptr) return nullptr;
    Element* element = new (memory) Element();
    matrixData[position] = element;
    freeSlots.fill(position);
    return element;
  }
  /// Gives the record of a slot back and empties the slot.
  void destroyElementAt(int position);
  void setRecordSize(size_t size) { records.setRecordSize(size); }
  bool hasBlock() const { return matrixData != nullptr; }
  /// The slots that there are, which the header's size may miss where a host has set one that makes no sense.
  int getNumberOfSlots() const { return numberOfSlots; }
  /// Counts the elements given back so far: what a cached place in the trie is held against.
  unsigned getReleasedRecords() const { return releasedRecords; }

 protected:
  template <class Tier>
  friend struct ZQStoreWrite;
  template <class Tier>
  friend struct ZQStoreMove;
  template <class Tier>
  friend struct ZQFieldPlacement;
  template <class Tier>
  friend struct ZQStoreSelfTest;
  template <class Tier>
  friend struct ZQMatrixFileSave;
  template <class Tier>
  friend struct ZQMatrixFileLoad;
  template <class Tier>
  friend struct ZQMatrixElementReader;

  int existMatrixDataWithRoomFor(int numberOfSteps, const int* indexVector, int length);
  bool resizeBlock(int newSize);
  /// A new block without any record. False if memory has run out: then there is no block.
  bool makeEmptyBlock(int size);
  /// Drops what cannot be reached from a root and links the rest anew. The records dropped, or -1 if memory has run out.
  int repairLinks();
  long long largestLegalIndex() const;
  void pointEntriesAtBlock();
  /// The offset by which the positions (ascending) fit into free slots, found in the order of the method; 0 if the block can't
  /// grow.
  int searchShift(int memorySearchMethod, std::span<const int> positions, int fieldBegin);
  int searchFrom(int centre);

  ZQMatrixFileHeader* matrixFileHeader = nullptr;
  ZQMatrixBaseInfo** matrixInfoArray = nullptr;
  ZQMatrixBaseElement** matrixData = nullptr;
  ZQMatrixBaseElement*** matrixDataEntryArray = nullptr;
  int currentMatrixID = 0;
  int debugLevel = 0;
  zq_loadReport loadReport{};

  int numberOfSlots = 0;  // of matrixData; the header's matrixBlockSize while there is a block
  unsigned releasedRecords = 0;
  zmatrix::ZQFreeSlotIndex freeSlots;  // kept by createElementAt, destroyElementAt and the move alone
  ZQRecordSlab records;
  zmatrix::ZQPodList<int> positionsOfField;  // scratch of the move
  zmatrix::ZQPodList<int> positionsToPlace;  // the same with the new element
};

inline int ZQMatrixBase::childAt(int parentPosition, int coordinate) const {
  const ZQMatrixBaseElement* parent = elementAt(parentPosition);
  if (parent == nullptr || parent->getOffsetToElementInNextDimension() == 0) return -1;
  const long long first = static_cast<long long>(parentPosition) + parent->getOffsetToElementInNextDimension();
  const ZQMatrixBaseElement* firstElement = elementAt(first);
  if (firstElement == nullptr) return -1;
  const long long target = first - firstElement->getIndexInDimension() + coordinate;
  const ZQMatrixBaseElement* child = elementAt(target);
  if (child == nullptr || child->getOffsetToElementInPrevDimension() == 0) return -1;
  return target + child->getOffsetToElementInPrevDimension() == parentPosition ? static_cast<int>(target) : -1;
}
