// The ways in which notes are learned, by the names that the command has for them, and what a sub-matrix of music is.
#pragma once

#include <string>
#include <vector>

#include "Matrix.h"

struct MusicCoding {
  const char* name;
  int preprocessing;
};

/// Null for a name that is no coding.
const MusicCoding* findMusicCoding(const std::string& name);
/// Null for a preprocessing that is none of music.
const MusicCoding* findMusicCoding(int preprocessing);
std::vector<std::string> namesOfMusicCodings();

bool isMusic(const ZQMatrixProperties& record);
/// "3/4".
std::string meterOf(const ZQMatrixProperties& record);
/// How a track is made: "melody", "chords" and so on.
const char* nameOfSubType(int subType);
/// An instrument's family, "mixed" for tracks of several.
const char* nameOfSound(int sound);
/// Quanta of a bar; 12288 are a whole note.
int barLengthOf(const ZQMatrixProperties& record);
/// Notes that were learned.
int notesOf(const ZQMatrixProperties& record);
