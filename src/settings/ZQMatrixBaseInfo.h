// The info record of a sub-matrix, base tier: identity, settings of the store, counters and working buffers. One exists per
// matrix ID. Only the destructor is virtual; the derived records hide what they extend and call it by its qualified name. The
// counters, checkMatrixDimension and updateMatrixIndexInfo run on each step of a write and stay inline.
#pragma once

#include <type_traits>

#include "frame/ZQGrowth.h"
#include "settings/ZQHeapArray.h"
#include "settings/ZQMatrixProperties.h"

namespace zmatrix {

class ZQFieldReader;
class ZQFileReader;
class ZQFileWriter;

constexpr int largestCoordinateDimension = 64;  ///< integers of one item
constexpr int matrixInfoMagicNumber = 43112609;
constexpr int matrixFormatVersion = 135;

/// What accessors take and return for a field of type T: enumerations travel as plain ints.
template <class T>
using AccessorType = std::conditional_t<std::is_enum_v<T>, int, T>;

/// `value` + 1 and - 1, going round at the ends of the type: index limits and counters may stand there.
inline int successorOf(int value) {
  return static_cast<int>(static_cast<unsigned>(value) + 1u);
}
inline int predecessorOf(int value) {
  return static_cast<int>(static_cast<unsigned>(value) - 1u);
}
inline int negativeOf(int value) {
  return static_cast<int>(0u - static_cast<unsigned>(value));
}

}  // namespace zmatrix

class ZQMatrixBaseInfo {
 public:
  ZQMatrixBaseInfo() = default;
  virtual ~ZQMatrixBaseInfo();
  ZQMatrixBaseInfo(const ZQMatrixBaseInfo&) = delete;
  ZQMatrixBaseInfo& operator=(const ZQMatrixBaseInfo&) = delete;

  /// Makes the record valid for this ID, with a warning if it was valid already. 0 if memory has run out, else 1.
  int initMatrixInfo(int id);
  /// Frees all arrays and sets all scalar fields to -1.
  void deInitMatrixInfo();

#define ZQ_BASE_ROWS
#define ZQ_FIELD(type, name, Name, initial, since, printType, format) \
  zmatrix::AccessorType<type> get##Name() const {                     \
    return name;                                                      \
  }
#include "settings/ZQMatrixInfoFields.def"
#define ZQ_BASE_ROWS
#define ZQ_PLAIN(type, name, Name, initial, since, printType, format) \
  void set##Name(zmatrix::AccessorType<type> value) {                 \
    name = static_cast<type>(value);                                  \
  }
#define ZQ_INTERNAL(type, name, Name, initial, since, printType, format) \
  void _set##Name(zmatrix::AccessorType<type> value) {                   \
    name = static_cast<type>(value);                                     \
  }
#include "settings/ZQMatrixInfoFields.def"
  int getUpdateInfoSize() const {
    return updateInfoSize;
  }
  void setUpdateInfoSize(int value) {
    updateInfoSize = value;
  }

  /// True while nothing was ever written here, or all of it is gone.
  bool isEmpty() const {
    return numberOfWriteElements == 0 && numberOfMatrixElements == 0;
  }

  // Guarded setters: a refusal prints at level 0 and keeps the old value; storing the present value never prints.
  void setMatrixType(int value);
  /// Forces the coordinate dimension to 1, 2 or 4. The old value is still in force while that is tried.
  void setAllowLargeIndices(int value);
  void setCoordinateDimension(int dimension);
  void setMaxDimOfMatrix(int dimension);
  /// Resets the limits seen so far, even on a matrix that holds something.
  void setMaximalMatrixIndex(int index);
  /// The signed byte width of a coordinate in the update sequence. 1 if stored, 0 if refused.
  int setSizeOfCoordDimension(int dimension, int size);

  void incrementNumberOfMatrixElements() {
    numberOfMatrixElements = zmatrix::successorOf(numberOfMatrixElements);
  }
  void decrementNumberOfMatrixElements() {
    numberOfMatrixElements = zmatrix::predecessorOf(numberOfMatrixElements);
  }
  void incrementNumberOfWriteElements() {
    numberOfWriteElements = zmatrix::successorOf(numberOfWriteElements);
  }
  void decrementNumberOfWriteElements() {
    numberOfWriteElements = zmatrix::predecessorOf(numberOfWriteElements);
  }
  void incrementNumberOfEndElements() {
    numberOfEndElements = zmatrix::successorOf(numberOfEndElements);
  }
  void decrementNumberOfEndElements() {
    numberOfEndElements = zmatrix::predecessorOf(numberOfEndElements);
  }
  void incrementNumberOfWriteEvents() {
    numberOfMatrixWriteEvents = zmatrix::successorOf(numberOfMatrixWriteEvents);
  }
  void incrementNumberOfDeleteEvents() {
    numberOfMatrixDeleteEvents = zmatrix::successorOf(numberOfMatrixDeleteEvents);
  }
  void incrementNumberOfWriteCounts() {
    numberOfWriteCounts = zmatrix::successorOf(numberOfWriteCounts);
  }
  void addToNumberOfWriteCounts(int count) {
    numberOfWriteCounts = static_cast<int>(static_cast<unsigned>(numberOfWriteCounts) + static_cast<unsigned>(count));
  }

  /// Makes the per-dimension arrays reach dimIndex and raises currentDimension. 0 at maxDimOfMatrix and beyond, else 1.
  int checkMatrixDimension(int dimIndex) {
    return dimIndex < currentDimension && dimIndex < maxDimOfMatrix ? 1 : enterMatrixDimension(dimIndex);
  }
  /// Widens the limits seen in a dimension to include the index.
  int updateMatrixIndexInfo(int dimIndex, int index) {
    if (static_cast<unsigned>(dimIndex) >= static_cast<unsigned>(maximalIndices.size())) return reportDimensionBeyondCapacity();
    widenMatrixIndexInfo(dimIndex, index);
    return 1;
  }
  int updateMatrixIndexInfoAfterDelete(int dimIndex, int index) {
    if (static_cast<unsigned>(dimIndex) < static_cast<unsigned>(maximalIndices.size())) widenMatrixIndexInfo(dimIndex, index);
    return 1;
  }

  /// Forgets the limits seen in every dimension.
  void _resetIndexLimits();
  /// Makes the index limits of this many dimensions; the other per-dimension arrays keep their room.
  void _resizeIndexLimits(int capacity);

  // The arrays stay the record's. Each is valid until the record grows or is initialised anew.
  int* getSizeOfCoordinateDimensions() {
    return sizeOfCoordinateDimensions.data();
  }
  int* getMinimalIndices() {
    return minimalIndices.data();
  }
  int* getMaximalIndices() {
    return maximalIndices.data();
  }
  int* getMinimalIndicesInDimension(int* numberOfDimensions) {
    return dimensionArray(minimalIndices, numberOfDimensions);
  }
  int* getMaximalIndicesInDimension(int* numberOfDimensions) {
    return dimensionArray(maximalIndices, numberOfDimensions);
  }
  /// Positions of the last walk: room for the root and getRoomOfMatrixPtr() steps below it.
  int* getMatrixPtr() {
    return matrixPtr.data();
  }
  int getRoomOfMatrixPtr() const {
    return matrixPtr.size() - 1;
  }
  /// Makes room for a walk of at least this many steps. False, and nothing changed, if memory has run out.
  bool growMatrixPtr(int numberOfSteps);
  /// One item read out of the matrix; the next read overwrites it.
  int* getTemporaryMemory() {
    return temporaryMemory.data();
  }
  int* _getTemporaryMemory() {
    return temporaryMemory.data();
  }
  /// How many integers may be read from `item` on: to its end if it lies in the temporary memory. What a caller brought is told
  /// by its contents alone, and has no bound here.
  int readableFrom(const int* item) const;
  /// Makes the temporary memory hold at least this many integers. Null if there is no room.
  int* provideTemporaryMemory(int length);

  /// A flat copy of the record's values, zeroed and filled anew at each call; the record keeps it. Null if memory has run out.
  ZQMatrixProperties* getGlobalMatrixInfoParameters();
  void releaseMemoryGlobalMatrixInfoParameters();

  void printMatrixInfo();

  /// Writes the record as it stands in a matrix file.
  void writeUpdateInfo(zmatrix::ZQFileWriter& file, int withSequence);
  /// Takes the record over from a matrix file: 1. A record that makes no sense, or is cut, gives -1 and an empty record; then the
  /// updateInfoType still tells what the file said.
  int readUpdateInfo(zmatrix::ZQFileReader& file, int withSequence);

 protected:
  template <class Fields>
  void describeBasePart(Fields& fields);
  bool readBasePart(zmatrix::ZQFieldReader& fields);
  bool hasLegalSize(const zmatrix::ZQFieldReader& fields, int withSequence) const;
  /// One entry a dimension behind a flag; `unused` fills the entries that no dimension has yet.
  template <class Fields>
  void describeDimensions(Fields& fields, zmatrix::HeapArray<int>& array, int unused);
  /// Writes the parts of a tier's record, each told by a function of its own.
  template <class... Parts>
  void writeParts(zmatrix::ZQFileWriter& file, Parts... describePart);
  /// What a failed reading leaves: an empty record of the type that the file said.
  template <class Info>
  static int refuseRecord(Info& info, int id);

  int enterMatrixDimension(int dimIndex);
  /// The capacity that the per-dimension arrays need for dimIndex.
  int capacityForDimension(int dimIndex) const;
  void refuseOnFilledMatrix(const char* setter) const;
  /// Shared by the setters of flags: stores 0 and 1, refuses the rest in the name of `label`.
  void storeFlag(int& field, int value, const char* label);
  void storeIfEmpty(int& field, int value, const char* setter);
  void storeFlagWithWarning(int& field, int value, const char* setter);

  int* dimensionArray(zmatrix::HeapArray<int>& array, int* numberOfDimensions) {
    if (numberOfDimensions != nullptr) *numberOfDimensions = currentDimension < array.size() ? currentDimension : array.size();
    return array.data();
  }

  int updateInfoSize = 0;  ///< bytes of this record on disk, once it was written
#define ZQ_BASE_ROWS
#define ZQ_FIELD(type, name, Name, initial, since, printType, format) type name{};
#include "settings/ZQMatrixInfoFields.def"
  static constexpr int defaultCoordinateSize = -4;  ///< bytes of a coordinate in the update sequence; negative: signed
  zmatrix::HeapArray<int> sizeOfCoordinateDimensions;
  zmatrix::HeapArray<int> minimalIndices;
  zmatrix::HeapArray<int> maximalIndices;
  zmatrix::HeapArray<int> matrixPtr;
  zmatrix::HeapArray<int> temporaryMemory;
  ZQMatrixProperties* globalMatrixInfoParameters = nullptr;

 private:
  template <class Fields>
  void describeCoordinateSizes(Fields& fields);
  bool isLegalInFile(const void* field) const;
  bool makeDimensionArrays(zmatrix::ZQFileReader& file);
  int reportDimensionBeyondCapacity() const;
  bool growDimensionArrays(int capacity);
  void printCoordinateSizes();
  long long smallestLegalMaximalIndex() const;
  void widenMatrixIndexInfo(int dimIndex, int index) {
    if (index < minimalIndices[dimIndex]) minimalIndices[dimIndex] = index;
    if (index > maximalIndices[dimIndex]) maximalIndices[dimIndex] = index;
  }
};
