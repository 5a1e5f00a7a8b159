// The classes of sound, 0 to 15, of the 128 programs of General MIDI, and a program for each sound; and the names of sounds,
// textures and styles.
#pragma once

#include <span>

/// The sound of a program, 0 to 127; 0 above that. `tonality`: how tonal the sound is, 0.0 to 1.0; may be null. No program has
/// sound 9: it belongs to channel 9 alone.
int getSoundIDFromGMProgramChange(unsigned char program, double* tonality);

/// A program that represents a sound; -1 for sounds without one and outside 0 to 15. It is not an exact inverse of the table
/// above: program 27 has sound 4, 28 sound 2.
int getGMProgramChangeIDFromSoundID(int soundID);

/// The factor by which a sound decays in each step of time, and its tonality, which differs from the one above for programs 99
/// and 100. 0.997 and 1.0 outside 0 to 127. `tonality` may be null.
double getDecayFactorAndTonalityFromGMProgramChange(int program, double* tonality);

namespace zmatrix {

/// The name of a sound, of a texture (ZQMidiSubType) and of a style of music; "" for numbers without one.
const char* nameOfSoundID(int soundID);
const char* nameOfMidiSubType(int subType);
const char* nameOfMusicStyle(int style);

/// The sound of most notes, the lowest of equally frequent ones. `numberOfSounds`: number of sounds that have notes.
int mostFrequentSound(std::span<const int> notesOfSound, int* numberOfSounds);

}  // namespace zmatrix
