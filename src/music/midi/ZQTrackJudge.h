// What the judges of MIDI and of kern tracks share: the settings that the feed keeps in the global block while it works on a
// file, and the decision by dimension, sound and meter. A judge needs no matrix.
#pragma once

#include "frame/ZQSentence.h"
#include "settings/ZQMatrixEnumerations.h"

namespace zmatrix {

/// Why a track is not learned. The numbers are part of the host interface.
enum class MidiTrackVerdict {
  taken = 0,
  tooFewNotes = 1,
  wrongDimension = 2,
  onlyPercussionSound = 3,
  noMeter = 4,
  severalMeters = 5,
  meterOutOfRange = 6
};

/// The three global settings that a track can change.
struct MidiFeedSettings {
  int preProcessingType = 0;
  int coordinateDimension = 0;
  int matrixType = 0;
};

constexpr MidiFeedSettings tripleSettings = {ZQPreProcessingTypeMidiTriple_NDMT, 3, ZQMatrixTypeMIDITriple_NDMT};
constexpr MidiFeedSettings quadrupleSettings = {ZQPreProcessingTypeMidiGMQuadruple_NDMTS, 4, ZQMatrixTypeMIDIGMQuadruple_NDMTS};

/// The number of integers per note of a preprocessing type.
int coordinatesOfNote(int preProcessingType);
/// The three settings of a preprocessing type.
MidiFeedSettings midiSettingsFor(int preProcessingType);

/// What is recorded about a learned track in its sub-matrix. A texture or sound of 0 matched any sub-matrix of the meter, and
/// replaces what its record held.
struct LearnedTrack {
  int nom, denom, subType, sound;
  int index;
};

/// The message about an unknown preprocessing type, which differs between tiers.
struct SuspiciousSettings {
  ZQSentence<int> text;
  bool showsDimension;  ///< else the preprocessing type is shown
};

/// The messages about the meter, which differ between formats.
struct MeterTexts {
  ZQSentence<int> ambiguous;
  ZQSentence<int, const char*> discardedForAmbiguity;
  ZQSentence<int, int, const char*> suspicious;
};

class TrackJudge {
 public:
  const MidiFeedSettings& settings() const { return present_; }
  long long lengthOfSequence() const { return length_; }
  int numberOfNotes() const { return notes_; }
  LearnedTrack learnedTrack() const { return {nom_, denom_, subTypeOfTrack_, sound_, trackIndex_}; }

 protected:
  TrackJudge(const MidiFeedSettings& start, const char* fileName, const SuspiciousSettings& suspicious,
             const MeterTexts& meterTexts)
      : start_(start), present_(start), file_(fileName), suspiciousSettings_(suspicious), meterTexts_(meterTexts) {}

  /// True if the preprocessing type is one of notes; prints a message if not.
  bool isOfNotes() const;
  /// True if the items have as many integers as the notes of the preprocessing type.
  bool hasDimensionOfNotes() const { return present_.coordinateDimension == coordinatesOfNote(present_.preProcessingType); }
  /// The number of integers of the sequence, by the settings.
  void setLength() { length_ = static_cast<long long>(notes_) * present_.coordinateDimension; }
  /// Learns the track at hand, and those behind it, by these settings.
  void switchTo(const MidiFeedSettings& settings);
  bool startsWithQuadruples() const { return start_.preProcessingType == ZQPreProcessingTypeMidiGMQuadruple_NDMTS; }
  /// The verdict on a meter that was looked for in the track, if the file has no time signature, or in the file.
  MidiTrackVerdict judgeMeter();

  const MidiFeedSettings start_;
  MidiFeedSettings present_;
  const char* file_;

  int trackIndex_ = 0;
  int signatures_ = 0;  // number of time signatures of the file; set to 1 once a track was accepted
  int nom_ = 0;
  int denom_ = 0;
  int notes_ = 0;
  long long length_ = 0;  // with an unknown preprocessing type that of the track before
  int sound_ = 0;
  int sounds_ = 0;
  int subTypeOfTrack_ = 0;

 private:
  const SuspiciousSettings& suspiciousSettings_;
  const MeterTexts& meterTexts_;
};

}  // namespace zmatrix
