// The preprocessing of a sequence before it is learned or looked up: equal patterns at different pitches or times become equal
// coordinates. The functions depend only on the settings and the numbers: they take a flat sequence (item after item,
// coordinateDimension integers each) and return a new flat sequence, which the caller releases with systemFree. Arithmetic on
// items wraps around.
#pragma once

#include <span>

#include "frame/ZQArray.h"
#include "settings/ZQMatrixEnumerations.h"

class ZQMatrixMediumInfo;

/// First coordinate of a bar marker, a preprocessed item that stands for a bar line. An interval of 127 can't be told from it.
constexpr int ZQNotNote = 127;

namespace zmatrix {

/// The settings of a sub-matrix that its preprocessing depends on.
struct PreprocessingSettings {
  int preProcessingType = 0;
  int coordinateDimension = 1;
  int midiTimeSignatureNom = 4;
  int midiTimeSignatureDenom = 4;
  int ocronType = 4;
};

constexpr int quantaPerWholeNote = 12288;

/// Sound of an item whose note number stands for an instrument, not for a pitch.
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

/// The length of a bar in quanta; 0 for an invalid time signature.
long long barLengthOrZero(const PreprocessingSettings& settings);

/// The length of a bar in quanta, always above 0. For an invalid time signature it prints the message at level 0 and assumes 4/4.
long long barLengthInQuanta(const PreprocessingSettings& settings, const char* illegalTimeSignatureMessage);

/// True if the preprocessing of a sequence of `length` integers has a result, which may be empty. A null result then means that
/// memory has run out. False for number codes.
bool givesSequence(const PreprocessingSettings& settings, long long length);

/// Preprocesses a sequence. Null, with the result length 0, for an empty sequence, an unknown type, a sequence too short for its
/// difference, a wrong number of coordinates, too many bar markers, or exhausted memory.
int* preProcessedSequence(const PreprocessingSettings& settings, std::span<const int> originalSequence, int* resultLength);

/// The same into a list that the caller reuses; the result points into it and is valid until the next call.
const int* preProcessedSequenceIn(ZQArray<int>& room, const PreprocessingSettings& settings,
                                  std::span<const int> originalSequence, int* resultLength);

/// The same for 64-bit values, only for differences (0 to 999), type 1001 and types 1016 to 1020. Any other type gives null and
/// leaves the result length unchanged, except for types 1011 to 1015 and items with several coordinates, where it is 0.
long long* longLongPreProcessedSequence(const PreprocessingSettings& settings, std::span<const long long> originalSequence,
                                        int* resultLength);

}  // namespace zmatrix
