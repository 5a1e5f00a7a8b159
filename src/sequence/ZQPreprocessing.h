// What a matrix does to a sequence before it learns it or looks it up, so that equal patterns at different pitches or times
// become equal coordinates. Pure functions of the settings and the numbers: a flat sequence in (item after item,
// coordinateDimension integers each), a new flat sequence out, which the caller releases through systemFree. Arithmetic on items
// is done with wraparound.
#pragma once

#include <span>

#include "frame/ZQArray.h"
#include "settings/ZQMatrixEnumerations.h"

class ZQMatrixMediumInfo;

namespace zmatrix {

/// First coordinate of a preprocessed item that stands for a bar line. A true interval of 127 is taken for one too.
constexpr int ZQNotNote = 127;

/// The settings of a sub-matrix that its preprocessing depends on.
struct PreprocessingSettings {
  int preProcessingType = 0;
  int coordinateDimension = 1;
  int midiTimeSignatureNom = 4;
  int midiTimeSignatureDenom = 4;
  int ocronType = 4;
};

constexpr int quantaPerWholeNote = 12288;

/// Sound of an item whose note number is a choice of instrument and no pitch.
constexpr int drumSound = 9;

PreprocessingSettings preprocessingSettingsOf(const ZQMatrixMediumInfo& info);

/// The coordinates of an item of one of the three MIDI types, 0 for any other type.
constexpr int coordinatesOfMidiType(int preProcessingType) {
  const bool isMidiType = preProcessingType >= ZQPreProcessingTypeMidiNoteAndModQuanta &&
                          preProcessingType <= ZQPreProcessingTypeMidiGMQuadruple_NDMTS;
  return isMidiType ? preProcessingType - 1000 : 0;
}

/// Differences and sums with wraparound.
constexpr int wrappedDifference(int a, int b) {
  return static_cast<int>(static_cast<unsigned>(a) - static_cast<unsigned>(b));
}
constexpr int wrappedSum(int a, int b) {
  return static_cast<int>(static_cast<unsigned>(a) + static_cast<unsigned>(b));
}

/// The length of a bar in quanta; 0 for a time signature that gives none.
long long barLengthOrZero(const PreprocessingSettings& settings);

/// The length of a bar, always above 0. A time signature that gives none prints the message at level 0 and counts as 4/4.
long long barLengthInQuanta(const PreprocessingSettings& settings, const char* illegalTimeSignatureMessage);

/// True if a sequence of so many integers gives a result, though it may be empty: then a null result means that memory has run
/// out.
bool givesSequence(const PreprocessingSettings& settings, long long length);

/// Preprocesses a sequence. Null, with the result length 0, for an empty sequence, a type without work, a sequence too short for
/// its difference, or exhausted memory.
int* preProcessedSequence(const PreprocessingSettings& settings, std::span<const int> originalSequence, int* resultLength);

/// The same into a list that the caller keeps for the next call; the result points into it.
const int* preProcessedSequenceIn(ZQArray<int>& room, const PreprocessingSettings& settings,
                                  std::span<const int> originalSequence, int* resultLength);

/// The same for 64-bit values, with differences (0 to 999), type 1001 and types 1016 to 1020 alone. Any other type gives null and
/// leaves the result length as it is, but for gocrons of items with several coordinates, where it is 0.
long long* longLongPreProcessedSequence(const PreprocessingSettings& settings, std::span<const long long> originalSequence,
                                        int* resultLength);

}  // namespace zmatrix
