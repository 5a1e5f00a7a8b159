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

  const MidiFeedSettings& settings() const { return present_; }
  long long lengthOfSequence() const { return length_; }
  int numberOfNotes() const { return notes_; }
  LearnedTrack learnedTrack() const { return {nom_, denom_, subTypeOfTrack_, sound_, trackIndex_}; }

 private:
  bool findLength();
  bool isToBeDowngraded() const;

  const MidiFeedSettings start_;
  MidiFeedSettings present_;
  const char* file_;
  const KernFeedTexts& sentences_;

  const ZQKernObjectTrack* track_ = nullptr;
  int trackIndex_ = 0;
  int signatures_ = 0;  // number of time signatures of the file; set to 1 once a track was accepted
  int nom_ = 0;
  int denom_ = 0;
  int notes_ = 0;
  long long length_ = 0;
  int sound_ = 0;
  int sounds_ = 0;
  int subTypeOfTrack_ = 0;
};

}  // namespace zmatrix
