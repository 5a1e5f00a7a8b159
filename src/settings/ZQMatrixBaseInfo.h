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

  int getMagicNumber() const { return magicNumber_; }
  int getUpdateInfoType() const { return updateInfoType_; }
  void setUpdateInfoType(int value) { updateInfoType_ = value; }
  unsigned int getTimeStamp() const { return timeStamp_; }
  void setTimeStamp(unsigned int value) { timeStamp_ = value; }
  int getSoftwareVersion() const { return softwareVersion_; }
  int getMatrixID() const { return matrixId_; }
  int getMatrixType() const { return matrixType_; }
  int getAllowLargeIndices() const { return allowLargeIndices_; }
  int getCoordinateDimension() const { return coordinateDimension_; }
  int getIsFinalized() const { return isFinalized_; }
  void setIsFinalized(int value) { isFinalized_ = value; }
  int getMemIsReadOnly() const { return memIsReadOnly_; }
  void setMemIsReadOnly(int value) { memIsReadOnly_ = value; }
  int getMaximalMatrixIndex() const { return maximalMatrixIndex_; }
  int getMaxDimOfMatrix() const { return maxDimOfMatrix_; }
  int getMemorySearchMethod() const { return memorySearchMethod_; }
  void setMemorySearchMethod(int value) { memorySearchMethod_ = value; }
  int getCurrentDimension() const { return currentDimension_; }
  void _setCurrentDimension(int value) { currentDimension_ = value; }
  int getInternalCurrentDimension() const { return internalCurrentDimension_; }
  void _setInternalCurrentDimension(int value) { internalCurrentDimension_ = value; }
  int getNumberOfMatrixWriteEvents() const { return numberOfMatrixWriteEvents_; }
  void setNumberOfMatrixWriteEvents(int value) { numberOfMatrixWriteEvents_ = value; }
  int getNumberOfMatrixDeleteEvents() const { return numberOfMatrixDeleteEvents_; }
  int getNumberOfMatrixElements() const { return numberOfMatrixElements_; }
  void setNumberOfMatrixElements(int value) { numberOfMatrixElements_ = value; }
  int getNumberOfWriteElements() const { return numberOfWriteElements_; }
  void setNumberOfWriteElements(int value) { numberOfWriteElements_ = value; }
  int getNumberOfWriteCounts() const { return numberOfWriteCounts_; }
  void setNumberOfWriteCounts(int value) { numberOfWriteCounts_ = value; }
  int getNumberOfEndElements() const { return numberOfEndElements_; }
  void setNumberOfEndElements(int value) { numberOfEndElements_ = value; }
  int getUpdateInfoSize() const { return updateInfoSize_; }
  void setUpdateInfoSize(int value) { updateInfoSize_ = value; }

  /// True while nothing was ever written here, or all of it is gone.
  bool isEmpty() const { return numberOfWriteElements_ == 0 && numberOfMatrixElements_ == 0; }

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

  void incrementNumberOfMatrixElements() { numberOfMatrixElements_ = zmatrix::successorOf(numberOfMatrixElements_); }
  void decrementNumberOfMatrixElements() { numberOfMatrixElements_ = zmatrix::predecessorOf(numberOfMatrixElements_); }
  void incrementNumberOfWriteElements() { numberOfWriteElements_ = zmatrix::successorOf(numberOfWriteElements_); }
  void decrementNumberOfWriteElements() { numberOfWriteElements_ = zmatrix::predecessorOf(numberOfWriteElements_); }
  void incrementNumberOfEndElements() { numberOfEndElements_ = zmatrix::successorOf(numberOfEndElements_); }
  void decrementNumberOfEndElements() { numberOfEndElements_ = zmatrix::predecessorOf(numberOfEndElements_); }
  void incrementNumberOfWriteEvents() { numberOfMatrixWriteEvents_ = zmatrix::successorOf(numberOfMatrixWriteEvents_); }
  void incrementNumberOfDeleteEvents() { numberOfMatrixDeleteEvents_ = zmatrix::successorOf(numberOfMatrixDeleteEvents_); }
  void incrementNumberOfWriteCounts() { numberOfWriteCounts_ = zmatrix::successorOf(numberOfWriteCounts_); }
  void addToNumberOfWriteCounts(int count) {
    numberOfWriteCounts_ = static_cast<int>(static_cast<unsigned>(numberOfWriteCounts_) + static_cast<unsigned>(count));
  }

  /// Makes the per-dimension arrays reach dimIndex and raises currentDimension. 0 at maxDimOfMatrix and beyond, else 1.
  int checkMatrixDimension(int dimIndex) {
    return dimIndex < currentDimension_ && dimIndex < maxDimOfMatrix_ ? 1 : enterMatrixDimension(dimIndex);
  }
  /// Widens the limits seen in a dimension to include the index.
  int updateMatrixIndexInfo(int dimIndex, int index) {
    if (static_cast<unsigned>(dimIndex) >= static_cast<unsigned>(maximalIndices_.count())) return reportDimensionBeyondCapacity();
    widenMatrixIndexInfo(dimIndex, index);
    return 1;
  }
  int updateMatrixIndexInfoAfterDelete(int dimIndex, int index) {
    if (static_cast<unsigned>(dimIndex) < static_cast<unsigned>(maximalIndices_.count())) widenMatrixIndexInfo(dimIndex, index);
    return 1;
  }

  /// Forgets the limits seen in every dimension.
  void _resetIndexLimits();
  /// Makes the index limits of this many dimensions; the other per-dimension arrays keep their room.
  void _resizeIndexLimits(int capacity);

  // The arrays stay the record's. Each is valid until the record grows or is initialised anew.
  int* getSizeOfCoordinateDimensions() { return sizeOfCoordinateDimensions_.data(); }
  int* getMinimalIndices() { return minimalIndices_.data(); }
  int* getMaximalIndices() { return maximalIndices_.data(); }
  int* getMinimalIndicesInDimension(int* numberOfDimensions) { return dimensionArray(minimalIndices_, numberOfDimensions); }
  int* getMaximalIndicesInDimension(int* numberOfDimensions) { return dimensionArray(maximalIndices_, numberOfDimensions); }
  /// Positions of the last walk: room for the root and getRoomOfMatrixPtr() steps below it.
  int* getMatrixPtr() { return matrixPtr_.data(); }
  int getRoomOfMatrixPtr() const { return matrixPtr_.count() - 1; }
  /// Makes room for a walk of at least this many steps. False, and nothing changed, if memory has run out.
  [[nodiscard]] bool growMatrixPtr(int numberOfSteps);
  /// One item read out of the matrix; the next read overwrites it.
  int* getTemporaryMemory() { return temporaryMemory_.data(); }
  int* _getTemporaryMemory() { return temporaryMemory_.data(); }
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
    if (numberOfDimensions != nullptr)
      *numberOfDimensions = currentDimension_ < array.count() ? currentDimension_ : array.count();
    return array.data();
  }

  int updateInfoSize_ = 0;  ///< bytes of this record on disk, once it was written
  // The fields. Defaults, file format and everything else about them stand in the rows of ZQMatrixFields.cpp.
  int magicNumber_ = 0;
  int updateInfoType_ = 0;
  unsigned int timeStamp_ = 0;
  int softwareVersion_ = 0;
  int matrixId_ = 0;
  int matrixType_ = 0;
  int allowLargeIndices_ = 0;
  int coordinateDimension_ = 0;
  int isFinalized_ = 0;
  int memIsReadOnly_ = 0;
  int maximalMatrixIndex_ = 0;
  int maxDimOfMatrix_ = 0;
  int memorySearchMethod_ = 0;
  int currentDimension_ = 0;
  int internalCurrentDimension_ = 0;
  int numberOfMatrixWriteEvents_ = 0;
  int numberOfMatrixDeleteEvents_ = 0;
  int numberOfMatrixElements_ = 0;
  int numberOfWriteElements_ = 0;
  int numberOfWriteCounts_ = 0;
  int numberOfEndElements_ = 0;
  int internalLengthOfTemporaryMemory_ = 0;
  zmatrix::ZQArray<int> sizeOfCoordinateDimensions_;
  zmatrix::ZQArray<int> minimalIndices_;
  zmatrix::ZQArray<int> maximalIndices_;
  zmatrix::ZQArray<int> matrixPtr_;
  zmatrix::ZQArray<int> temporaryMemory_;
  ZQMatrixProperties* globalMatrixInfoParameters_ = nullptr;

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
    if (index < minimalIndices_[dimIndex]) minimalIndices_[dimIndex] = index;
    if (index > maximalIndices_[dimIndex]) maximalIndices_[dimIndex] = index;
  }
};
