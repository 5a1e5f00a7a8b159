// Decides for each object track of a file whether and as what it is learned: the rules of the feed, also used by the report. It
// needs no matrix: it holds the settings that the feed keeps in the global block while it works on a file.
#pragma once

#include "frame/ZQSentence.h"
#include "music/midi/ZQMidiTrackList.h"
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

/// The messages that differ between tiers.
struct MidiFeedTexts {
  int levelOfCannotOpen;
  ZQSentence<int> description;
  ZQSentence<int> suspiciousSettings;
  bool suspiciousSettingsShowDimension;  ///< else the preprocessing type is shown
  ZQSentence<int> dimensionIsNotThree;
  ZQSentence<int> dimensionIsNotFour;
};

extern const MidiFeedTexts mediumMidiFeedTexts;
extern const MidiFeedTexts fullMidiFeedTexts;

/// The number of integers per note of a preprocessing type.
int coordinatesOfNote(int preProcessingType);
/// The three settings of a preprocessing type.
MidiFeedSettings midiSettingsFor(int preProcessingType);

/// True for notes that are learned: those of sounds 14 and 15 are not.
inline bool isLearned(const ZQMidiObject& object) {
  return object.isNote() && object.getSoundID() != ZQMatrixSoundPercussive && object.getSoundID() != ZQMatrixSoundEffects;
}

class MidiTrackJudge {
 public:
  /// `threshold`: notes that start within this many quanta make a chord.
  MidiTrackJudge(const ZQMidiTrackList& list, const MidiFeedSettings& start, int threshold, const char* fileName,
                 const MidiFeedTexts& texts);

  /// Begins with a track: counts its notes, finds its sound and how it is learned. Switches the settings to quadruples for a
  /// track with drums, and from quadruples to triples for a track of a single other sound.
  MidiTrackVerdict takeUp(const ZQMidiObjectTrack* nextTrack, int index);
  /// Finds meter and texture. After a failure the settings stay as takeUp() set them, for all tracks that follow.
  MidiTrackVerdict findMeter();
  /// Restores the settings after a track was learned.
  void finish();

  const MidiFeedSettings& settings() const { return present_; }
  long long lengthOfSequence() const { return length_; }
  int numberOfNotes() const { return notes_; }
  int soundID() const { return sound_; }
  int mainSoundID() const { return mainSound_; }
  int numberOfSounds() const { return sounds_; }
  bool hasPercussion() const { return percussion_ == 1; }
  int numerator() const { return nom_; }
  int denominator() const { return denom_; }
  int subType() const { return subTypeOfTrack_; }

 private:
  bool findLength();
  bool isToBeUpgraded() const;
  bool isToBeDowngraded() const;

  const MidiFeedSettings start_;
  MidiFeedSettings present_;
  const int chordThreshold_;
  const char* file_;
  const MidiFeedTexts& sentences_;

  const ZQMidiObjectTrack* track_ = nullptr;
  int trackIndex_ = 0;
  int signatures_ = 0;  // number of time signatures of the file; set to 1 once a track was accepted
  int nom_ = 0;
  int denom_ = 0;
  int notes_ = 0;
  long long length_ = 0;
  int sound_ = 0;
  int mainSound_ = 0;
  int sounds_ = 0;
  int percussion_ = 0;
  int subTypeOfTrack_ = 0;
};

}  // namespace zmatrix
