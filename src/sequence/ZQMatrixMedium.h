// The medium tier: paths become rules. A path of items is a context and its last item the successor, counted so that a
// conditional probability can be read off. This tier preprocesses sequences, learns every phrase of them, keeps the context of a
// generation (the kernel) and chooses successors. An item, or objex, is coordinateDimension consecutive integers; lengths of
// vectors count integers unless a name says items.
#pragma once

#include "sequence/ZQGenerationScratch.h"
#include "settings/ZQMatrixMediumInfo.h"
#include "store/ZQMatrixBase.h"

class ZQMatrixSequenceIndexVector;

namespace zmatrix {
struct ZQMediumTier;
class ZQSuffixLinks;
template <class Tier>
struct ZQSequenceUpdate;
}  // namespace zmatrix

class ZQMatrixMedium : public zmatrix::ZQMatrixMediumAccessors<ZQMatrixMedium, ZQMatrixBase> {
 public:
  using Tier = zmatrix::ZQMediumTier;

  ZQMatrixMediumInfo* getMatrixInfo() const { return static_cast<ZQMatrixMediumInfo*>(matrixInfoArray_[currentMatrixId_]); }
  ZQMatrixMediumInfo* getMatrixInfo(int id) const { return static_cast<ZQMatrixMediumInfo*>(matrixInfoArray_[id]); }
  // The successor generators, by matrix ID. An ID that does not exist answers 0 and takes nothing.
  long long getSuccessorRandomValue(int id);
  long long getActualSuccessorRandomValue(int id);
  void setSuccessorRandomValue(int id, long long value);
  int getSuccessorRandomType(int id);
  /// Stores on a matrix that holds something only, the reverse of what its message says.
  void setSuccessorRandomType(int id, int type);
  int resetKernelSequence(int resetInitialValues);

  // The base's, with the elements of this tier.
  ZQMatrixMediumElement* elementAt(long long position) const {
    return static_cast<ZQMatrixMediumElement*>(ZQMatrixBase::elementAt(position));
  }
  ZQMatrixMediumElement* getMatrixElementFromElementVector(const int* indexVector, int length, int* handle) {
    return static_cast<ZQMatrixMediumElement*>(ZQMatrixBase::getMatrixElementFromElementVector(indexVector, length, handle));
  }
  ZQMatrixMediumElement* getMatrixElementFromMatrixHandle(int handle) {
    return static_cast<ZQMatrixMediumElement*>(ZQMatrixBase::getMatrixElementFromMatrixHandle(handle));
  }
  void setMaxNumberOfMatrices(int number);
  void clearMatrixElement(int position, int updateStartCounter);

  // --- write and read: startFlag marks the start of a sequence, endFlag its end
  int moveFieldToFreePosition(int memorySearchMethod, int* fieldBegin, int* newElementIndex, int numberOfItems, int* firstElement,
                              int* lastElement, int moveWithNewIndex);
  int insertFirstMatrixElementInNewDimension(int newPosition, int coordinate, int parentPosition);
  int insertMatrixElementInExistingDimension(int newPosition, int coordinate, int elementOfField);
  int writeMatrixData(const int* indexVector, int length, long long value, char startFlag, char endFlag);
  int writeMatrixElement(const int* indexVector, int length, long long value);
  int writeMatrixElement32(const int* items, int length, long long value);
  int writeMatrixElement64(const long long* items, int length, long long value);
  int deleteMatrixElement(const int* indexVector, int length, int keepInnerElements);
  int deleteMatrixElement32(const int* items, int length, int keepInnerElements);
  int deleteMatrixElement64(const long long* items, int length, int keepInnerElements);
  void makeMatrixEmpty();
  long long readMatrixData(const int* indexVector, int length, int* existCode, int* writeCount, int* writeCountWithSuccessor,
                           int* writeCountWithoutPredecessor) noexcept;
  long long readMatrixData32(const int* items, int length, int* existCode, int* writeCount, int* writeCountWithSuccessor,
                             int* writeCountWithoutPredecessor);
  long long readMatrixData64(const long long* items, int length, int* existCode, int* writeCount, int* writeCountWithSuccessor,
                             int* writeCountWithoutPredecessor);
  int isRuleMatrixData(ZQMatrixMediumElement** element);
  /// The same for the element in a slot.
  int isRuleAt(int slot);
  int isDeterminedMatrixData(const int* indexVector, int length);
  /// 0, 1, or 2 where isDeterminedMatrixData is 2 or more: all that most callers want, found without counting on.
  int isDeterminedUpToTwice(const int* indexVector, int length);
  /// The same for the path of an element that the links know.
  int isDeterminedUpToTwice(const zmatrix::ZQSuffixLinks& links, int position) const;
  /// True if the matrix's own level lets printIndexVector at `level` show something.
  bool showsVectors(int level) const { return debugLevel_ >= level; }
  void printIndexVector(const int* indexVector, int length, int usePreProcessing, int level);

  // --- pruning
  int removeOverDeterminedElements();
  int removeOverDeterminedElementsSingleIteration(int passNumber);
  int removeLongElements(int maximalLength);
  int clearMatrixForID(int matrixID);
  int removeEmptyMatrices();

  // --- the matrix file
  int saveMatrixToDisk(const char* path);
  int readAndInitMatrixFromDisk(const char* path, int debugLevel);

  // --- self-tests: 1 sound, 0 a fault, -1 empty; trim 1 cuts what is not in use
  int perform1stMemoryTest(int which, int* numberOfWriteElements, int* numberOfEndElements, int trim);
  int performMatrixLinearTest(int* numberOfWriteElements, int* numberOfEndElements, int trim);
  int performMatrixConsistencyTest(int* numberOfWriteElements, int* numberOfEndElements, int trim);
  /// Reads vectors back whose values are known: 1, or -1 if an array is missing.
  int perform2ndMemoryTest(int numberOfVectors, int** indexVectors, int* lengths, long long* values, int* errors, int* tests);

  // --- preprocessing and back
  int* getPreProcessedSequenceFromOriginalSequence(const int* originalSequence, int length, int* resultLength);
  long long* getLongLongPreProcessedSequenceFromOriginalSequence(const long long* originalSequence, int length,
                                                                 int* resultLength);
  long long* getLongLongPreProcessedSequenceFromOriginalIntSequence(const int* originalSequence, int length, int* resultLength);
  int* getFlatSequenceFromObjexSequence(int** objex, int count, int* length);
  int** getObjexSequenceFromFlatSequence(const int* flat, int length, int* count);
  int** getPreProcessedObjexSequenceFromOriginalObjexSequence(int** objex, int count, int* resultCount);
  int* getOriginalSequenceFromPreProcessedSequence(int* start, int lengthOfStart, int capacity, const int* preProcessed,
                                                   int lengthOfPreProcessed, int* resultLength, int inPlace);
  int** getOriginalObjexSequenceFromPreProcessedObjexSequence(int** start, int countOfStart, int capacity, int** preProcessed,
                                                              int countOfPreProcessed, int* resultCount, int inPlace);
  int* getNextOriginalObjexFromPreProcessedObjex(int* objex);
  int* getNextOriginalObjexFromPreProcessedObjexAndOriginalSequence(int** sequence, int index, int length, int* objex);
  /// True if the ocron type is one and fits the preprocessing type of the current sub-matrix.
  int isValidOcronType(int ocronType);
  /// Takes the thread's parameters of ocrons and gocrons over into the current sub-matrix, if it is empty.
  void applyGlobalGocronParametersToMatrix();
  ZQMatrixSequenceIndexVector* getPreProcessedZQIndexVectorFromOriginalIndexVector(ZQMatrixSequenceIndexVector* vector);
  ZQMatrixSequenceIndexVector* getOriginalZQIndexVectorFromPreprocessedIndexVector(ZQMatrixSequenceIndexVector* vector);

  // --- number codes: learns which ocrons stand for the same number; 1, or -1 for a call that is refused
  int feedMatrixWithDegenerationOcronData(const int* degenerationLevels, int arrayLength, char*** degenerationOcrons,
                                          int ocronType, const char* endOfOcron, int lastGoodIndex, int dryRun, int autoSave,
                                          int* numberFed);

  // --- learning: 1 learned, 0 empty or refused, -1 a write failed, -2 memory has run out
  int checkSettingsForUpdateMatrixWithSequence(int coordinateDimension, int preProcessingType, int allowLargeIndices,
                                               int matrixType);
  int updateMatrixWithCombinedSequenceDebug(const int* sequence, int length, int matrixType, int coordinateDimension,
                                            int preProcessingType, int allowLargeIndices, int* numberOfProcessedVectors,
                                            int* numberOfOverwrites, int** values, int** lengths, int*** indexVectors);
  int updateMatrixWithCombinedSequence(const int* sequence, int length, int matrixType, int coordinateDimension,
                                       int preProcessingType, int allowLargeIndices);
  int updateMatrixWithSequence(int matrixType, int coordinateDimension, const int* sequence, int length);
  int updateMatrixWith2DimSequence(int matrixType, int preProcessingType, const int* first, const int* second, int length);
  int updateMatrixWithLongINTSequence(const int* sequence, int numberOfItems);
  int updateMatrixWithLongINTSequenceExt(const int* sequence, int numberOfItems, int matrixType, int coordinateDimension,
                                         int preProcessingType, int allowLargeIndices);
  void updateNumberOfAppendedMatrices();
  /// What a learned sequence or text leaves in record and header: it has been changed, one update more, one more to append.
  void countUpdate();
  int getNumberOfChangedMatrixInfos();

  // --- the kernel
  int initializeKernelSequenceWithOriginalSequence(const int* sequence, int length, int setInitialValues);
  int initializeKernelSequenceWithPreProcessedSequence(const int* sequence, int length);
  int updateAndGetMatrixKernelHandle();
  int getNumberOfSuccessorsFromKernelHandle();
  /// As getPreProcessedSequenceFromOriginalSequence does, in memory that the matrix keeps until the next call.
  const int* preProcessIntoScratch(const int* originalSequence, int length, int* resultLength);
  zmatrix::ZQGenerationScratch& getGenerationScratch() { return generation_; }

  // --- successors
  int* getNextPreProcessedObjectItemFromMatrix(int successorIndex, int updateKernel, int successorMethod, int trueStart,
                                               double* probability, double* stopProbability, int* handle);
  int* getFirstOriginalObjectItemFromMatrix(int successorIndex, int updateKernel, int successorMethod, double* probability,
                                            double* stopProbability, int* handle);
  int* getNextOriginalObjectItemFromMatrix(int successorIndex, int updateKernel, int successorMethod, double* probability,
                                           double* stopProbability, int* handle);
  int* getSuccessorHandlesFromKernelHandle(int* count);
  int* getTrueRootSuccessorHandlesFromKernelHandle(int* count);

  // --- read-out
  int* readObjexFromMatrix(double* probability, double* stopProbability);
  int* readObjexAndHandleFromMatrix(double* probability, double* stopProbability, int* handle);
  int* readObjexFromMatrixForSuccessorIndex(int successorIndex, int updateKernel, double* probability, double* stopProbability);
  int* readObjexAndHandleFromMatrixForSuccessorIndex(int successorIndex, int updateKernel, double* probability,
                                                     double* stopProbability, int* handle);
  void dbPrintSuccessorObjex(const int* objex);

  // --- text
  int updateMatrixWithANSIFile(const char* fileName, int* length, int maxLength);
  int updateMatrixWithANSIFiles(const char* path, int recursive, int* length);
  int updateMatrixWithLongANSISequence(const int* sequence, int length);
  int getLanguageIDFromAnsiFile(const char* fileName);
  int getMatrixIDForLanguage(int matrixType, int language, int preProcessingType);
  int readAnsiObjexsAndWriteToAnsiFile(int numberOfObjex, const char* fileName);

  // --- music: notes as pairs, triples or quadruples of note number, start, duration and sound; times in quanta
  int updateMatrixWithMIDIFile(const char* fileName, int* numberOfNotes);
  int updateMatrixWithMIDIFiles(const char* path, int recursive, int* numberOfNotes);
  int updateMatrixWithKERNFile(const char* fileName, int* numberOfNotes);
  int updateMatrixWithKERNFiles(const char* path, int recursive, int* numberOfNotes);
  int convertKERNFileToMIDIFile(const char* kernFile, const char* midiFile);
  int updateMatrixWithLongMIDISequence(const int* sequence, int numberOfItems);
  /// A time on the grid of the current sub-matrix. A duration is at least a step of it.
  int quantizeNoteOnQuantaTime(int quanta);
  int quantizeDurationQuantaTime(int quanta);
  /// The first sub-matrix that agrees, or -1; 0 for a sub type, style or sound is no criterion.
  int getMatrixIDForMidiTimeSignature(int type, int nom, int denom);
  int getMatrixIDForMidiTimeSignatureAndSubType(int type, int nom, int denom, int subType);
  int getMatrixIDForMidiTimeSignatureAndSubTypeAndMusicStyle(int type, int nom, int denom, int subType, ZQMatrixMusicStyle style);
  int getMatrixIDForMidiTimeSignatureAndSubTypeAndMusicStyleAndSoundID(int type, int nom, int denom, int subType,
                                                                       ZQMatrixMusicStyle style, ZQMatrixSoundID sound);
  int readMidiObjexsAndWriteToMidiFile(int numberOfObjex, const char* fileName);

 private:
  /// Null for an ID that does not exist.
  ZQMatrixMediumInfo* recordOf(int id) const;
  template <class Tier>
  friend struct zmatrix::ZQSequenceUpdate;

  zmatrix::ZQGenerationScratch generation_;
};
