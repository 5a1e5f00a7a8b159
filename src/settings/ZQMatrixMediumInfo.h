// The info record of a sub-matrix, medium tier: adds settings and counters of learning and continuing sequences, the kernel (the
// current context of a continuation) and the packed sequence of the last update.
#pragma once

#include "settings/ZQKernelItems.h"
#include "settings/ZQMatrixBaseInfo.h"
#include "settings/ZQMatrixRandom.h"

class ZQMatrixMediumInfo : public ZQMatrixBaseInfo {
 public:
  ZQMatrixMediumInfo() = default;
  ~ZQMatrixMediumInfo() override = default;

  int initMatrixInfo(int id);
  /// As the base does, but sets midiSoundID and musicStyle to 0. A record with the base type only releases its base part.
  void deInitMatrixInfo();

  // A setter that refuses a value prints at level 0 and keeps the old one. Setters without a check store any value.
  int getUpdateIndex() const { return updateIndex_; }
  int getTotalLengthOfAllUpdateSequences() const { return totalLengthOfAllUpdateSequences_; }
  int getLengthOfUpdateSequence() const { return lengthOfUpdateSequence_; }
  void setLengthOfUpdateSequence(int value) { lengthOfUpdateSequence_ = value; }
  int getIsPhraseMatrix() const { return isPhraseMatrix_; }
  void setIsPhraseMatrix(int value);
  int getPreProcessingType() const { return preProcessingType_; }
  void setPreProcessingType(int value) { storeIfEmpty(preProcessingType_, value, "setPreProcessingType"); }
  int getMaxPhraseLengthForUpdateWithSequence() const { return maxPhraseLengthForUpdateWithSequence_; }
  void setMaxPhraseLengthForUpdateWithSequence(int length);
  int getNumberOfRuleElements() const { return numberOfRuleElements_; }
  void setNumberOfRuleElements(int value) { numberOfRuleElements_ = value; }
  int getNumberOfUniqueRuleElements() const { return numberOfUniqueRuleElements_; }
  void setNumberOfUniqueRuleElements(int value) { numberOfUniqueRuleElements_ = value; }
  int getNumberOfOverDeterminedRules() const { return numberOfOverDeterminedRules_; }
  void setNumberOfOverDeterminedRules(int value) { numberOfOverDeterminedRules_ = value; }
  int getNumberOfStartElements() const { return numberOfStartElements_; }
  void setNumberOfStartElements(int value) { numberOfStartElements_ = value; }
  int getLengthOfKernelOriginalSequence() const { return lengthOfKernelOriginalSequence_; }
  void setLengthOfKernelOriginalSequence(int value) { lengthOfKernelOriginalSequence_ = value; }
  int getLengthOfKernelPreProcessedSequence() const { return lengthOfKernelPreProcessedSequence_; }
  void setLengthOfKernelPreProcessedSequence(int value) { lengthOfKernelPreProcessedSequence_ = value; }
  int getInternalLengthOfKernelOriginalSequence() const { return internalLengthOfKernelOriginalSequence_; }
  void _setInternalLengthOfKernelOriginalSequence(int value) { internalLengthOfKernelOriginalSequence_ = value; }
  int getInternalLengthOfKernelPreProcessedSequence() const { return internalLengthOfKernelPreProcessedSequence_; }
  void _setInternalLengthOfKernelPreProcessedSequence(int value) { internalLengthOfKernelPreProcessedSequence_ = value; }
  int getKernelMatrixHandle() const { return kernelMatrixHandle_; }
  void setKernelMatrixHandle(int value) { kernelMatrixHandle_ = value; }
  int getUseStartOfSequence() const { return useStartOfSequence_; }
  void setUseStartOfSequence(int value) { storeFlagWithWarning(useStartOfSequence_, value, "setUseStartOfSequence"); }
  int getUseEndOfSequence() const { return useEndOfSequence_; }
  void setUseEndOfSequence(int value) { storeFlagWithWarning(useEndOfSequence_, value, "setUseEndOfSequence"); }
  int getUsePhrasesForUpdateMatrixWithLongANSIText() const { return usePhrasesForUpdateMatrixWithLongAnsiText_; }
  void setUsePhrasesForUpdateMatrixWithLongANSIText(int value) {
    storeFlagWithWarning(usePhrasesForUpdateMatrixWithLongAnsiText_, value, "setUsePhrasesForUpdateMatrixWithLongANSIText");
  }
  int getSkillOutputLevel() const { return skillOutputLevel_; }
  /// 0 to maxPhraseLengthForUpdateWithSequence; anything else stores that length.
  void setSkillOutputLevel(int level);
  int getSuccessorMethod() const { return successorMethod_; }
  /// 1 to 3; anything else stores 3.
  void setSuccessorMethod(int method);
  int getRestartWithTrueStartItem() const { return restartWithTrueStartItem_; }
  void setRestartWithTrueStartItem(int value) { storeFlag(restartWithTrueStartItem_, value, "restartWithTrueStartItem"); }
  int getEnableStopItem() const { return enableStopItem_; }
  void setEnableStopItem(int value) { storeFlag(enableStopItem_, value, "setEnableStopItem"); }
  int getIncludeOverdeterminedRules() const { return includeOverdeterminedRules_; }
  void setIncludeOverdeterminedRules(int value) {
    storeFlag(includeOverdeterminedRules_, value, "setincludeOverdeterminedRules");
  }
  int getIsOverDetermined() const { return isOverDetermined_; }
  void _setIsOverDetermined(int value) { storeFlag(isOverDetermined_, value, "_isOverDetermined"); }
  int getAddUpdateInfo() const { return addUpdateInfo_; }
  void setAddUpdateInfo(int value) { storeFlag(addUpdateInfo_, value, "setAddUpdateInfo"); }
  int getAddSequenceToUpdateInfo() const { return addSequenceToUpdateInfo_; }
  void setAddSequenceToUpdateInfo(int value) { storeFlag(addSequenceToUpdateInfo_, value, "setAddSequenceToUpdateInfo"); }
  int getAddSequenceToUpdateInfoMode() const { return addSequenceToUpdateInfoMode_; }
  void setAddSequenceToUpdateInfoMode(int value) {
    storeFlag(addSequenceToUpdateInfoMode_, value, "setAddSequenceToUpdateInfoMode");
  }
  int getHasBeenChanged() const { return hasBeenChanged_; }
  void setHasBeenChanged(int value) { storeFlag(hasBeenChanged_, value, "setHasBeenChanged"); }
  int getSuccessorRandomType() const { return successorRandomType_; }
  void setSuccessorRandomType(int value) { successorRandomType_ = value; }
  int getMidiTimeSignatureNom() const { return midiTimeSignatureNom_; }
  void setMidiTimeSignatureNom(int value) { midiTimeSignatureNom_ = value; }
  int getMidiTimeSignatureDenom() const { return midiTimeSignatureDenom_; }
  void setMidiTimeSignatureDenom(int value) { midiTimeSignatureDenom_ = value; }
  int getLanguage() const { return language_; }
  void setLanguage(int value) { language_ = value; }
  int getMidiSubType() const { return midiSubType_; }
  void setMidiSubType(int value) { midiSubType_ = value; }
  int getMidiSoundID() const { return midiSoundId_; }
  void setMidiSoundID(int value) { midiSoundId_ = value; }
  int getMidiNoteOnQuantization() const { return midiNoteOnQuantization_; }
  void setMidiNoteOnQuantization(int value) { midiNoteOnQuantization_ = value; }
  int getMidiDurationQuantization() const { return midiDurationQuantization_; }
  void setMidiDurationQuantization(int value) { midiDurationQuantization_ = value; }
  int getMidiTrackAnalyze() const { return midiTrackAnalyze_; }
  void setMidiTrackAnalyze(int value) { midiTrackAnalyze_ = value; }
  int getMusicStyle() const { return musicStyle_; }
  void setMusicStyle(int value) { musicStyle_ = value; }
  int getOcronType() const { return ocronType_; }
  void setOcronType(int value) { storeIfEmpty(ocronType_, value, "setOcronType"); }
  int getOcronEndSymbol() const { return ocronEndSymbol_; }
  void setOcronEndSymbol(int value) { storeIfEmpty(ocronEndSymbol_, value, "setOcronEndSymbol"); }
  int getOcronAlgorithm() const { return ocronAlgorithm_; }
  void setOcronAlgorithm(int value) { storeIfEmpty(ocronAlgorithm_, value, "setOcronAlgorithm"); }
  int getGocronAlgorithm() const { return gocronAlgorithm_; }
  void setGocronAlgorithm(int value) { storeIfEmpty(gocronAlgorithm_, value, "setGocronAlgorithm"); }
  int getGocronNumberBase() const { return gocronNumberBase_; }
  void setGocronNumberBase(int value) { storeIfEmpty(gocronNumberBase_, value, "setGocronNumberBase"); }
  int getGocronASTERISKValue() const { return gocronAsteriskValue_; }
  void setGocronASTERISKValue(int value) { storeIfEmpty(gocronAsteriskValue_, value, "setGocronASTERISKValue"); }
  int getGocronPValue() const { return gocronPValue_; }
  void setGocronPValue(int value) { storeIfEmpty(gocronPValue_, value, "setGocronPValue"); }
  int getGocronTWOValue() const { return gocronTwoValue_; }
  void setGocronTWOValue(int value) { storeIfEmpty(gocronTwoValue_, value, "setGocronTWOValue"); }
  int getGocronPOWValue() const { return gocronPowValue_; }
  void setGocronPOWValue(int value) { storeIfEmpty(gocronPowValue_, value, "setGocronPOWValue"); }
  int getGocronQValue() const { return gocronQValue_; }
  void setGocronQValue(int value) { storeIfEmpty(gocronQValue_, value, "setGocronQValue"); }

  /// Each call is a step of the successor generator.
  long long getSuccessorRandomValue() { return zmatrix::nextRandomValue(successorRandomValue_); }
  /// A step of the successor generator, as a fraction from 0 to 1.
  double drawSuccessorFraction() { return static_cast<double>(getSuccessorRandomValue()) / zmatrix::largestRandomValue; }
  long long getActualSuccessorRandomValue() const { return successorRandomValue_; }
  void setSuccessorRandomValue(long long value) { successorRandomValue_ = value; }

  char* getNameOfUpdateFile() { return nameOfUpdateFile_; }
  /// Stores at most 256 characters.
  void setNameOfUpdateFile(const char* name);
  /// All names added so far, one per line, or null.
  char* getNamesOfUpdateFiles() { return namesOfUpdateFiles_.data(); }
  void addNameOfUpdateFile(const char* name);
  char* getMidiChannelFilterArray() { return midiChannelFilter_; }
  void setMidiChannelFilterArray(const char* channels);

  void incrementUpdateIndex() { updateIndex_ = zmatrix::successorOf(updateIndex_); }
  void incrementNumberOfRuleElements() { numberOfRuleElements_ = zmatrix::successorOf(numberOfRuleElements_); }
  void decrementNumberOfRuleElements() { numberOfRuleElements_ = zmatrix::predecessorOf(numberOfRuleElements_); }
  void incrementNumberOfUniqueRuleElements() { numberOfUniqueRuleElements_ = zmatrix::successorOf(numberOfUniqueRuleElements_); }
  void decrementNumberOfUniqueRuleElements() {
    numberOfUniqueRuleElements_ = zmatrix::predecessorOf(numberOfUniqueRuleElements_);
  }
  void incrementNumberOfOverDeterminedRules() {
    numberOfOverDeterminedRules_ = zmatrix::successorOf(numberOfOverDeterminedRules_);
  }
  void decrementNumberOfOverDeterminedRules() {
    numberOfOverDeterminedRules_ = zmatrix::predecessorOf(numberOfOverDeterminedRules_);
  }
  void incrementNumberOfStartElements() { numberOfStartElements_ = zmatrix::successorOf(numberOfStartElements_); }
  void decrementNumberOfStartElements() { numberOfStartElements_ = zmatrix::predecessorOf(numberOfStartElements_); }

  /// Replaces the kernel by zeros, even if the dimension is then refused.
  void setCoordinateDimension(int dimension);
  int checkMatrixDimension(int dimIndex) {
    return dimIndex < currentDimension_ && dimIndex < maxDimOfMatrix_ ? 1 : enterMediumMatrixDimension(dimIndex);
  }
  int* getRulesInDimension(int* numberOfDimensions) { return dimensionArray(rulesInDimension_, numberOfDimensions); }
  int* getUniqueRulesInDimension(int* numberOfDimensions) { return dimensionArray(uniqueRulesInDimension_, numberOfDimensions); }
  int* getWriteElementsInDimension(int* numberOfDimensions) {
    return dimensionArray(writeElementsInDimension_, numberOfDimensions);
  }

  // Copies of the kernel for hosts, a row per coordinate, each at least 256 items long. Valid until the next call; null if memory
  // has run out.
  int** getKernelOriginalSequence() { return kernelRows(kernelOriginalSequence_); }
  int** getKernelOriginalSequenceInitialValues() { return kernelRows(kernelOriginalSequenceInitialValues_); }
  int** getKernelPreProcessedSequence() { return kernelRows(kernelPreProcessedSequence_); }
  // The kernel itself, item after item.
  const int* getKernelOriginalItems() const { return kernelOriginalSequence_.data(); }
  const int* getKernelPreProcessedItems() const { return kernelPreProcessedSequence_.data(); }
  /// Makes room for `length` items of the original kernel and its initial values, or of the preprocessed kernel; the caller sets
  /// the internal lengths. False if memory has run out.
  bool provideKernelOriginal(int length) {
    length = length > zmatrix::initialKernelLength ? length : zmatrix::initialKernelLength;
    return kernelOriginalSequence_.provide(coordinateDimension_, length) &&
           kernelOriginalSequenceInitialValues_.provide(coordinateDimension_, length);
  }
  bool provideKernelPreProcessed(int length) {
    return kernelPreProcessedSequence_.provide(coordinateDimension_,
                                               length > zmatrix::initialKernelLength ? length : zmatrix::initialKernelLength);
  }
  /// Each copies `length` items, which may lie in the kernel. False, and nothing changed, if memory has run out.
  bool storeKernelOriginal(const int* items, int length);
  bool storeKernelInitialValues(const int* items, int length);
  bool storeKernelPreProcessed(const int* items, int length);
  /// The address for an item behind the first `length` ones; the kernel's length is unchanged. Null if memory has run out. The
  /// preprocessed kernel gets the capacity that it grows to for that item.
  int* roomBehindKernelOriginal(int length);
  int* roomBehindKernelPreProcessed(int length);

  /// True if the preprocessed kernel is known to be the complete result of preprocessing the original kernel. A change of the
  /// kernel, or of a setting that preprocessing depends on, makes it false.
  bool kernelFacesAgree() const { return facesThatAgree_ == currentFaces(); }
  void noteThatKernelFacesAgree() { facesThatAgree_ = currentFaces(); }

  /// Resets the kernel to the root of sub-matrix `id`, and the original sequence to its initial values or to default items.
  /// Returns the number of items in the original sequence.
  int resetKernelSequence(int id, int resetInitialValues);

  // Copies of the kernel, which the caller releases through systemFree: flat arrays, null if empty, or one allocation of item
  // pointers and items.
  int* getKernelOriginalSequenceFlatIndexVector(int* length, int* dimension);
  int* getKernelOriginalSequenceInitialValuesFlatIndexVector(int* length, int* dimension);
  int* getKernelPreProcessedSequenceIndexVector(int* length, int* dimension);
  int** createKernelOriginalSequenceObjexVector(int* count, int* dimension);
  int** createKernelOriginalSequenceInitialValuesObjexVector(int* count, int* dimension);
  int** createKernelPreprocessedSequenceObjexVector(int* count, int* dimension);
  /// As getKernelPreProcessedSequence, with a message at level 8.
  int** getKernelSequenceObjectVector(int* count, int* dimension);
  /// Only prints a message at level 8; 0.
  int initializeKernelSequenceWithObjectOriginalSequence(int** items, int count);

  /// Packs the learned items, `length` integers, with the smallest width for each coordinate, and adds four rows of line feeds.
  void generateUpdateInfoSequence(const int* sequence, int length);
  char* getUpdateSequence() { return updateSequence_.data(); }
  int getNumberOfUpdateSequenceBytes() const { return updateSequence_.count(); }

  ZQMatrixProperties* getGlobalMatrixInfoParameters();
  void printMatrixInfo();

  /// As in the base. With withSequence 1 the record includes the packed sequence of the last update.
  void writeUpdateInfo(zmatrix::ZQFileWriter& file, int withSequence);
  int readUpdateInfo(zmatrix::ZQFileReader& file, int withSequence);

 protected:
  template <class Fields>
  void describeMediumPart(Fields& fields, int withSequence);
  bool readMediumPart(zmatrix::ZQFieldReader& fields, int withSequence);

  // The fields, described in ZQMatrixFields.cpp.
  int updateIndex_ = 0;
  int isPhraseMatrix_ = 0;
  int totalLengthOfAllUpdateSequences_ = 0;
  int preProcessingType_ = 0;
  int lengthOfUpdateSequence_ = 0;
  int maxPhraseLengthForUpdateWithSequence_ = 0;
  int numberOfRuleElements_ = 0;
  int numberOfUniqueRuleElements_ = 0;
  int numberOfOverDeterminedRules_ = 0;
  int numberOfStartElements_ = 0;
  int lengthOfKernelOriginalSequence_ = 0;
  int lengthOfKernelPreProcessedSequence_ = 0;
  int internalLengthOfKernelOriginalSequence_ = 0;
  int internalLengthOfKernelPreProcessedSequence_ = 0;
  int kernelMatrixHandle_ = 0;
  int useStartOfSequence_ = 0;
  int useEndOfSequence_ = 0;
  int usePhrasesForUpdateMatrixWithLongAnsiText_ = 0;
  int skillOutputLevel_ = 0;
  int successorMethod_ = 0;
  int restartWithTrueStartItem_ = 0;
  int enableStopItem_ = 0;
  int includeOverdeterminedRules_ = 0;
  int isOverDetermined_ = 0;
  int addUpdateInfo_ = 0;
  int addSequenceToUpdateInfo_ = 0;
  int addSequenceToUpdateInfoMode_ = 0;
  long long successorRandomValue_ = 0;
  int successorRandomType_ = 0;
  int midiTimeSignatureNom_ = 0;
  int midiTimeSignatureDenom_ = 0;
  int language_ = 0;
  int midiSubType_ = 0;
  int midiSoundId_ = 0;
  int midiNoteOnQuantization_ = 0;
  int midiDurationQuantization_ = 0;
  int midiTrackAnalyze_ = 0;
  int musicStyle_ = 0;
  int ocronType_ = 0;
  int ocronEndSymbol_ = 0;
  int ocronAlgorithm_ = 0;
  int gocronAlgorithm_ = 0;
  int gocronNumberBase_ = 0;
  int gocronAsteriskValue_ = 0;
  int gocronPValue_ = 0;
  int gocronTwoValue_ = 0;
  int gocronPowValue_ = 0;
  int gocronQValue_ = 0;
  static constexpr int nameCapacity = 256;
  char nameOfUpdateFile_[nameCapacity + 1] = {};  ///< the last byte is always 0
  char midiChannelFilter_[16] = {};
  zmatrix::ZQArray<int> rulesInDimension_;
  zmatrix::ZQArray<int> uniqueRulesInDimension_;
  zmatrix::ZQArray<int> writeElementsInDimension_;
  zmatrix::ZQKernelItems kernelOriginalSequence_;
  zmatrix::ZQKernelItems kernelPreProcessedSequence_;
  zmatrix::ZQArray<char> updateSequence_;  ///< packed rows, one per item
  zmatrix::ZQKernelItems kernelOriginalSequenceInitialValues_;
  int hasBeenChanged_ = 0;  ///< 1 after an update; neither a save nor the load of a medium record resets it
  zmatrix::ZQArray<char> namesOfUpdateFiles_;

 private:
  /// The settings and lengths on which the agreement of original and preprocessed kernel depends.
  struct KernelFaces {
    int preProcessingType, coordinateDimension, midiTimeSignatureNom, midiTimeSignatureDenom, lengthOfOriginal,
        lengthOfPreProcessed;
    bool operator==(const KernelFaces&) const = default;
  };
  static constexpr KernelFaces noFaces = {-1, -1, 0, 0, -1, -1};

  KernelFaces currentFaces() const {
    return {preProcessingType_,
            coordinateDimension_,
            midiTimeSignatureNom_,
            midiTimeSignatureDenom_,
            lengthOfKernelOriginalSequence_,
            lengthOfKernelPreProcessedSequence_};
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
    return items.provide(coordinateDimension_, zmatrix::initialKernelLength) ? items.rows() : nullptr;
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

  KernelFaces facesThatAgree_ = noFaces;
};

namespace zmatrix {

/// The number of original items that the inverse of a preprocessing needs before the first preprocessed item.
[[nodiscard]] int numberOfItemsToRestore(int preProcessingType);

}  // namespace zmatrix
