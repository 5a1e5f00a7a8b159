// The info record of a sub-matrix, medium tier: adds what learning and continuing sequences needs, its settings and counters, the
// kernel sequence (the present context of a continuation) and the packed sequence of the last feed.
#pragma once

#include "settings/ZQKernelItems.h"
#include "settings/ZQMatrixBaseInfo.h"
#include "settings/ZQMatrixRandom.h"

class ZQMatrixMediumInfo : public ZQMatrixBaseInfo {
 public:
  ZQMatrixMediumInfo() = default;
  ~ZQMatrixMediumInfo() override = default;

  int initMatrixInfo(int id);
  /// As the base does; midiSoundID and musicStyle end as 0. A record that is only of the base type is only deinitialised as such.
  void deInitMatrixInfo();

#define ZQ_MEDIUM_ROWS
#define ZQ_FIELD(type, name, Name, initial, since, printType, format) \
  zmatrix::AccessorType<type> get##Name() const {                     \
    return name;                                                      \
  }
#define ZQ_GUARDED(type, name, Name, initial, since, printType, format)
#include "settings/ZQMatrixInfoFields.def"
#define ZQ_MEDIUM_ROWS
#define ZQ_PLAIN(type, name, Name, initial, since, printType, format) \
  void set##Name(zmatrix::AccessorType<type> value) {                 \
    name = static_cast<type>(value);                                  \
  }
#define ZQ_INTERNAL(type, name, Name, initial, since, printType, format) \
  void _set##Name(zmatrix::AccessorType<type> value) {                   \
    name = static_cast<type>(value);                                     \
  }
#define ZQ_EMPTY_ONLY(type, name, Name, initial, since, printType, format) \
  void set##Name(int value) {                                              \
    storeIfEmpty(name, value, "set" #Name);                                \
  }
#define ZQ_OCRON(type, name, Name, initial, since, printType, format) \
  void set##Name(int value) {                                         \
    storeIfEmpty(name, value, "set" #Name);                           \
  }
#define ZQ_FLAG(type, name, Name, initial, since, printType, format, label) \
  void set##Name(int value) {                                               \
    storeFlag(name, value, label);                                          \
  }
#define ZQ_WARNED_FLAG(type, name, Name, initial, since, printType, format) \
  void set##Name(int value) {                                               \
    storeFlagWithWarning(name, value, "set" #Name);                         \
  }
#include "settings/ZQMatrixInfoFields.def"

  int getIsPhraseMatrix() const {
    return isPhraseMatrix;
  }
  void setIsPhraseMatrix(int value);
  int getMaxPhraseLengthForUpdateWithSequence() const {
    return maxPhraseLengthForUpdateWithSequence;
  }
  void setMaxPhraseLengthForUpdateWithSequence(int length);
  int getSkillOutputLevel() const {
    return skillOutputLevel;
  }
  /// 0 to maxPhraseLengthForUpdateWithSequence; anything else stores that length.
  void setSkillOutputLevel(int level);
  int getSuccessorMethod() const {
    return successorMethod;
  }
  /// 1 to 3; anything else stores 3. The name is spelled so.
  void setSucessorMethod(int method);
  void setSuccessorMethod(int method) {
    setSucessorMethod(method);
  }
  int getIsOverDetermined() const {
    return isOverDetermined;
  }
  void _setIsOverDetermined(int value) {
    storeFlag(isOverDetermined, value, "_isOverDetermined");
  }
  int getHasBeenChanged() const {
    return hasBeenChanged;
  }
  void setHasBeenChanged(int value) {
    storeFlag(hasBeenChanged, value, "setHasBeenChanged");
  }

  /// Each call is a step of the successor generator.
  long long getSuccessorRandomValue() {
    return zmatrix::nextRandomValue(successorRandomValue);
  }
  /// The same as a fraction from 0 to 1.
  double drawSuccessorFraction() {
    return static_cast<double>(getSuccessorRandomValue()) / zmatrix::largestRandomValue;
  }
  long long getActualSuccessorRandomValue() const {
    return successorRandomValue;
  }
  void setSuccessorRandomValue(long long value) {
    successorRandomValue = value;
  }

  char* getNameOfUpdateFile() {
    return nameOfUpdateFile;
  }
  /// Keeps at most 256 characters.
  void setNameOfUpdateFile(const char* name);
  /// All names so far, one per line, or null.
  char* getNamesOfUpdateFiles() {
    return namesOfUpdateFiles.data();
  }
  void addNameOfUpdateFile(const char* name);
  char* getMidiChannelFilterArray() {
    return midiChannelFilter;
  }
  void setMidiChannelFilterArray(const char* channels);

  void incrementUpdateIndex() {
    updateIndex = zmatrix::successorOf(updateIndex);
  }
  void incrementNumberOfRuleElements() {
    numberOfRuleElements = zmatrix::successorOf(numberOfRuleElements);
  }
  void decrementNumberOfRuleElements() {
    numberOfRuleElements = zmatrix::predecessorOf(numberOfRuleElements);
  }
  void incrementNumberOfUniqueRuleElements() {
    numberOfUniqueRuleElements = zmatrix::successorOf(numberOfUniqueRuleElements);
  }
  void decrementNumberOfUniqueRuleElements() {
    numberOfUniqueRuleElements = zmatrix::predecessorOf(numberOfUniqueRuleElements);
  }
  void incrementNumberOfOverDeterminedRules() {
    numberOfOverDeterminedRules = zmatrix::successorOf(numberOfOverDeterminedRules);
  }
  void decrementNumberOfOverDeterminedRules() {
    numberOfOverDeterminedRules = zmatrix::predecessorOf(numberOfOverDeterminedRules);
  }
  void incrementNumberOfStartElements() {
    numberOfStartElements = zmatrix::successorOf(numberOfStartElements);
  }
  void decrementNumberOfStartElements() {
    numberOfStartElements = zmatrix::predecessorOf(numberOfStartElements);
  }

  /// Drops the kernel arrays for new ones of zeros, even if the dimension is then refused.
  void setCoordinateDimension(int dimension);
  int checkMatrixDimension(int dimIndex) {
    return dimIndex < currentDimension && dimIndex < maxDimOfMatrix ? 1 : enterMediumMatrixDimension(dimIndex);
  }
  int* getRulesInDimension(int* numberOfDimensions) {
    return dimensionArray(rulesInDimension, numberOfDimensions);
  }
  int* getUniqueRulesInDimension(int* numberOfDimensions) {
    return dimensionArray(uniqueRulesInDimension, numberOfDimensions);
  }
  int* getWriteElementsInDimension(int* numberOfDimensions) {
    return dimensionArray(writeElementsInDimension, numberOfDimensions);
  }

  // The kernel as its getters show it: a copy, a row a coordinate, each at least 256 items long. Null without memory. A copy
  // holds until the next call.
  int** getKernelOriginalSequence() {
    return kernelRows(kernelOriginalSequence);
  }
  int** getKernelOriginalSequenceInitialValues() {
    return kernelRows(kernelOriginalSequenceInitialValues);
  }
  int** getKernelPreProcessedSequence() {
    return kernelRows(kernelPreProcessedSequence);
  }
  // The kernel itself, item after item. The items behind the length keep what they were.
  const int* getKernelOriginalItems() const {
    return kernelOriginalSequence.data();
  }
  const int* getKernelPreProcessedItems() const {
    return kernelPreProcessedSequence.data();
  }
  /// Room for `length` items of the original kernel and its initial values, or of the preprocessed kernel; the internal lengths
  /// are the caller's to set. False without memory.
  bool provideKernelOriginal(int length) {
    length = length > firstKernelLength ? length : firstKernelLength;
    return kernelOriginalSequence.provide(coordinateDimension, length) &&
           kernelOriginalSequenceInitialValues.provide(coordinateDimension, length);
  }
  bool provideKernelPreProcessed(int length) {
    return kernelPreProcessedSequence.provide(coordinateDimension, length > firstKernelLength ? length : firstKernelLength);
  }
  /// Each takes `length` items over, which may lie in the kernel. False, and nothing changed, without memory.
  bool storeKernelOriginal(const int* items, int length);
  bool storeKernelInitialValues(const int* items, int length);
  bool storeKernelPreProcessed(const int* items, int length);
  /// Where an item behind the first `length` ones would stand, which does not make it part of the kernel; null without memory.
  /// The preprocessed kernel then has the room that it grows to with that item.
  int* roomBehindKernelOriginal(int length);
  int* roomBehindKernelPreProcessed(int length);

  /// Whether the preprocessed kernel is all that preprocessing the original kernel gives. Any change of the kernel, or of a
  /// setting that preprocessing goes by, makes it unknown, which is false.
  bool kernelFacesAgree() const {
    return facesThatAgree == currentFaces();
  }
  void noteThatKernelFacesAgree() {
    facesThatAgree = currentFaces();
  }

  /// Back to the root, and to the initial values or the default item. The items left in the original kernel.
  int resetKernelSequence(int id, int resetInitialValues);

  // Copies of the kernel, made with systemMalloc for the caller to free: flat arrays, null if empty, or one block of item
  // pointers and items.
  int* getKernelOriginalSequenceFlatIndexVector(int* length, int* dimension);
  int* getKernelOriginalSequenceInitialValuesFlatIndexVector(int* length, int* dimension);
  int* getKernelPreProcessedSequenceIndexVector(int* length, int* dimension);
  int** createKernelOriginalSequenceObjexVector(int* count, int* dimension);
  int** createKernelOriginalSequenceInitialValuesObjexVector(int* count, int* dimension);
  int** createKernelPreprocessedSequenceObjexVector(int* count, int* dimension);
  /// The preprocessed rows themselves, with a note at level 8.
  int** getKernelSequenceObjectVector(int* count, int* dimension);
  /// Does nothing but print a note at level 8; 0.
  int initializeKernelSequenceWithObjectOriginalSequence(int** items, int count);

  /// Packs the items just fed, `length` integers, at the smallest width that holds each coordinate; four rows of line feeds
  /// follow.
  void generateUpdateInfoSequence(const int* sequence, int length);
  char* getUpdateSequence() {
    return updateSequence.data();
  }
  int getNumberOfUpdateSequenceBytes() const {
    return updateSequence.size();
  }

  ZQMatrixProperties* getGlobalMatrixInfoParameters();
  void printMatrixInfo();

  /// As the base does. With withSequence 1 the packed sequence of the last feed goes along.
  void writeUpdateInfo(zmatrix::ZQFileWriter& file, int withSequence);
  int readUpdateInfo(zmatrix::ZQFileReader& file, int withSequence);

 protected:
  template <class Fields>
  void describeMediumPart(Fields& fields, int withSequence);
  bool readMediumPart(zmatrix::ZQFieldReader& fields, int withSequence);

#define ZQ_MEDIUM_ROWS
#define ZQ_FIELD(type, name, Name, initial, since, printType, format) type name{};
#include "settings/ZQMatrixInfoFields.def"
  static constexpr int nameCapacity = 256;
  static constexpr int firstKernelLength = 256;
  char nameOfUpdateFile[nameCapacity + 1] = {};  ///< a name may fill it; the byte behind stays 0 for whoever reads on
  char midiChannelFilter[16] = {};
  zmatrix::HeapArray<int> rulesInDimension;
  zmatrix::HeapArray<int> uniqueRulesInDimension;
  zmatrix::HeapArray<int> writeElementsInDimension;
  zmatrix::ZQKernelItems kernelOriginalSequence;
  zmatrix::ZQKernelItems kernelPreProcessedSequence;
  zmatrix::HeapArray<char> updateSequence;  ///< rows of one item each, packed
  zmatrix::ZQKernelItems kernelOriginalSequenceInitialValues;
  int hasBeenChanged = 0;  ///< 1 after an update since the last load
  zmatrix::HeapArray<char> namesOfUpdateFiles;

 private:
  /// What decides whether the faces of the kernel agree, besides their items.
  struct KernelFaces {
    int preProcessingType, coordinateDimension, midiTimeSignatureNom, midiTimeSignatureDenom, lengthOfOriginal,
        lengthOfPreProcessed;
    bool operator==(const KernelFaces&) const = default;
  };
  static constexpr KernelFaces noFaces = {-1, -1, 0, 0, -1, -1};

  KernelFaces currentFaces() const {
    return {preProcessingType,
            coordinateDimension,
            midiTimeSignatureNom,
            midiTimeSignatureDenom,
            lengthOfKernelOriginalSequence,
            lengthOfKernelPreProcessedSequence};
  }
  template <class Fields>
  void describeKernel(Fields& fields, zmatrix::ZQKernelItems& items, int& length);
  template <class Fields>
  void describeNamesOfUpdateFiles(Fields& fields);
  template <class Fields>
  void describeUpdateSequence(Fields& fields, int withSequence);
  void setMediumDefaults();
  bool makeMediumArrays(zmatrix::ZQFileReader& file);
  int enterMediumMatrixDimension(int dimIndex);
  int** kernelRows(zmatrix::ZQKernelItems& items) {
    return items.provide(coordinateDimension, firstKernelLength) ? items.rows() : nullptr;
  }
  bool makeKernelItems(int dimension);
  bool writeDefaultItems(int numberOfItems);
  int* flatCopy(zmatrix::ZQKernelItems& from, int numberOfItems, int* length, int* dimension);
  int** objexCopy(zmatrix::ZQKernelItems& from, int numberOfItems, int* count, int* dimension);
  void chooseCoordinateSizes(const int* sequence, int numberOfItems);
  void restoreCoordinateSizes(const int* oldSizes, int numberOfOldSizes);
  int sizeOfUpdateRow() const;
  void packItems(const int* sequence, int numberOfItems, char* row) const;
  void printUpdateSequence();
  void printKernelItems(const char* name, zmatrix::ZQKernelItems& items, int numberOfItems);
  void printDimensions();

  KernelFaces facesThatAgree = noFaces;
};

/// How many original items the inverse of a preprocessing must be given before the first preprocessed item.
int sGetNumberOriginalItemsToRestoreFromPreprocessed(int preProcessingType);
