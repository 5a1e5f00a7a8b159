// The codings of notes by their names in the command, and facts about a sub-matrix of music.
#pragma once

#include <string>
#include <vector>

#include "Matrix.h"

struct MusicCoding {
  const char* name;
  int preprocessing;
};

/// Null if no coding has this name.
const MusicCoding* findMusicCoding(const std::string& name);
/// Null if no coding of music has this preprocessing.
const MusicCoding* findMusicCoding(int preprocessing);
std::vector<std::string> namesOfMusicCodings();

bool isMusic(const ZQMatrixProperties& record);
/// "3/4".
std::string meterOf(const ZQMatrixProperties& record);
/// "melody", "chords" and so on.
const char* nameOfSubType(int subType);
/// The name of a family of instruments, "any" for 0.
const char* nameOfSound(int sound);
/// The length of a bar in quanta; 12288 are a whole note.
int barLengthOf(const ZQMatrixProperties& record);
/// The number of notes learned.
int notesOf(const ZQMatrixProperties& record);
