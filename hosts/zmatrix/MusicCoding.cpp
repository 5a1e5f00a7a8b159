#include "MusicCoding.h"

#include "CodingTable.h"

namespace {

constexpr int wholeNote = 12288;

const MusicCoding codings[] = {{"pitch-time", 1},
                               {"pitch-bartime", ZQPreProcessingTypeMidiNoteAndModQuanta},
                               {"triple", ZQPreProcessingTypeMidiTriple_NDMT},
                               {"quadruple", ZQPreProcessingTypeMidiGMQuadruple_NDMTS}};

}  // namespace

const MusicCoding* findMusicCoding(const std::string& name) {
  return findIn(codings, &MusicCoding::name, name);
}

const MusicCoding* findMusicCoding(int preprocessing) {
  return findIn(codings, &MusicCoding::preprocessing, preprocessing);
}

std::vector<std::string> namesOfMusicCodings() {
  return namesIn(codings);
}

bool isMusic(const ZQMatrixProperties& record) {
  return record.matrixType == ZQMatrixTypeMIDINoteAndQuanta || record.matrixType == ZQMatrixTypeMIDITriple_NDMT ||
         record.matrixType == ZQMatrixTypeMIDIGMQuadruple_NDMTS;
}

std::string meterOf(const ZQMatrixProperties& record) {
  return std::to_string(record.midiTimeSignatureNom) + "/" + std::to_string(record.midiTimeSignatureDenom);
}

const char* nameOfSubType(int subType) {
  static const char* const names[] = {"undecided", "melody", "chords", "percussion", "several channels"};
  return names[subType >= ZQMidiSubTypeMonophon && subType <= ZQMidiSubTypeMultiChannel ? subType : 0];
}

const char* nameOfSound(int sound) {
  static const char* const names[] = {
      "any",  "piano", "chromatic percussion", "organ",     "guitar",     "bass",  "violin", "strings", "brass", "drums",
      "reed", "flute", "synth lead",           "synth pad", "percussion", "effect"};
  return names[sound > 0 && sound < static_cast<int>(std::size(names)) ? sound : 0];
}

int barLengthOf(const ZQMatrixProperties& record) {
  if (record.midiTimeSignatureNom <= 0 || record.midiTimeSignatureDenom <= 0) return wholeNote;
  return std::max(record.midiTimeSignatureNom * wholeNote / record.midiTimeSignatureDenom, 1);
}

int notesOf(const ZQMatrixProperties& record) {
  return record.totalLengthOfAllUpdateSequences;
}
