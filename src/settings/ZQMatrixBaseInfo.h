// The info record of a sub-matrix, base tier: identity, settings of the store, counters and working buffers. There is one per
// matrix ID. Only the destructor is virtual; the derived records hide what they extend and call it by its qualified name. The
// counters, checkMatrixDimension and updateMatrixIndexInfo run on each step of a write and stay inline.
#pragma once

#include <type_traits>

#include "frame/ZQArray.h"
#include "frame/ZQGrowth.h"
#include "settings/ZQMatrixEnumerations.h"
#include "settings/ZQMatrixProperties.h"

namespace zmatrix {

struct FieldTable;
class ZQFieldReader;
class ZQFileReader;
class ZQFileWriter;

constexpr int largestCoordinateDimension = 64;  ///< integers of one item
constexpr int initialMaximalMatrixIndex = 500000;
constexpr int initialKernelLength = 256;      ///< items
constexpr int smallestTemporaryMemory = 256;  ///< integers
constexpr int matrixInfoMagicNumber = 43112609;
constexpr int matrixFormatVersion = 135;
constexpr int firstVersionWithInfoType =
    105;  ///< the first whose header has the tier and whose records have the settings of kept sequences
constexpr int defaultCoordinateSize = -4;  ///< bytes of a coordinate in the update sequence; negative for signed ones

/// `value` + 1, `value` - 1 and -`value` with wraparound: index limits and counters may stand at the ends of their type.
constexpr int successorOf(int value) noexcept {
  return static_cast<int>(static_cast<unsigned>(value) + 1u);
}
constexpr int predecessorOf(int value) noexcept {
  return static_cast<int>(static_cast<unsigned>(value) - 1u);
}
constexpr int negativeOf(int value) noexcept {
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

  int getMagicNumber() const { return magicNumber; }
  int getUpdateInfoType() const { return updateInfoType; }
  void setUpdateInfoType(int value) { updateInfoType = value; }
  unsigned int getTimeStamp() const { return timeStamp; }
  void setTimeStamp(unsigned int value) { timeStamp = value; }
  int getSoftwareVersion() const { return softwareVersion; }
  int getMatrixID() const { return matrixID; }
  int getMatrixType() const { return matrixType; }
  int getAllowLargeIndices() const { return allowLargeIndices; }
  int getCoordinateDimension() const { return coordinateDimension; }
  int getIsFinalized() const { return isFinalized; }
  void setIsFinalized(int value) { isFinalized = value; }
  int getMemIsReadOnly() const { return memIsReadOnly; }
  void setMemIsReadOnly(int value) { memIsReadOnly = value; }
  int getMaximalMatrixIndex() const { return maximalMatrixIndex; }
  int getMaxDimOfMatrix() const { return maxDimOfMatrix; }
  int getMemorySearchMethod() const { return memorySearchMethod; }
  void setMemorySearchMethod(int value) { memorySearchMethod = value; }
  int getCurrentDimension() const { return currentDimension; }
  void _setCurrentDimension(int value) { currentDimension = value; }
  int getInternalCurrentDimension() const { return internalCurrentDimension; }
  void _setInternalCurrentDimension(int value) { internalCurrentDimension = value; }
  int getNumberOfMatrixWriteEvents() const { return numberOfMatrixWriteEvents; }
  void setNumberOfMatrixWriteEvents(int value) { numberOfMatrixWriteEvents = value; }
  int getNumberOfMatrixDeleteEvents() const { return numberOfMatrixDeleteEvents; }
  int getNumberOfMatrixElements() const { return numberOfMatrixElements; }
  void setNumberOfMatrixElements(int value) { numberOfMatrixElements = value; }
  int getNumberOfWriteElements() const { return numberOfWriteElements; }
  void setNumberOfWriteElements(int value) { numberOfWriteElements = value; }
  int getNumberOfWriteCounts() const { return numberOfWriteCounts; }
  void setNumberOfWriteCounts(int value) { numberOfWriteCounts = value; }
  int getNumberOfEndElements() const { return numberOfEndElements; }
  void setNumberOfEndElements(int value) { numberOfEndElements = value; }
  int getUpdateInfoSize() const { return updateInfoSize; }
  void setUpdateInfoSize(int value) { updateInfoSize = value; }

  /// True while nothing was ever written here, or all of it is gone.
  bool isEmpty() const { return numberOfWriteElements == 0 && numberOfMatrixElements == 0; }

  // Guarded setters: a refusal prints at level 0 and keeps the old value; storing the current value never prints.
  void setMatrixType(int value);
  /// Forces the coordinate dimension to 1, 2 or 4. The old value is still in force while that is tried.
  void setAllowLargeIndices(int value);
  void setCoordinateDimension(int dimension);
  void setMaxDimOfMatrix(int dimension);
  /// Resets the limits seen so far, even on a matrix that holds something.
  void setMaximalMatrixIndex(int index);
  /// The signed byte width of a coordinate in the update sequence. 1 if stored, 0 if refused.
  int setSizeOfCoordDimension(int dimension, int size);

  void incrementNumberOfMatrixElements() { numberOfMatrixElements = zmatrix::successorOf(numberOfMatrixElements); }
  void decrementNumberOfMatrixElements() { numberOfMatrixElements = zmatrix::predecessorOf(numberOfMatrixElements); }
  void incrementNumberOfWriteElements() { numberOfWriteElements = zmatrix::successorOf(numberOfWriteElements); }
  void decrementNumberOfWriteElements() { numberOfWriteElements = zmatrix::predecessorOf(numberOfWriteElements); }
  void incrementNumberOfEndElements() { numberOfEndElements = zmatrix::successorOf(numberOfEndElements); }
  void decrementNumberOfEndElements() { numberOfEndElements = zmatrix::predecessorOf(numberOfEndElements); }
  void incrementNumberOfWriteEvents() { numberOfMatrixWriteEvents = zmatrix::successorOf(numberOfMatrixWriteEvents); }
  void incrementNumberOfDeleteEvents() { numberOfMatrixDeleteEvents = zmatrix::successorOf(numberOfMatrixDeleteEvents); }
  void incrementNumberOfWriteCounts() { numberOfWriteCounts = zmatrix::successorOf(numberOfWriteCounts); }
  void addToNumberOfWriteCounts(int count) {
    numberOfWriteCounts = static_cast<int>(static_cast<unsigned>(numberOfWriteCounts) + static_cast<unsigned>(count));
  }

  /// Makes the per-dimension arrays reach dimIndex and raises currentDimension. 0 at maxDimOfMatrix and beyond, else 1.
  int checkMatrixDimension(int dimIndex) {
    return dimIndex < currentDimension && dimIndex < maxDimOfMatrix ? 1 : enterMatrixDimension(dimIndex);
  }
  /// Widens the limits seen in a dimension to include the index.
  int updateMatrixIndexInfo(int dimIndex, int index) {
    if (static_cast<unsigned>(dimIndex) >= static_cast<unsigned>(maximalIndices.count())) return reportDimensionBeyondCapacity();
    widenMatrixIndexInfo(dimIndex, index);
    return 1;
  }
  int updateMatrixIndexInfoAfterDelete(int dimIndex, int index) {
    if (static_cast<unsigned>(dimIndex) < static_cast<unsigned>(maximalIndices.count())) widenMatrixIndexInfo(dimIndex, index);
    return 1;
  }

  /// Forgets the limits seen in every dimension.
  void _resetIndexLimits();
  /// Makes the index limits of this many dimensions; the other per-dimension arrays keep their room.
  void _resizeIndexLimits(int capacity);

  // The arrays stay the record's. Each is valid until the record grows or is initialised anew.
  int* getSizeOfCoordinateDimensions() { return sizeOfCoordinateDimensions.data(); }
  int* getMinimalIndices() { return minimalIndices.data(); }
  int* getMaximalIndices() { return maximalIndices.data(); }
  int* getMinimalIndicesInDimension(int* numberOfDimensions) { return dimensionArray(minimalIndices, numberOfDimensions); }
  int* getMaximalIndicesInDimension(int* numberOfDimensions) { return dimensionArray(maximalIndices, numberOfDimensions); }
  /// Positions of the last walk: room for the root and getRoomOfMatrixPtr() steps below it.
  int* getMatrixPtr() { return matrixPtr.data(); }
  int getRoomOfMatrixPtr() const { return matrixPtr.count() - 1; }
  /// Makes room for a walk of at least this many steps. False, and nothing changed, if memory has run out.
  [[nodiscard]] bool growMatrixPtr(int numberOfSteps);
  /// One item read out of the matrix; the next read overwrites it.
  int* getTemporaryMemory() { return temporaryMemory.data(); }
  int* _getTemporaryMemory() { return temporaryMemory.data(); }
  /// How many integers may be read from `item` on: up to the end of the temporary memory if it lies there, else INT_MAX, since
  /// the length of a caller's array is not known here.
  int readableFrom(const int* item) const;
  /// Makes the temporary memory hold at least this many integers. Null if there is no room.
  [[nodiscard]] int* provideTemporaryMemory(int length);

  /// A flat copy of the record's values, zeroed and filled anew at each call; the record keeps it. Null if memory has run out.
  ZQMatrixProperties* getGlobalMatrixInfoParameters();
  void releaseMemoryGlobalMatrixInfoParameters();

  void printMatrixInfo();

  /// Writes the record as it stands in a matrix file.
  void writeUpdateInfo(zmatrix::ZQFileWriter& file, int withSequence);
  /// Reads the record from a matrix file: 1. For an illegal or truncated record -1, and the record is empty but for its
  /// updateInfoType, which keeps the file's value.
  int readUpdateInfo(zmatrix::ZQFileReader& file, int withSequence);

 protected:
  template <class Fields>
  void describeBasePart(Fields& fields);
  bool readBasePart(zmatrix::ZQFieldReader& fields);
  bool hasLegalSize(const zmatrix::ZQFieldReader& fields, int withSequence) const;
  /// One entry a dimension behind a flag; `unused` fills the entries that no dimension has yet.
  template <class Fields>
  void describeDimensions(Fields& fields, zmatrix::ZQArray<int>& array, int unused);
  /// Writes the parts of a tier's record, each described by its own function.
  template <class... Parts>
  void writeParts(zmatrix::ZQFileWriter& file, Parts... describePart);
  /// After a failed read: empties the record but for the file's type.
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

  int* dimensionArray(zmatrix::ZQArray<int>& array, int* numberOfDimensions) {
    if (numberOfDimensions != nullptr) *numberOfDimensions = currentDimension < array.count() ? currentDimension : array.count();
    return array.data();
  }

  int updateInfoSize = 0;  ///< bytes of this record on disk, once it was written
  // The fields. Defaults, file format and everything else about them stand in the rows of ZQMatrixFields.cpp.
  int magicNumber = 0;
  int updateInfoType = 0;
  unsigned int timeStamp = 0;
  int softwareVersion = 0;
  int matrixID = 0;
  int matrixType = 0;
  int allowLargeIndices = 0;
  int coordinateDimension = 0;
  int isFinalized = 0;
  int memIsReadOnly = 0;
  int maximalMatrixIndex = 0;
  int maxDimOfMatrix = 0;
  int memorySearchMethod = 0;
  int currentDimension = 0;
  int internalCurrentDimension = 0;
  int numberOfMatrixWriteEvents = 0;
  int numberOfMatrixDeleteEvents = 0;
  int numberOfMatrixElements = 0;
  int numberOfWriteElements = 0;
  int numberOfWriteCounts = 0;
  int numberOfEndElements = 0;
  int internalLengthOfTemporaryMemory = 0;
  zmatrix::ZQArray<int> sizeOfCoordinateDimensions;
  zmatrix::ZQArray<int> minimalIndices;
  zmatrix::ZQArray<int> maximalIndices;
  zmatrix::ZQArray<int> matrixPtr;
  zmatrix::ZQArray<int> temporaryMemory;
  ZQMatrixProperties* globalMatrixInfoParameters = nullptr;

 private:
  friend struct zmatrix::FieldTable;
  template <class Fields>
  void describeCoordinateSizes(Fields& fields);
  bool makeDimensionArrays(zmatrix::ZQFileReader& file);
  int reportDimensionBeyondCapacity() const;
  [[nodiscard]] bool growDimensionArrays(int capacity);
  void printCoordinateSizes();
  long long smallestLegalMaximalIndex() const;
  void widenMatrixIndexInfo(int dimIndex, int index) {
    if (index < minimalIndices[dimIndex]) minimalIndices[dimIndex] = index;
    if (index > maximalIndices[dimIndex]) maximalIndices[dimIndex] = index;
  }
};
