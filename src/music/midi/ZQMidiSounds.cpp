#include "music/midi/ZQMidiSounds.h"

#include <algorithm>

namespace {

struct Sound {
  int lastProgram;  // the row covers the programs behind the row before, up to this one
  int soundID;
  float tonality;
};

constexpr Sound sounds[] = {
    {7, 1, 1},      {15, 2, 1},      {23, 3, 1},      {27, 4, 1},      {28, 2, 1},    {30, 12, 1}, {31, 4, 1},     {39, 5, 1},
    {44, 6, 1},     {46, 4, 1},      {47, 14, 0},     {54, 7, 1},      {55, 14, 0.5}, {63, 8, 1},  {71, 10, 1},    {75, 11, 1},
    {76, 11, 0.6f}, {79, 11, 1},     {85, 12, 1},     {86, 12, 0.5},   {87, 12, 1},   {95, 13, 1}, {96, 15, 0.7f}, {97, 13, 0.4f},
    {98, 2, 0.5},   {99, 13, 0.7f},  {100, 13, 0.4f}, {103, 15, 0.8f}, {104, 4, 1},   {107, 0, 1}, {108, 2, 1},    {109, 10, 1},
    {111, 6, 1},    {113, 14, 0.2f}, {114, 2, 0},     {127, 15, 0},    {255, 0, 1},
};

struct Decay {
  int lastProgram;
  double percent;
  float tonality;
};

constexpr Decay decays[] = {
    {7, 0.3, 1},    {15, 0.5, 1},  {23, 0, 1},    {27, 0.2, 1},  {28, 1.0, 1},    {30, 0.05, 1},    {31, 0.2, 1},
    {39, 0.3, 1},   {44, 0, 1},    {46, 0.4, 1},  {47, 1.0, 0},  {54, 0, 1},      {55, 0.5, 0.5},   {75, 0, 1},
    {76, 0, 0.6f},  {85, 0, 1},    {86, 0, 0.5},  {95, 0, 1},    {96, 0.3, 0.7f}, {97, 0, 0.4f},    {98, 0.3, 0.5},
    {103, 0, 0.8f}, {104, 0.3, 1}, {107, 0, 1},   {108, 1.0, 1}, {111, 0, 1},     {113, 0.6, 0.2f}, {114, 0.3, 0},
    {118, 1.0, 0},  {119, 0, 0},   {121, 1.0, 0}, {126, 0, 0},   {127, 1.0, 0},
};

constexpr int numberOfSounds = 16;
constexpr int programs[numberOfSounds] = {-1, 0, 12, 16, 27, 33, 41, 48, 61, 0, 66, 73, 80, 91, -1, -1};
constexpr const char* names[numberOfSounds] = {
    "Undefined", "Piano", "ChromaticPercussion", "Organ",    "Guitar",     "Bass",  "SoloViolin", "strings", "Brass", "Drums",
    "Reed",      "Flute", "SynthLead",           "SynthPad", "Percussion", "Effect"};

constexpr int numberOfOtherNames = 5;
constexpr const char* namesOfSubTypes[numberOfOtherNames] = {"Undefined", "Monophon", "Polyphon", "Percussion", "Multichannel"};
constexpr const char* namesOfStyles[numberOfOtherNames] = {"Undefined", "Rock", "Pop", "Jazz", "Classic"};

/// The row of a program, which must be at most the last row's.
template <class Row>
const Row& rowOf(const Row* row, int program) {
  while (row->lastProgram < program) row++;
  return *row;
}

void give(double* tonality, double value) {
  if (tonality != nullptr) *tonality = value;
}

}  // namespace

int getSoundIDFromGMProgramChange(unsigned char program, double* tonality) {
  const Sound& sound = rowOf(sounds, program);
  give(tonality, sound.tonality);
  return sound.soundID;
}

int getGMProgramChangeIDFromSoundID(int soundID) {
  return soundID >= 0 && soundID < numberOfSounds ? programs[soundID] : -1;
}

double getDecayFactorAndTonalityFromGMProgramChange(int program, double* tonality) {
  if (program < 0 || program > 127) {
    give(tonality, 1.0);
    return 0.997;
  }
  const Decay& decay = rowOf(decays, program);
  give(tonality, decay.tonality);
  return 1.0 + decay.percent / -100.0;
}

namespace zmatrix {

const char* nameOfSoundID(int soundID) {
  return soundID >= 0 && soundID < numberOfSounds ? names[soundID] : "";
}

const char* nameOfMidiSubType(int subType) {
  return subType >= 0 && subType < numberOfOtherNames ? namesOfSubTypes[subType] : "";
}

const char* nameOfMusicStyle(int style) {
  return style >= 0 && style < numberOfOtherNames ? namesOfStyles[style] : "";
}

int mostFrequentSound(std::span<const int> notesOfSound, int* numberOfSounds) {
  *numberOfSounds =
      static_cast<int>(std::count_if(notesOfSound.begin(), notesOfSound.end(), [](int notes) { return notes > 0; }));
  return static_cast<int>(std::max_element(notesOfSound.begin(), notesOfSound.end()) - notesOfSound.begin());
}

}  // namespace zmatrix
