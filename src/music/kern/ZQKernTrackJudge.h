// Decides of each track of an arranged kern file whether it is learned and as what. It knows no matrix: the settings that the
// feed keeps in the global block stand here while a file is worked through. Other than with MIDI there are no drums to look for.
#pragma once

#include "frame/ZQSentence.h"
#include "music/kern/ZQKernTrackList.h"
#include "music/midi/ZQMidiFeed.h"

namespace zmatrix {

/// In what the tiers' messages differ.
struct KernFeedTexts {
  ZQSentence<int> description;
  ZQSentence<int> suspiciousSettings;
  bool suspiciousSettingsShowDimension;  ///< else they show the preprocessing type
  ZQSentence<int> pleaseRestart;
};

extern const KernFeedTexts mediumKernFeedTexts;
extern const KernFeedTexts fullKernFeedTexts;

class KernTrackJudge {
 public:
  KernTrackJudge(const ZQKernTrackList& list, const MidiFeedSettings& startSettings, const char* fileName,
                 const KernFeedTexts& texts);

  /// Takes up a track: counts its notes and finds its sound. Changes the settings for a track of a single sound where the others
  /// are quadruples.
  MidiTrackVerdict takeUp(const ZQKernObjectTrack* track, int index);
  /// Meter and texture. A track that fails here leaves the settings as takeUp() made them, for all tracks behind it.
  MidiTrackVerdict findMeter();
  /// Puts the settings back behind a track that was learned.
  void finish();

  const MidiFeedSettings& settings() const { return present; }
  long long lengthOfSequence() const { return length; }
  int numberOfNotes() const { return notes; }
  LearnedTrack learnedTrack() const { return {nom, denom, subTypeOfTrack, sound, trackIndex}; }

 private:
  bool findLength();
  bool isToBeDowngraded() const;

  const MidiFeedSettings start;
  MidiFeedSettings present;
  const char* file;
  const KernFeedTexts& sentences;

  const ZQKernObjectTrack* track = nullptr;
  int trackIndex = 0;
  int signatures = 0;  // of the file; 1 once a track has come through
  int nom = 0;
  int denom = 0;
  int notes = 0;
  long long length = 0;
  int sound = 0;
  int sounds = 0;
  int subTypeOfTrack = 0;
};

}  // namespace zmatrix
