// The three tiers as tables of the C functions that StoredMatrix, LearningMatrix and ContinuingMatrix call. A table has the
// functions that its tier offers.
#pragma once

#include <zmatrix/zmatrix.h>
#include <zmatrix/zq.h>

#include "Matrix.h"

// clang-format off

/// All tiers: block, records, self-tests, file.
#define ZMATRIX_STORE_FUNCTIONS(suffix)                                                           \
  static constexpr auto setDebugDevice = s_setMatrixDebugOutputDevice##suffix;                    \
  static constexpr auto setDebugLevel = s_setMatrixDebugOn##suffix;                               \
  static constexpr auto numberOfIDs = s_getMaxNumberOfMatrices##suffix;                           \
  static constexpr auto currentID = s_getCurrentMatrixID##suffix;                                 \
  static constexpr auto setCurrentID = s_setCurrentMatrixID##suffix;                              \
  static constexpr auto info = s_getMatrixInfo##suffix;                                           \
  static constexpr auto snapshot = s_getGlobalMatrixInfoParameters##suffix;                       \
  static constexpr auto sizesOfCoordinates = s_getSizeOfCoordinateDimensions##suffix;             \
  static constexpr auto blockSize = s_getMatrixBlockSize##suffix;                                 \
  static constexpr auto maximalStack = s_getMatrixStackPointer##suffix;                           \
  static constexpr auto selfTest = s_perform1stMemoryTest##suffix;                                \
  static constexpr auto elementAt = s_getMatrixElementFromMatrixHandle##suffix;                   \
  static constexpr auto reserveIDs = s_setMaxNumberOfMatrices##suffix;                            \
  static constexpr auto description = s_getMatrixDescription##suffix;                             \
  static constexpr auto formatVersion = s_getHeaderSoftwareVersion##suffix;                       \
  static constexpr auto idsInUse = s_getNumberOfMatrices##suffix;                                 \
  static constexpr auto save = s_saveMatrixToDisk##suffix;                                        \
  static constexpr auto loadReport = zq_getLoadReport##suffix;                                    \
  static constexpr auto readHistory = s_readMatrixUpdateInfos##suffix;                            \
  static constexpr auto historyRecord = s_getMatrixUpdateInfo##suffix;

/// Medium and full tier: learning and generating.
#define ZMATRIX_LEARNING_FUNCTIONS(suffix)                                                        \
  static constexpr auto updates = s_getNumberOfMatrixUpdates##suffix;                             \
  static constexpr auto setTextProfile = s_setGlobalDefaultMatrixPropertiesForANSIText##suffix;   \
  static constexpr auto setSeriesProfile = s_setGlobalDefaultMatrixPropertiesForIntegerSeries##suffix; \
  static constexpr auto setPitchAndTimeProfile =                                                  \
      s_setGlobalDefaultMatrixPropertiesForMIDIElementsCDim2NoteNumberAndQuanta##suffix;          \
  static constexpr auto setPitchAndBarTimeProfile =                                               \
      s_setGlobalDefaultMatrixPropertiesForMIDIElementsCDim2NoteNumberAndModQuanta##suffix;       \
  static constexpr auto setTripleProfile =                                                        \
      s_setGlobalDefaultMatrixPropertiesForMIDIElementsTriple_NDMT##suffix;                       \
  static constexpr auto setQuadrupleProfile =                                                     \
      s_setGlobalDefaultMatrixPropertiesForMIDIElementsGMQuadruple_NDMTS##suffix;                 \
  static constexpr auto applyGlobals = s_applyGlobalMatrixProperties##suffix;                     \
  static constexpr auto setPhraseLimit = s_setGlobalMaxPhraseLengthForUpdateWithSequence##suffix; \
  static constexpr auto phraseLimit = s_getGlobalMaxPhraseLengthForUpdateWithSequence##suffix;    \
  static constexpr auto setOwnPhraseLimit = s_setMaxPhraseLengthForUpdateWithSequence##suffix;    \
  static constexpr auto setGlobalPreprocessing = s_setGlobalPreProcessingType##suffix;            \
  static constexpr auto globalPreprocessing = s_getGlobalPreProcessingType##suffix;               \
  static constexpr auto setGlobalOcronType = s_setGlobalOcronType##suffix;                        \
  static constexpr auto ocronType = s_getOcronType##suffix;                                       \
  static constexpr auto maximalIndex = s_getMaximalMatrixIndex##suffix;                           \
  static constexpr auto setMaximalIndex = s_setMaximalMatrixIndex##suffix;                        \
  static constexpr auto setGlobalGrid = s_setGlobalMidiNoteOnQuantization##suffix;                \
  static constexpr auto globalGrid = s_getGlobalMidiNoteOnQuantization##suffix;                   \
  static constexpr auto setGlobalDurationGrid = s_setGlobalMidiDurationQuantization##suffix;      \
  static constexpr auto globalDurationGrid = s_getGlobalMidiDurationQuantization##suffix;         \
  static constexpr auto setGrid = s_setMidiNoteOnQuantization##suffix;                            \
  static constexpr auto setDurationGrid = s_setMidiDurationQuantization##suffix;                  \
  static constexpr auto setTracks = s_setGlobalMidiTrackAnalyze##suffix;                          \
  static constexpr auto tracks = s_getGlobalMidiTrackAnalyze##suffix;                             \
  static constexpr auto setChannelFilter = s_setGlobalMidiChannelFilterArray##suffix;             \
  static constexpr auto channelFilter = s_getGlobalMidiChannelFilterArray##suffix;                \
  static constexpr auto setNameOfFile = s_setNameOfUpdateFile##suffix;                            \
  static constexpr auto addNameOfFile = s_addNameOfUpdateFile##suffix;                            \
  static constexpr auto setOwnAddUpdateInfo = s_setAddUpdateInfo##suffix;                         \
  static constexpr auto setAddUpdateInfo = s_setGlobalAddUpdateInfo##suffix;                      \
  static constexpr auto prepareForText = zq_prepareMatrixForText##suffix;                         \
  static constexpr auto learnCharacters = s_updateMatrixWithLongANSISequence##suffix;             \
  static constexpr auto learnMidi = s_updateMatrixWithMIDIFile##suffix;                           \
  static constexpr auto learnKern = s_updateMatrixWithKERNFile##suffix;                           \
  static constexpr auto learnScore = zq_updateMatrixWithScore##suffix;                            \
  static constexpr auto learnedReadings = zq_getLearnedReadings##suffix;                          \
  static constexpr auto learnedTempo = zq_getLearnedTempo##suffix;                                \
  static constexpr auto compose = zq_createGeneratedScore##suffix;                                \
  static constexpr auto learnSeries = s_updateMatrixWithLongINTSequence##suffix;                  \
  static constexpr auto writeMidi = zq_readMidiObjexsAndWriteToMidiFile##suffix;                  \
  static constexpr auto itemsBehind = s_getWriteCountWithSuccessorFromElement##suffix;            \
  static constexpr auto lastSeries = s_getUpdateSequence##suffix;                                 \
  static constexpr auto setMethod = s_setSucessorMethod##suffix;                                  \
  static constexpr auto setRandomValue = s_setSuccessorRandomValue##suffix;                       \
  static constexpr auto setContext = s_initializeKernelSequenceWithOriginalSequence##suffix;      \
  static constexpr auto context = s_getKernelOriginalSequenceFlatIndexVector##suffix;             \
  static constexpr auto lengthOfContext = s_getLengthOfKernelPreprocessedSequence##suffix;        \
  static constexpr auto nextItem = s_readObjexFromMatrix##suffix;                                 \
  static constexpr auto preprocess = s_getPreProcessedSequenceFromOriginalSequence##suffix;       \
  static constexpr auto handleOf = s_getMatrixHandleFromElementVector##suffix;                    \
  static constexpr auto successorsOf = s_getSuccessorHandlesFromMatrixHandle##suffix;             \
  static constexpr auto itemAt = s_getObjexFromMatrixHandle##suffix;                              \
  static constexpr auto countOf = s_getWriteCountFromElement##suffix;                             \
  static constexpr auto startsOf = s_getWriteCountWithoutPredecessorFromElement##suffix;          \
  static constexpr auto readSentenceStarts = zq_readSentenceStarts##suffix;                       \
  static constexpr auto drawRandomValue = s_getSuccessorRandomValue##suffix;

// clang-format on

/// Learns sequences, gives the words of a text symbols, and learns sequences of these on a level above.
struct FullTier {
  using Handle = ZQMatrix;
  static constexpr Tier number = Tier::full;
  static constexpr bool learns = true;
  static constexpr bool hasSymbols = true;
  static constexpr auto create = createAndInitMatrixWithDebugParameters;
  static constexpr auto load = createAndInitMatrixWithFile;
  static constexpr auto destroy = deleteMatrix;
  ZMATRIX_STORE_FUNCTIONS()
  ZMATRIX_LEARNING_FUNCTIONS()
};

/// Learns sequences, without symbols.
struct MediumTier {
  using Handle = ZQMatrixMedium;
  static constexpr Tier number = Tier::medium;
  static constexpr bool learns = true;
  static constexpr bool hasSymbols = false;
  static constexpr auto create = createAndInitMatrixMediumWithDebugParameters;
  static constexpr auto load = createAndInitMatrixMediumWithFile;
  static constexpr auto destroy = deleteMatrixMedium;
  ZMATRIX_STORE_FUNCTIONS(_Medium)
  ZMATRIX_LEARNING_FUNCTIONS(_Medium)
};

/// Stores values, doesn't learn.
struct BaseTier {
  using Handle = ZQMatrixBase;
  static constexpr Tier number = Tier::base;
  static constexpr bool learns = false;
  static constexpr bool hasSymbols = false;
  static constexpr auto create = createAndInitMatrixBaseWithDebugParameters;
  static constexpr auto load = createAndInitMatrixBaseWithFile;
  static constexpr auto destroy = deleteMatrixBase;
  ZMATRIX_STORE_FUNCTIONS(_Base)
};

#undef ZMATRIX_STORE_FUNCTIONS
#undef ZMATRIX_LEARNING_FUNCTIONS
