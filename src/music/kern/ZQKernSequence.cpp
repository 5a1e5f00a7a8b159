#include "music/kern/ZQKernSequence.h"

#include "sequence/ZQPreprocessing.h"

namespace zmatrix {

namespace {

constexpr int numberOfSounds = 16;

/// The sound of a channel, without sound 9, drums: channels from 9 on are moved up by one, and channel 15 becomes 0.
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
