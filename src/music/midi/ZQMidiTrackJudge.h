// Decides for each object track of a MIDI file whether and as what it is learned: the rules of the feed, also used by the report.
#pragma once

#include "music/midi/ZQMidiTrackList.h"
#include "music/midi/ZQTrackJudge.h"

namespace zmatrix {

/// The messages that differ between tiers.
struct MidiFeedTexts {
  int levelOfCannotOpen;
  ZQSentence<int> description;
  SuspiciousSettings suspiciousSettings;
  ZQSentence<int> dimensionIsNotThree;
  ZQSentence<int> dimensionIsNotFour;
};

extern const MidiFeedTexts mediumMidiFeedTexts;
extern const MidiFeedTexts fullMidiFeedTexts;

/// True for notes that are learned: those of sounds 14 and 15 are not.
inline bool isLearned(const ZQMidiObject& object) {
  return object.isNote() && object.getSoundID() != ZQMatrixSoundPercussive && object.getSoundID() != ZQMatrixSoundEffects;
}

class MidiTrackJudge : public TrackJudge {
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

 private:
  [[nodiscard]] bool findLength();
  bool isToBeUpgraded() const;
  bool isToBeDowngraded() const;

  const int chordThreshold_;
  const MidiFeedTexts& sentences_;

  const ZQMidiObjectTrack* track_ = nullptr;
  int mainSound_ = 0;
  int percussion_ = 0;
};

}  // namespace zmatrix
