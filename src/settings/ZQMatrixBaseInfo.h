// The info record of a sub-matrix, base tier: identity, settings of the store, counters and working buffers. There is one per
// matrix ID. Only the destructor is virtual: methods of derived records hide those that they extend, and call them by qualified
// names. The counters, checkMatrixDimension and updateMatrixIndexInfo run on each step of a write and must stay inline.
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
/// The first file version with the tier in the header and the settings of update sequences in the records.
constexpr int firstVersionWithInfoType = 105;
constexpr int defaultCoordinateSize = -4;  ///< bytes of a coordinate in the update sequence; negative for signed ones

/// `value` + 1, `value` - 1 and -`value` with wraparound: index limits and counters may be at the limits of int.
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

  /// True if the sub-matrix has no elements.
  bool isEmpty() const { return numberOfWriteElements_ == 0 && numberOfMatrixElements_ == 0; }

  // Setters that check their value: a refusal prints at level 0 and keeps the old value; setting the current value prints
  // nothing.
  void setMatrixType(int value);
  /// Also sets the coordinate dimension to 1, 2 or 4, but setCoordinateDimension refuses that while allowLargeIndices is above 0.
  void setAllowLargeIndices(int value);
  void setCoordinateDimension(int dimension);
  void setMaxDimOfMatrix(int dimension);
  /// Also resets the index limits, even of a matrix that isn't empty.
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

  /// Grows the per-dimension arrays to include dimIndex and raises currentDimension. 0 from maxDimOfMatrix on, or if memory has
  /// run out, else 1.
  int checkMatrixDimension(int dimIndex) {
    return dimIndex < currentDimension_ && dimIndex < maxDimOfMatrix_ ? 1 : enterMatrixDimension(dimIndex);
  }
  /// Widens the index limits of a dimension to include the index.
  int updateMatrixIndexInfo(int dimIndex, int index) {
    if (static_cast<unsigned>(dimIndex) >= static_cast<unsigned>(maximalIndices_.count())) return reportDimensionBeyondCapacity();
    widenMatrixIndexInfo(dimIndex, index);
    return 1;
  }
  int updateMatrixIndexInfoAfterDelete(int dimIndex, int index) {
    if (static_cast<unsigned>(dimIndex) < static_cast<unsigned>(maximalIndices_.count())) widenMatrixIndexInfo(dimIndex, index);
    return 1;
  }

  /// Resets the index limits of all dimensions.
  void _resetIndexLimits();
  /// Resizes the arrays of index limits; the other per-dimension arrays keep their size.
  void _resizeIndexLimits(int capacity);

  // The record owns these arrays. They are valid until it grows or is initialised again.
  int* getSizeOfCoordinateDimensions() { return sizeOfCoordinateDimensions_.data(); }
  int* getMinimalIndices() { return minimalIndices_.data(); }
  int* getMaximalIndices() { return maximalIndices_.data(); }
  int* getMinimalIndicesInDimension(int* numberOfDimensions) { return dimensionArray(minimalIndices_, numberOfDimensions); }
  int* getMaximalIndicesInDimension(int* numberOfDimensions) { return dimensionArray(maximalIndices_, numberOfDimensions); }
  /// The path of the last walk: the root's position, then the begin of each field, for up to getRoomOfMatrixPtr() steps.
  int* getMatrixPtr() { return matrixPtr_.data(); }
  int getRoomOfMatrixPtr() const { return matrixPtr_.count() - 1; }
  /// Makes room for a walk of at least this many steps. False, and nothing changed, if memory has run out.
  [[nodiscard]] bool growMatrixPtr(int numberOfSteps);
  /// The item that was read out last.
  int* getTemporaryMemory() { return temporaryMemory_.data(); }
  int* _getTemporaryMemory() { return temporaryMemory_.data(); }
  /// The number of integers from `item` to the end of the temporary memory; INT_MAX if `item` doesn't lie in it, since the length
  /// of a caller's array is unknown.
  int readableFrom(const int* item) const;
  /// The temporary memory, grown to at least this many integers. Null if memory has run out.
  [[nodiscard]] int* provideTemporaryMemory(int length);

  /// A flat copy of the record's values, owned by the record and overwritten by the next call. Null if memory has run out.
  ZQMatrixProperties* getGlobalMatrixInfoParameters();
  void releaseMemoryGlobalMatrixInfoParameters();

  void printMatrixInfo();

  /// Writes the record to a matrix file.
  void writeUpdateInfo(zmatrix::ZQFileWriter& file, int withSequence);
  /// Reads the record from a matrix file: 1. For an illegal or truncated record -1; then the record is empty, but has the file's
  /// updateInfoType.
  int readUpdateInfo(zmatrix::ZQFileReader& file, int withSequence);

 protected:
  template <class Fields>
  void describeBasePart(Fields& fields);
  bool readBasePart(zmatrix::ZQFieldReader& fields);
  bool hasLegalSize(const zmatrix::ZQFieldReader& fields, int withSequence) const;
  /// A flag and, if it is 1, one entry per dimension; `unused` fills the entries of dimensions not in use.
  template <class Fields>
  void describeDimensions(Fields& fields, zmatrix::ZQArray<int>& array, int unused);
  /// Writes the parts of a tier's record, with a describing function for each.
  template <class... Parts>
  void writeParts(zmatrix::ZQFileWriter& file, Parts... describePart);
  /// After a failed read: empties the record, but keeps the file's updateInfoType. Returns -1.
  template <class Info>
  static int refuseRecord(Info& info, int id);

  int enterMatrixDimension(int dimIndex);
  /// The capacity that the per-dimension arrays need for dimIndex.
  int capacityForDimension(int dimIndex) const;
  void refuseOnFilledMatrix(const char* setter) const;
  /// Stores 0 and 1, and refuses other values with a message that begins with `label`.
  void storeFlag(int& field, int value, const char* label);
  void storeIfEmpty(int& field, int value, const char* setter);
  void storeFlagWithWarning(int& field, int value, const char* setter);

  int* dimensionArray(zmatrix::ZQArray<int>& array, int* numberOfDimensions) {
    if (numberOfDimensions != nullptr)
      *numberOfDimensions = currentDimension_ < array.count() ? currentDimension_ : array.count();
    return array.data();
  }

  int updateInfoSize_ = 0;  ///< size field of the record in a file, as it was last read or written
  // The fields. Their defaults, file format and other properties are rows of ZQMatrixFields.cpp.
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
