#include "music/kern/ZQKernSequence.h"

#include "sequence/ZQPreprocessing.h"

namespace zmatrix {

namespace {

constexpr int numberOfSounds = 16;

/// Steps over the sound of drums, which a channel number doesn't mean; only the last channel comes out as 0.
int soundOfChannel(int channel) {
  return (channel >= drumSound ? channel + 1 : channel) % numberOfSounds;
}

}  // namespace

MidiSequence sequenceOfKernTrack(const ZQKernObjectTrack& track, const MidiSequenceForm& form, long long length) {
  MidiSequenceWriter writer(form, length, "updateMatrixWithKernFile");
  for (const ZQKernObject* note : track) {
    if (!note->isNote()) continue;
    if (!writer.add({note->getNoteNumber(), note->getTimeQuanta(), note->getDuration(), soundOfChannel(note->getChannel())}))
      break;
  }
  return writer.take();
}

}  // namespace zmatrix
