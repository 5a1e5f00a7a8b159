// The full tier: a phrase can have a symbol, and a sub-matrix can learn sequences of the symbols of another one: words, where the
// level below has letters. Sub-matrices of both levels share one block.
#pragma once

#include "sequence/ZQMatrixMedium.h"
#include "settings/ZQMatrixInfo.h"

namespace zmatrix {
struct ZQFullTier;
struct DerivedSymbols;
}  // namespace zmatrix

class ZQMatrix : public zmatrix::ZQMatrixFullAccessors<ZQMatrix, ZQMatrixMedium> {
 public:
  using Tier = zmatrix::ZQFullTier;

  ZQMatrixInfo* getMatrixInfo() const { return static_cast<ZQMatrixInfo*>(matrixInfoArray_[currentMatrixId_]); }
  ZQMatrixInfo* getMatrixInfo(int id) const { return static_cast<ZQMatrixInfo*>(matrixInfoArray_[id]); }
  // As in the base tier, with the elements of this tier.
  ZQMatrixElement* elementAt(long long position) const {
    return static_cast<ZQMatrixElement*>(ZQMatrixBase::elementAt(position));
  }
  ZQMatrixElement* getMatrixElementFromElementVector(const int* indexVector, int length, int* handle) {
    return static_cast<ZQMatrixElement*>(ZQMatrixBase::getMatrixElementFromElementVector(indexVector, length, handle));
  }
  ZQMatrixElement* getMatrixElementFromMatrixHandle(int handle) {
    return static_cast<ZQMatrixElement*>(ZQMatrixBase::getMatrixElementFromMatrixHandle(handle));
  }
  void setMaxNumberOfMatrices(int number);
  void clearMatrixElement(int position, int updateStartCounter);

  // --- write: a symbolMarker above 0 gives the path a symbol unless it has one
  int moveFieldToFreePosition(int memorySearchMethod, int* fieldBegin, int* newElementIndex, int numberOfItems, int* firstElement,
                              int* lastElement, int moveWithNewIndex);
  int insertFirstMatrixElementInNewDimension(int newPosition, int coordinate, int parentPosition);
  int insertMatrixElementInExistingDimension(int newPosition, int coordinate, int elementOfField);
  int writeMatrixData(const int* indexVector, int length, long long value, char startFlag, char endFlag, int symbolMarker);
  int writeMatrixElement(const int* indexVector, int length, long long value);
  int writeMatrixElement32(const int* items, int length, long long value);
  int writeMatrixElement64(const long long* items, int length, long long value);
  int deleteMatrixElement(const int* indexVector, int length, int keepInnerElements);
  int deleteMatrixElement32(const int* items, int length, int keepInnerElements);
  int deleteMatrixElement64(const long long* items, int length, int keepInnerElements);
  void makeMatrixEmpty();

  // --- pruning: elements with symbols can be spared
  int removeOverDeterminedElements();
  int removeOverDeterminedElementsSingleIteration(int passNumber);
  int removeLongElements(int maximalLength);
  int clearMatrixForID(int matrixID);
  int removeEmptyMatrices();

  // --- the matrix file
  int saveMatrixToDisk(const char* path);
  int readAndInitMatrixFromDisk(const char* path, int debugLevel);
  /// Cuts links between levels that are out of range or form a cycle, with a message. Returns their number, or -1 if memory has
  /// run out.
  int _checkLevelLinks();

  // --- self-tests: 1 sound, 0 a fault, -1 empty; trim 1 shrinks the block
  int perform1stMemoryTest(int which, int* numberOfWriteElements, int* numberOfEndElements, int trim);
  int perform1stMemoryTestSimplyfied(int which, int trim);
  int performMatrixLinearTest(int* numberOfWriteElements, int* numberOfEndElements, int trim);
  int performMatrixConsistencyTest(int* numberOfWriteElements, int* numberOfEndElements, int trim);
  /// Reads vectors and compares their values with the expected ones: 1, or -1 if an array is null.
  int perform2ndMemoryTest(int numberOfVectors, int** indexVectors, int* lengths, long long* values, int* errors, int* tests);

  // --- learning: symbolMarkers has one entry per preprocessed item, or is null; for a text they are then derived
  int updateMatrixWithCombinedSequenceDebug(const int* sequence, int length, int matrixType, int coordinateDimension,
                                            int preProcessingType, int allowLargeIndices, const int* symbolMarkers,
                                            int* numberOfProcessedVectors, int* numberOfOverwrites, int** values, int** lengths,
                                            int*** indexVectors);
  int updateMatrixWithCombinedSequence(const int* sequence, int length, int matrixType, int coordinateDimension,
                                       int preProcessingType, int allowLargeIndices);
  int updateMatrixWithSequence(int matrixType, int coordinateDimension, const int* sequence, int length);
  int updateMatrixWith2DimSequence(int matrixType, int preProcessingType, const int* first, const int* second, int length);
  int updateMatrixWithLongINTSequence(const int* sequence, int numberOfItems);
  int updateMatrixWithLongINTSequenceExt(const int* sequence, int numberOfItems, int matrixType, int coordinateDimension,
                                         int preProcessingType, int allowLargeIndices);

  // --- text
  int updateMatrixWithANSIFile(const char* fileName, int* length, int maxLength);
  int updateMatrixWithANSIFiles(const char* path, int recursive, int* length);
  int updateMatrixWithLongANSISequence(const int* sequence, int length);
  /// Writes characters from the basic level, words from the symbol level.
  int readAnsiObjexsAndWriteToAnsiFile(int numberOfObjex, const char* fileName);

  // --- number codes: learns which ocrons stand for the same number; 1, or -1 for a refused call
  int feedMatrixWithDegenerationOcronData(const int* degenerationLevels, int arrayLength, char*** degenerationOcrons,
                                          int ocronType, const char* endOfOcron, int lastGoodIndex, int dryRun, int autoSave,
                                          int* numberFed);
  // --- music
  int updateMatrixWithMIDIFile(const char* fileName, int* numberOfNotes);
  int updateMatrixWithMIDIFiles(const char* path, int recursive, int* numberOfNotes);
  int updateMatrixWithKERNFile(const char* fileName, int* numberOfNotes);
  int updateMatrixWithKERNFiles(const char* path, int recursive, int* numberOfNotes);
  /// symbolMarkers as in updateMatrixWithCombinedSequenceDebug.
  int updateMatrixWithLongMIDISequence(const int* sequence, int numberOfItems, const int* symbolMarkers = nullptr);

  // --- symbols
  /// Marks in a preprocessed text the first item of each word with bit 0 and the last with bit 1. Returns a new array of `length`
  /// integers that the caller frees, and the number of words; null for other matrix types, an empty sequence or exhausted memory.
  int* getSymbolMarkersFromPreProcessedCombinedSequence(const int* sequence, int length, int* numberOfSymbols);
  /// Assigns the next symbol ID of the current sub-matrix. IDs are not reused.
  int getNewSymbolID();
  /// The handle of a symbol's phrase in the level below; -1 for a symbol that the current sub-matrix doesn't have.
  int getSymbolDownLinkHandleFromSymbol(int symbol);
  /// The level of the current sub-matrix: 0 is the basic one.
  int getActualAILevelIndex();

  // --- from a sequence to its symbols: new arrays that the caller frees, null if there are none. A symbol and the handle of its
  // phrase have the same index in their arrays. Unknown symbols: words without a symbol; predefined: line feeds between
  // paragraphs.
  int* getNextLevelSymbolsFromOriginalObjects(const int* sequence, int length, int* numberOfSymbols, int* numberOfUnknownSymbols,
                                              int* numberOfPredefinedSymbols);
  int* getNextLevelSymbolHandlesFromOriginalObjects(const int* sequence, int length, int* numberOfSymbols,
                                                    int* numberOfUnknownSymbols, int* numberOfPredefinedSymbols);
  int* getSymbolsFromLongANSISequence(const int* sequence, int length, int* numberOfSymbols, int* numberOfUnknownSymbols,
                                      int* numberOfPredefinedSymbols);
  int* getSymbolHandlesFromLongANSISequence(const int* sequence, int length, int* numberOfSymbols, int* numberOfUnknownSymbols,
                                            int* numberOfPredefinedSymbols);
  int* getSymbolsFromAnyLongSequence(const int* sequence, int length, int* numberOfSymbols);
  int* getSymbolHandlesFromAnyLongSequence(const int* sequence, int length, int* numberOfSymbols);
  /// Learns the symbols of a sequence that the current sub-matrix has just learned, in the sub-matrix above it: 1 learned; 0
  /// refused or no symbols; any other result is that of the sequence update.
  int updateMatrixFromBasicLevel(const int* sequence, int length);
  /// Makes the sub-matrix for the symbols of the current one the current one and sets it up. Returns its ID, or -1, with a
  /// message, if there is none.
  int enterLevelUp();
  /// In the symbol level: stores the handles of the phrases of symbols.
  int updateSymbolDownLinkHandlesForSymbols(const int* symbols, const int* handles, int count);

  // --- from a symbol to its phrase
  int* createPreviousLevelElementsFromOriginalSymbol(int symbol, int* length);
  /// If the phrase doesn't consist of whole items, the level below becomes the current sub-matrix.
  int** createPreviousLevelObjexsFromOriginalSymbol(int symbol, int* count);
  void dbPrintSuccessorObjex(const int* objex, int count);

  /// flag 1: also stores the initial values, and sets the kernel of each level above from the symbols of the level below it.
  int initializeKernelSequenceWithOriginalSequence(const int* sequence, int length, int flag);

 private:
  int* deriveSymbols(const int* sequence, int length, int* numberOfSymbols, int* numberOfUnknownSymbols,
                     int* numberOfPredefinedSymbols);
  int* deriveSymbolsOfStart(const int* sequence, int length, int* numberOfSymbols);
  int provideLevelUp();
  void setUpSymbolLevel(int basicID, const char* nameOfUpdateFile);
  int refreshSymbolDownLinkHandles(const int* sequence, int length, int levelUp, const zmatrix::DerivedSymbols& symbols,
                                   int updateResult);
  int getSymbolDownLinkHandleToExpand(int symbol, int levelDown);
  void printPhraseOfSymbol(int symbol);
};
