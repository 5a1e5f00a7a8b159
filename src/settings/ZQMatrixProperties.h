// The flat parameter record. Its first fields, made from the settings table, are the two global blocks of a header; with the
// further fields it is the snapshot of a sub-matrix that getGlobalMatrixInfoParameters hands to a host. Plain data without
// constructors: whoever makes one fills it with zeros first.
#pragma once

#include "settings/ZQMatrixEnumerations.h"

struct ZQMatrixProperties {
#define ZQ_SETTING(type, name, Name, initial, symbolInitial, sinceVersion) type name;
#define ZQ_UNSAVED_SETTING(type, name, Name) type name;
#define ZQ_TEXT_SETTING(name, Name, bytes) char name[bytes];
#define ZQ_BYTES_SETTING(name, Name, bytes) char name[bytes];
#include "settings/ZQMatrixSettings.def"

  // From here on filled in snapshots only. The arrays are the info record's own and live as long as they do there.
  int currentMatrixIDLevelDown;
  int currentMatrixIDLevelUp;
  int numberOfSymbols;
  int newSymbol;
  int updateIndex;
  int totalLengthOfAllUpdateSequences;
  int lengthOfUpdateSequence;
  int numberOfRuleElements;
  int numberOfUniqueRuleElements;
  int numberOfOverDeterminedRules;
  int numberOfStartElements;
  int lengthOfKernelOriginalSequence;
  int lengthOfKernelPreProcessedSequence;
  int internalLengthOfKernelOriginalSequence;
  int internalLengthOfKernelPreProcessedSequence;
  int kernelMatrixHandle;
  int isOverDetermined;
  long long successorRandomValue;
  int successorRandomType;
  int* rulesInDimension;
  int* uniqueRulesInDimension;
  int* writeElementsInDimension;
  int** kernelOriginalSequence;
  int** kernelPreProcessedSequence;
  char* updateSequence;
  int** kernelOriginalSequenceInitialValues;
  int updateInfoSize;
  int magicNumber;
  int updateInfoType;
  unsigned int timeStamp;
  int softwareVersion;
  int matrixID;
  int* sizeOfCoordinateDimensions;
  int maximalMatrixIndex;
  int maxDimOfMatrix;
  int currentDimension;
  int internalCurrentDimension;
  int numberOfMatrixWriteEvents;
  int numberOfMatrixDeleteEvents;
  int numberOfMatrixElements;
  int numberOfWriteElements;
  int numberOfWriteCounts;
  int numberOfEndElements;
  int internalLengthOfTemporaryMemory;
  int* minimalIndices;
  int* maximalIndices;
  int* matrixPtr;
  int* temporaryMemory;
  char* namesOfUpdateFiles;  ///< in a snapshot a copy of its own; in a header never filled
};
