// Kern notes as the integers that are learned.
#pragma once

#include "music/kern/ZQKernObjectTrack.h"
#include "music/midi/ZQMidiSequence.h"

namespace zmatrix {

/// The notes of a track, as many as fit into `length` integers. A note's sound is derived from its channel.
MidiSequence sequenceOfKernTrack(const ZQKernObjectTrack& track, const MidiSequenceForm& form, long long length);

}  // namespace zmatrix
