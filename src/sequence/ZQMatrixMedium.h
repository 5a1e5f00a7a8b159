// The medium tier: a path of items is a rule, whose last item follows the context before it with a probability given by the
// counts. This tier preprocesses sequences, learns all their phrases, keeps the context of a generation (the kernel) and chooses
// successors. An item, or objex, is coordinateDimension consecutive integers; lengths of vectors count integers unless a name
// says items.
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
  // The random generators for successors, by matrix ID. For an ID out of range, getters return 0 and setters do nothing.
  long long getSuccessorRandomValue(int id);
  long long getActualSuccessorRandomValue(int id);
  void setSuccessorRandomValue(int id, long long value);
  int getSuccessorRandomType(int id);
  /// Stores only in a sub-matrix that is not empty, the reverse of what its message says.
  void setSuccessorRandomType(int id, int type);
  int resetKernelSequence(int resetInitialValues);

  // As in the base tier, with the elements of this tier.
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
  /// As isRuleAt(), for the address of an entry of getMatrixData(); 0 for any other address.
  int isRuleMatrixData(ZQMatrixMediumElement** element);
  /// 1 if the path of the element in a slot is a rule: written, with a context that has successors, and not counted more often
  /// than they; else 0.
  int isRuleAt(int slot);
  /// How many suffixes of a vector, counted from the longest, determine its last item; see ZQMatrixMediumDetermined.cpp.
  int isDeterminedMatrixData(const int* indexVector, int length);
  /// isDeterminedMatrixData limited to 2, which is faster: the count stops at 2.
  int isDeterminedUpToTwice(const int* indexVector, int length);
  /// The same for the path of an element that is known to the links.
  int isDeterminedUpToTwice(const zmatrix::ZQSuffixLinks& links, int position) const;
  /// True if the debug level of this matrix lets printIndexVector print at `level`.
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

  // --- self-tests: 1 sound, 0 a fault, -1 empty; trim 1 shrinks the block
  int perform1stMemoryTest(int which, int* numberOfWriteElements, int* numberOfEndElements, int trim);
  int performMatrixLinearTest(int* numberOfWriteElements, int* numberOfEndElements, int trim);
  int performMatrixConsistencyTest(int* numberOfWriteElements, int* numberOfEndElements, int trim);
  /// Reads vectors and compares their values with the expected ones: 1, or -1 if an array is null.
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
  /// 1 if the ocron type is valid and fits the preprocessing type of the current sub-matrix, else 0.
  int isValidOcronType(int ocronType);
  /// Copies the thread's parameters of ocrons and gocrons to the current sub-matrix, if it is empty.
  void applyGlobalGocronParametersToMatrix();
  ZQMatrixSequenceIndexVector* getPreProcessedZQIndexVectorFromOriginalIndexVector(ZQMatrixSequenceIndexVector* vector);
  ZQMatrixSequenceIndexVector* getOriginalZQIndexVectorFromPreprocessedIndexVector(ZQMatrixSequenceIndexVector* vector);

  // --- number codes: learns which ocrons stand for the same number; 1, or -1 for a refused call
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
  /// Counts a learned sequence or text as an update in the record and the header.
  void countUpdate();
  int getNumberOfChangedMatrixInfos();

  // --- the kernel
  int initializeKernelSequenceWithOriginalSequence(const int* sequence, int length, int setInitialValues);
  int initializeKernelSequenceWithPreProcessedSequence(const int* sequence, int length);
  int updateAndGetMatrixKernelHandle();
  int getNumberOfSuccessorsFromKernelHandle();
  /// As getPreProcessedSequenceFromOriginalSequence; the result belongs to the matrix and is valid until the next call.
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
  /// Rounds a time to the grid of the current sub-matrix. A duration becomes at least one step of the grid.
  int quantizeNoteOnQuantaTime(int quanta);
  int quantizeDurationQuantaTime(int quanta);
  /// The first sub-matrix with these properties, or -1. A sub type, style or sound of 0 matches all.
  int getMatrixIDForMidiTimeSignature(int type, int nom, int denom);
  int getMatrixIDForMidiTimeSignatureAndSubType(int type, int nom, int denom, int subType);
  int getMatrixIDForMidiTimeSignatureAndSubTypeAndMusicStyle(int type, int nom, int denom, int subType, ZQMatrixMusicStyle style);
  int getMatrixIDForMidiTimeSignatureAndSubTypeAndMusicStyleAndSoundID(int type, int nom, int denom, int subType,
                                                                       ZQMatrixMusicStyle style, ZQMatrixSoundID sound);
  int readMidiObjexsAndWriteToMidiFile(int numberOfObjex, const char* fileName);

 private:
  /// Null for an ID out of range.
  ZQMatrixMediumInfo* recordOf(int id) const;
  template <class Tier>
  friend struct zmatrix::ZQSequenceUpdate;

  zmatrix::ZQGenerationScratch generation_;
};
