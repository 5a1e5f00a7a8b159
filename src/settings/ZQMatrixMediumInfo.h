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

  // Setters that refuse print at level 0 and keep the old value. The others store what they are given.
  int getUpdateIndex() const { return updateIndex; }
  int getTotalLengthOfAllUpdateSequences() const { return totalLengthOfAllUpdateSequences; }
  int getLengthOfUpdateSequence() const { return lengthOfUpdateSequence; }
  void setLengthOfUpdateSequence(int value) { lengthOfUpdateSequence = value; }
  int getIsPhraseMatrix() const { return isPhraseMatrix; }
  void setIsPhraseMatrix(int value);
  int getPreProcessingType() const { return preProcessingType; }
  void setPreProcessingType(int value) { storeIfEmpty(preProcessingType, value, "setPreProcessingType"); }
  int getMaxPhraseLengthForUpdateWithSequence() const { return maxPhraseLengthForUpdateWithSequence; }
  void setMaxPhraseLengthForUpdateWithSequence(int length);
  int getNumberOfRuleElements() const { return numberOfRuleElements; }
  void setNumberOfRuleElements(int value) { numberOfRuleElements = value; }
  int getNumberOfUniqueRuleElements() const { return numberOfUniqueRuleElements; }
  void setNumberOfUniqueRuleElements(int value) { numberOfUniqueRuleElements = value; }
  int getNumberOfOverDeterminedRules() const { return numberOfOverDeterminedRules; }
  void setNumberOfOverDeterminedRules(int value) { numberOfOverDeterminedRules = value; }
  int getNumberOfStartElements() const { return numberOfStartElements; }
  void setNumberOfStartElements(int value) { numberOfStartElements = value; }
  int getLengthOfKernelOriginalSequence() const { return lengthOfKernelOriginalSequence; }
  void setLengthOfKernelOriginalSequence(int value) { lengthOfKernelOriginalSequence = value; }
  int getLengthOfKernelPreProcessedSequence() const { return lengthOfKernelPreProcessedSequence; }
  void setLengthOfKernelPreProcessedSequence(int value) { lengthOfKernelPreProcessedSequence = value; }
  int getInternalLengthOfKernelOriginalSequence() const { return internalLengthOfKernelOriginalSequence; }
  void _setInternalLengthOfKernelOriginalSequence(int value) { internalLengthOfKernelOriginalSequence = value; }
  int getInternalLengthOfKernelPreProcessedSequence() const { return internalLengthOfKernelPreProcessedSequence; }
  void _setInternalLengthOfKernelPreProcessedSequence(int value) { internalLengthOfKernelPreProcessedSequence = value; }
  int getKernelMatrixHandle() const { return kernelMatrixHandle; }
  void setKernelMatrixHandle(int value) { kernelMatrixHandle = value; }
  int getUseStartOfSequence() const { return useStartOfSequence; }
  void setUseStartOfSequence(int value) { storeFlagWithWarning(useStartOfSequence, value, "setUseStartOfSequence"); }
  int getUseEndOfSequence() const { return useEndOfSequence; }
  void setUseEndOfSequence(int value) { storeFlagWithWarning(useEndOfSequence, value, "setUseEndOfSequence"); }
  int getUsePhrasesForUpdateMatrixWithLongANSIText() const { return usePhrasesForUpdateMatrixWithLongANSIText; }
  void setUsePhrasesForUpdateMatrixWithLongANSIText(int value) {
    storeFlagWithWarning(usePhrasesForUpdateMatrixWithLongANSIText, value, "setUsePhrasesForUpdateMatrixWithLongANSIText");
  }
  int getSkillOutputLevel() const { return skillOutputLevel; }
  /// 0 to maxPhraseLengthForUpdateWithSequence; anything else stores that length.
  void setSkillOutputLevel(int level);
  int getSuccessorMethod() const { return successorMethod; }
  /// 1 to 3; anything else stores 3.
  void setSuccessorMethod(int method);
  int getRestartWithTrueStartItem() const { return restartWithTrueStartItem; }
  void setRestartWithTrueStartItem(int value) { storeFlag(restartWithTrueStartItem, value, "restartWithTrueStartItem"); }
  int getEnableStopItem() const { return enableStopItem; }
  void setEnableStopItem(int value) { storeFlag(enableStopItem, value, "setEnableStopItem"); }
  int getIncludeOverdeterminedRules() const { return includeOverdeterminedRules; }
  void setIncludeOverdeterminedRules(int value) { storeFlag(includeOverdeterminedRules, value, "setincludeOverdeterminedRules"); }
  int getIsOverDetermined() const { return isOverDetermined; }
  void _setIsOverDetermined(int value) { storeFlag(isOverDetermined, value, "_isOverDetermined"); }
  int getAddUpdateInfo() const { return addUpdateInfo; }
  void setAddUpdateInfo(int value) { storeFlag(addUpdateInfo, value, "setAddUpdateInfo"); }
  int getAddSequenceToUpdateInfo() const { return addSequenceToUpdateInfo; }
  void setAddSequenceToUpdateInfo(int value) { storeFlag(addSequenceToUpdateInfo, value, "setAddSequenceToUpdateInfo"); }
  int getAddSequenceToUpdateInfoMode() const { return addSequenceToUpdateInfoMode; }
  void setAddSequenceToUpdateInfoMode(int value) {
    storeFlag(addSequenceToUpdateInfoMode, value, "setAddSequenceToUpdateInfoMode");
  }
  int getHasBeenChanged() const { return hasBeenChanged; }
  void setHasBeenChanged(int value) { storeFlag(hasBeenChanged, value, "setHasBeenChanged"); }
  int getSuccessorRandomType() const { return successorRandomType; }
  void setSuccessorRandomType(int value) { successorRandomType = value; }
  int getMidiTimeSignatureNom() const { return midiTimeSignatureNom; }
  void setMidiTimeSignatureNom(int value) { midiTimeSignatureNom = value; }
  int getMidiTimeSignatureDenom() const { return midiTimeSignatureDenom; }
  void setMidiTimeSignatureDenom(int value) { midiTimeSignatureDenom = value; }
  int getLanguage() const { return language; }
  void setLanguage(int value) { language = value; }
  int getMidiSubType() const { return midiSubType; }
  void setMidiSubType(int value) { midiSubType = value; }
  int getMidiSoundID() const { return midiSoundID; }
  void setMidiSoundID(int value) { midiSoundID = value; }
  int getMidiNoteOnQuantization() const { return midiNoteOnQuantization; }
  void setMidiNoteOnQuantization(int value) { midiNoteOnQuantization = value; }
  int getMidiDurationQuantization() const { return midiDurationQuantization; }
  void setMidiDurationQuantization(int value) { midiDurationQuantization = value; }
  int getMidiTrackAnalyze() const { return midiTrackAnalyze; }
  void setMidiTrackAnalyze(int value) { midiTrackAnalyze = value; }
  int getMusicStyle() const { return musicStyle; }
  void setMusicStyle(int value) { musicStyle = value; }
  int getOcronType() const { return ocronType; }
  void setOcronType(int value) { storeIfEmpty(ocronType, value, "setOcronType"); }
  int getOcronEndSymbol() const { return ocronEndSymbol; }
  void setOcronEndSymbol(int value) { storeIfEmpty(ocronEndSymbol, value, "setOcronEndSymbol"); }
  int getOcronAlgorithm() const { return ocronAlgorithm; }
  void setOcronAlgorithm(int value) { storeIfEmpty(ocronAlgorithm, value, "setOcronAlgorithm"); }
  int getGocronAlgorithm() const { return gocronAlgorithm; }
  void setGocronAlgorithm(int value) { storeIfEmpty(gocronAlgorithm, value, "setGocronAlgorithm"); }
  int getGocronNumberBase() const { return gocronNumberBase; }
  void setGocronNumberBase(int value) { storeIfEmpty(gocronNumberBase, value, "setGocronNumberBase"); }
  int getGocronASTERISKValue() const { return gocronASTERISKValue; }
  void setGocronASTERISKValue(int value) { storeIfEmpty(gocronASTERISKValue, value, "setGocronASTERISKValue"); }
  int getGocronPValue() const { return gocronPValue; }
  void setGocronPValue(int value) { storeIfEmpty(gocronPValue, value, "setGocronPValue"); }
  int getGocronTWOValue() const { return gocronTWOValue; }
  void setGocronTWOValue(int value) { storeIfEmpty(gocronTWOValue, value, "setGocronTWOValue"); }
  int getGocronPOWValue() const { return gocronPOWValue; }
  void setGocronPOWValue(int value) { storeIfEmpty(gocronPOWValue, value, "setGocronPOWValue"); }
  int getGocronQValue() const { return gocronQValue; }
  void setGocronQValue(int value) { storeIfEmpty(gocronQValue, value, "setGocronQValue"); }

  /// Each call is a step of the successor generator.
  long long getSuccessorRandomValue() { return zmatrix::nextRandomValue(successorRandomValue); }
  /// The same as a fraction from 0 to 1.
  double drawSuccessorFraction() { return static_cast<double>(getSuccessorRandomValue()) / zmatrix::largestRandomValue; }
  long long getActualSuccessorRandomValue() const { return successorRandomValue; }
  void setSuccessorRandomValue(long long value) { successorRandomValue = value; }

  char* getNameOfUpdateFile() { return nameOfUpdateFile; }
  /// Keeps at most 256 characters.
  void setNameOfUpdateFile(const char* name);
  /// All names so far, one per line, or null.
  char* getNamesOfUpdateFiles() { return namesOfUpdateFiles.data(); }
  void addNameOfUpdateFile(const char* name);
  char* getMidiChannelFilterArray() { return midiChannelFilter; }
  void setMidiChannelFilterArray(const char* channels);

  void incrementUpdateIndex() { updateIndex = zmatrix::successorOf(updateIndex); }
  void incrementNumberOfRuleElements() { numberOfRuleElements = zmatrix::successorOf(numberOfRuleElements); }
  void decrementNumberOfRuleElements() { numberOfRuleElements = zmatrix::predecessorOf(numberOfRuleElements); }
  void incrementNumberOfUniqueRuleElements() { numberOfUniqueRuleElements = zmatrix::successorOf(numberOfUniqueRuleElements); }
  void decrementNumberOfUniqueRuleElements() { numberOfUniqueRuleElements = zmatrix::predecessorOf(numberOfUniqueRuleElements); }
  void incrementNumberOfOverDeterminedRules() { numberOfOverDeterminedRules = zmatrix::successorOf(numberOfOverDeterminedRules); }
  void decrementNumberOfOverDeterminedRules() {
    numberOfOverDeterminedRules = zmatrix::predecessorOf(numberOfOverDeterminedRules);
  }
  void incrementNumberOfStartElements() { numberOfStartElements = zmatrix::successorOf(numberOfStartElements); }
  void decrementNumberOfStartElements() { numberOfStartElements = zmatrix::predecessorOf(numberOfStartElements); }

  /// Drops the kernel arrays for new ones of zeros, even if the dimension is then refused.
  void setCoordinateDimension(int dimension);
  int checkMatrixDimension(int dimIndex) {
    return dimIndex < currentDimension && dimIndex < maxDimOfMatrix ? 1 : enterMediumMatrixDimension(dimIndex);
  }
  int* getRulesInDimension(int* numberOfDimensions) { return dimensionArray(rulesInDimension, numberOfDimensions); }
  int* getUniqueRulesInDimension(int* numberOfDimensions) { return dimensionArray(uniqueRulesInDimension, numberOfDimensions); }
  int* getWriteElementsInDimension(int* numberOfDimensions) {
    return dimensionArray(writeElementsInDimension, numberOfDimensions);
  }

  // The kernel as its getters show it: a copy, a row a coordinate, each at least 256 items long. Null without memory. A copy
  // holds until the next call.
  int** getKernelOriginalSequence() { return kernelRows(kernelOriginalSequence); }
  int** getKernelOriginalSequenceInitialValues() { return kernelRows(kernelOriginalSequenceInitialValues); }
  int** getKernelPreProcessedSequence() { return kernelRows(kernelPreProcessedSequence); }
  // The kernel itself, item after item. The items behind the length keep what they were.
  const int* getKernelOriginalItems() const { return kernelOriginalSequence.data(); }
  const int* getKernelPreProcessedItems() const { return kernelPreProcessedSequence.data(); }
  /// Room for `length` items of the original kernel and its initial values, or of the preprocessed kernel; the internal lengths
  /// are the caller's to set. False without memory.
  bool provideKernelOriginal(int length) {
    length = length > zmatrix::initialKernelLength ? length : zmatrix::initialKernelLength;
    return kernelOriginalSequence.provide(coordinateDimension, length) &&
           kernelOriginalSequenceInitialValues.provide(coordinateDimension, length);
  }
  bool provideKernelPreProcessed(int length) {
    return kernelPreProcessedSequence.provide(coordinateDimension,
                                              length > zmatrix::initialKernelLength ? length : zmatrix::initialKernelLength);
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
  bool kernelFacesAgree() const { return facesThatAgree == currentFaces(); }
  void noteThatKernelFacesAgree() { facesThatAgree = currentFaces(); }

  /// Sets the kernel back to the root, and the original sequence to its initial values or to default items. Result: the number of
  /// items in the original sequence.
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
  char* getUpdateSequence() { return updateSequence.data(); }
  int getNumberOfUpdateSequenceBytes() const { return updateSequence.count(); }

  ZQMatrixProperties* getGlobalMatrixInfoParameters();
  void printMatrixInfo();

  /// As the base does. With withSequence 1 the packed sequence of the last feed is part of the record.
  void writeUpdateInfo(zmatrix::ZQFileWriter& file, int withSequence);
  int readUpdateInfo(zmatrix::ZQFileReader& file, int withSequence);

 protected:
  template <class Fields>
  void describeMediumPart(Fields& fields, int withSequence);
  bool readMediumPart(zmatrix::ZQFieldReader& fields, int withSequence);

  // The fields, described in ZQMatrixFields.cpp.
  int updateIndex = 0;
  int isPhraseMatrix = 0;
  int totalLengthOfAllUpdateSequences = 0;
  int preProcessingType = 0;
  int lengthOfUpdateSequence = 0;
  int maxPhraseLengthForUpdateWithSequence = 0;
  int numberOfRuleElements = 0;
  int numberOfUniqueRuleElements = 0;
  int numberOfOverDeterminedRules = 0;
  int numberOfStartElements = 0;
  int lengthOfKernelOriginalSequence = 0;
  int lengthOfKernelPreProcessedSequence = 0;
  int internalLengthOfKernelOriginalSequence = 0;
  int internalLengthOfKernelPreProcessedSequence = 0;
  int kernelMatrixHandle = 0;
  int useStartOfSequence = 0;
  int useEndOfSequence = 0;
  int usePhrasesForUpdateMatrixWithLongANSIText = 0;
  int skillOutputLevel = 0;
  int successorMethod = 0;
  int restartWithTrueStartItem = 0;
  int enableStopItem = 0;
  int includeOverdeterminedRules = 0;
  int isOverDetermined = 0;
  int addUpdateInfo = 0;
  int addSequenceToUpdateInfo = 0;
  int addSequenceToUpdateInfoMode = 0;
  long long successorRandomValue = 0;
  int successorRandomType = 0;
  int midiTimeSignatureNom = 0;
  int midiTimeSignatureDenom = 0;
  int language = 0;
  int midiSubType = 0;
  int midiSoundID = 0;
  int midiNoteOnQuantization = 0;
  int midiDurationQuantization = 0;
  int midiTrackAnalyze = 0;
  int musicStyle = 0;
  int ocronType = 0;
  int ocronEndSymbol = 0;
  int ocronAlgorithm = 0;
  int gocronAlgorithm = 0;
  int gocronNumberBase = 0;
  int gocronASTERISKValue = 0;
  int gocronPValue = 0;
  int gocronTWOValue = 0;
  int gocronPOWValue = 0;
  int gocronQValue = 0;
  static constexpr int nameCapacity = 256;
  char nameOfUpdateFile[nameCapacity + 1] = {};  ///< the byte behind a name of full length stays 0
  char midiChannelFilter[16] = {};
  zmatrix::ZQArray<int> rulesInDimension;
  zmatrix::ZQArray<int> uniqueRulesInDimension;
  zmatrix::ZQArray<int> writeElementsInDimension;
  zmatrix::ZQKernelItems kernelOriginalSequence;
  zmatrix::ZQKernelItems kernelPreProcessedSequence;
  zmatrix::ZQArray<char> updateSequence;  ///< rows of one item each, packed
  zmatrix::ZQKernelItems kernelOriginalSequenceInitialValues;
  int hasBeenChanged = 0;  ///< 1 after an update since the last load
  zmatrix::ZQArray<char> namesOfUpdateFiles;

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
  void describeMediumFields(Fields& fields);
  template <class Fields>
  void describeUpdateSequence(Fields& fields, int withSequence);
  void setMediumDefaults();
  bool makeMediumArrays(zmatrix::ZQFileReader& file);
  int enterMediumMatrixDimension(int dimIndex);
  int** kernelRows(zmatrix::ZQKernelItems& items) {
    return items.provide(coordinateDimension, zmatrix::initialKernelLength) ? items.rows() : nullptr;
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

namespace zmatrix {

/// How many original items the inverse of a preprocessing must be given before the first preprocessed item.
[[nodiscard]] int numberOfItemsToRestore(int preProcessingType);

}  // namespace zmatrix
