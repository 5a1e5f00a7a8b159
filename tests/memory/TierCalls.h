// Functions of the C header under the same name for each tier.
#pragma once

#include <zmatrix/zq.h>

#include <string>

namespace zmatrix {

template <int tier>
struct TierCalls;

#define CALLS_OF_ALL_TIERS(Type, suffix, creator, deleter)                      \
  using Matrix = Type;                                                          \
  static constexpr auto create = creator;                                       \
  static constexpr auto createFromFile = creator##WithFile;                     \
  static constexpr auto destroy = deleter;                                      \
  static constexpr auto save = s_saveMatrixToDisk##suffix;                      \
  static constexpr auto loadReport = zq_getLoadReport##suffix;                  \
  static constexpr auto write = s_writeMatrixElement##suffix;                   \
  static constexpr auto write32 = s_writeMatrixElement32##suffix;               \
  static constexpr auto exist = s_existMatrixData##suffix;                      \
  static constexpr auto remove = s_deleteMatrixElement##suffix;                 \
  static constexpr auto test = s_perform1stMemoryTest##suffix;                  \
  static constexpr auto handleOf = s_getMatrixHandleFromElementVector##suffix;  \
  static constexpr auto vectorOf = s_getIndexVectorFromMatrixHandle##suffix;    \
  static constexpr auto numberOfWrites = s_getNumberOfWriteCounts##suffix;      \
  static constexpr auto setBlockSize = s_setInitialMatrixBlocksize##suffix;     \
  static constexpr auto setNumberOfMatrices = s_setMaxNumberOfMatrices##suffix; \
  static constexpr auto setCurrent = s_setCurrentMatrixID##suffix;              \
  static constexpr auto setLargeIndices = s_setAllowLargeIndices##suffix;       \
  static constexpr auto infoOf = s_getMatrixInfo##suffix;                       \
  static constexpr auto properties = s_getGlobalMatrixInfoParameters##suffix;   \
  static constexpr auto history = s_readMatrixUpdateInfos##suffix

#define CALLS_OF_LEARNING_TIERS(suffix)                                                                       \
  static constexpr auto setUpForText = s_setDefaultMatrixPropertiesForANSIText##suffix;                       \
  static constexpr auto setPhraseLimit = s_setMaxPhraseLengthForUpdateWithSequence##suffix;                   \
  static constexpr auto setAddUpdateInfo = s_setAddUpdateInfo##suffix;                                        \
  static constexpr auto setAddSequence = s_setAddSequenceToUpdateInfo##suffix;                                \
  static constexpr auto setUpForIntegers = s_setDefaultMatrixPropertiesForIntegerSeries##suffix;              \
  static constexpr auto setPreProcessing = s_setPreProcessingType##suffix;                                    \
  static constexpr auto setOcronType = s_setOcronType##suffix;                                                \
  static constexpr auto learnIntegers = s_updateMatrixWithLongINTSequence##suffix;                            \
  static constexpr auto learn = s_updateMatrixWithLongANSISequence##suffix;                                   \
  static constexpr auto learnFiles = s_updateMatrixWithANSIFiles##suffix;                                     \
  static constexpr auto setMusicBlock = s_setGlobalDefaultMatrixPropertiesForMIDIElementsTriple_NDMT##suffix; \
  static constexpr auto setTrackAnalyze = s_setGlobalMidiTrackAnalyze##suffix;                                \
  static constexpr auto learnMidi = s_updateMatrixWithMIDIFile##suffix;                                       \
  static constexpr auto writeMidi = zq_readMidiObjexsAndWriteToMidiFile##suffix;                              \
  static constexpr auto learnScore = zq_updateMatrixWithScore##suffix;                                        \
  static constexpr auto compose = zq_createGeneratedScore##suffix;                                            \
  static constexpr auto start = s_initializeKernelSequenceWithOriginalSequence##suffix;                       \
  static constexpr auto read = s_readObjexFromMatrix##suffix;                                                 \
  static constexpr auto prune = s_removeOverDeterminedElements##suffix;                                       \
  static constexpr auto cut = s_removeLongElements##suffix;                                                   \
  static constexpr auto clear = s_clearMatrixForID##suffix;                                                   \
  static constexpr auto successors = s_getSuccessorHandlesFromKernelHandle##suffix;                           \
  static constexpr auto preProcessed = s_getPreProcessedSequenceFromOriginalSequence##suffix

template <>
struct TierCalls<0> {
  CALLS_OF_ALL_TIERS(ZQMatrixBase, _Base, createAndInitMatrixBase, deleteMatrixBase);
};
template <>
struct TierCalls<1> {
  CALLS_OF_ALL_TIERS(ZQMatrixMedium, _Medium, createAndInitMatrixMedium, deleteMatrixMedium);
  CALLS_OF_LEARNING_TIERS(_Medium);
};
template <>
struct TierCalls<2> {
  CALLS_OF_ALL_TIERS(ZQMatrix, , createAndInitMatrix, deleteMatrix);
  CALLS_OF_LEARNING_TIERS();
};

/// False for a matrix that has lost its block for lack of memory and can only be deleted.
bool isUsable(void* matrix, int tier);
/// The first broken invariant of a usable matrix; empty if there is none.
std::string faultOf(void* matrix, int tier);

}  // namespace zmatrix
