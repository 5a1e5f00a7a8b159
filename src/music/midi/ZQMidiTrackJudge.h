// Decides of each object track of a file whether it is learned and as what: the rules that the feed follows and that a report
// tells. It knows no matrix: the settings that the feed keeps in the global block stand here while a file is worked through.
#pragma once

#include "frame/ZQSentence.h"
#include "music/midi/ZQMidiTrackList.h"
#include "settings/ZQMatrixEnumerations.h"

namespace zmatrix {

/// Why a track is not learned. Hosts see the numbers.
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

/// In what the tiers' messages differ.
struct MidiFeedTexts {
  int levelOfCannotOpen;
  ZQSentence<int> description;
  ZQSentence<int> suspiciousSettings;
  bool suspiciousSettingsShowDimension;  ///< else they show the preprocessing type
  ZQSentence<int> dimensionIsNotThree;
  ZQSentence<int> dimensionIsNotFour;
};

extern const MidiFeedTexts mediumMidiFeedTexts;
extern const MidiFeedTexts fullMidiFeedTexts;

/// The integers of a note under a preprocessing type.
int coordinatesOfNote(int preProcessingType);
/// The settings that go with a preprocessing type.
MidiFeedSettings midiSettingsFor(int preProcessingType);

/// True for notes that are learned: those of sounds 14 and 15 are left out.
inline bool isLearned(const ZQMidiObject& object) {
  return object.isNote() && object.getSoundID() != ZQMatrixSoundPercussive && object.getSoundID() != ZQMatrixSoundEffects;
}

class MidiTrackJudge {
 public:
  /// `threshold`: the quanta within which notes make a chord.
  MidiTrackJudge(const ZQMidiTrackList& list, const MidiFeedSettings& start, int threshold, const char* fileName,
                 const MidiFeedTexts& texts);

  /// Takes up a track: counts its notes, finds its sound and what it is to be learned as. Changes the settings for a track with
  /// drums, or of a single sound, where the others are quadruples or not.
  MidiTrackVerdict takeUp(const ZQMidiObjectTrack* track, int index);
  /// Meter and texture. A track that fails here leaves the settings as takeUp() made them, for all tracks behind it.
  MidiTrackVerdict findMeter();
  /// Puts the settings back behind a track that was learned.
  void finish();

  const MidiFeedSettings& settings() const { return present; }
  long long lengthOfSequence() const { return length; }
  int numberOfNotes() const { return notes; }
  int soundID() const { return sound; }
  int mainSoundID() const { return mainSound; }
  int numberOfSounds() const { return sounds; }
  bool hasPercussion() const { return percussion == 1; }
  int numerator() const { return nom; }
  int denominator() const { return denom; }
  int subType() const { return subTypeOfTrack; }

 private:
  bool findLength();
  bool isToBeUpgraded() const;
  bool isToBeDowngraded() const;

  const MidiFeedSettings start;
  MidiFeedSettings present;
  const int chordThreshold;
  const char* file;
  const MidiFeedTexts& sentences;

  const ZQMidiObjectTrack* track = nullptr;
  int trackIndex = 0;
  int signatures = 0;  // of the file; 1 once a track has come through
  int nom = 0;
  int denom = 0;
  int notes = 0;
  long long length = 0;
  int sound = 0;
  int mainSound = 0;
  int sounds = 0;
  int percussion = 0;
  int subTypeOfTrack = 0;
};

}  // namespace zmatrix
