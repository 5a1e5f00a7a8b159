// Decides for each track of an arranged kern file whether and as what it is learned. Unlike in MIDI files, no channel means
// drums.
#pragma once

#include "music/kern/ZQKernTrackList.h"
#include "music/midi/ZQTrackJudge.h"

namespace zmatrix {

/// The messages that differ between tiers.
struct KernFeedTexts {
  ZQSentence<int> description;
  SuspiciousSettings suspiciousSettings;
  ZQSentence<int> pleaseRestart;
};

extern const KernFeedTexts mediumKernFeedTexts;
extern const KernFeedTexts fullKernFeedTexts;

class KernTrackJudge : public TrackJudge {
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

 private:
  [[nodiscard]] bool findLength();
  bool isToBeDowngraded() const;

  const ZQKernObjectTrack* track_ = nullptr;
};

}  // namespace zmatrix
