// Decides for each track of an arranged kern file whether and as what it is learned. It needs no matrix: it holds the settings
// that the feed keeps in the global block while it works on a file. Unlike in MIDI files, no channel means drums.
#pragma once

#include "frame/ZQSentence.h"
#include "music/kern/ZQKernTrackList.h"
#include "music/midi/ZQMidiFeed.h"

namespace zmatrix {

/// The messages that differ between tiers.
struct KernFeedTexts {
  ZQSentence<int> description;
  ZQSentence<int> suspiciousSettings;
  bool suspiciousSettingsShowDimension;  ///< else the preprocessing type is shown
  ZQSentence<int> pleaseRestart;
};

extern const KernFeedTexts mediumKernFeedTexts;
extern const KernFeedTexts fullKernFeedTexts;

class KernTrackJudge {
 public:
  KernTrackJudge(const ZQKernTrackList& list, const MidiFeedSettings& startSettings, const char* fileName,
                 const KernFeedTexts& texts);

  /// Begins with a track: counts its notes and finds its sound. Switches the settings from quadruples to triples for a track of a
  /// single sound.
  MidiTrackVerdict takeUp(const ZQKernObjectTrack* nextTrack, int index);
  /// Finds meter and texture. After a failure the settings stay as takeUp() set them, for all tracks that follow.
  MidiTrackVerdict findMeter();
  /// Restores the settings after a track was learned.
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
  int signatures = 0;  // number of time signatures of the file; set to 1 once a track was accepted
  int nom = 0;
  int denom = 0;
  int notes = 0;
  long long length = 0;
  int sound = 0;
  int sounds = 0;
  int subTypeOfTrack = 0;
};

}  // namespace zmatrix
