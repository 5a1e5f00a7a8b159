// Learning from MIDI files, shared by the tiers that learn: files and directories of files, the choice of a sub-matrix by meter,
// texture, style and sound, and the update track by track. A tier's methods are one line each; MidiTier<Matrix> holds what
// differs between tiers.
//
// MidiTier<Matrix> has:
//   texts                   its messages, MidiFeedTexts
//   reportsBatch            whether the feed of a directory prints messages
//   reportNoFreeMatrix      prints the message for a file without a free sub-matrix
//   addFileName             adds an entry to the history of a sub-matrix
//   updateWithSequence      learns a sequence and returns the result of the sequence update
#pragma once

#include <climits>
#include <cstdio>
#include <cstring>
#include <memory>

#include "file/ZQFileStream.h"
#include "frame/ZQDebugChannel.h"
#include "frame/ZQSystemOwned.h"
#include "music/ZQFileNameList.h"
#include "music/ZQMusicSymbols.h"
#include "music/midi/ZQMidiFile.h"
#include "music/midi/ZQMidiSequence.h"
#include "music/midi/ZQMidiSounds.h"
#include "music/midi/ZQMidiTrackJudge.h"
#include "settings/ZQMatrixEnumerations.h"
#include "store/ZQKeepCurrentMatrixID.h"

namespace zmatrix {

template <class Matrix>
struct MidiTier;

/// The events that pairing drops for the feed: all except notes and program changes.
constexpr int midiFeedStatusFilter[ZQMidiTrackList::numberOfStatuses] = {0, 0, 1, 1, 0, 1, 1, 1};

/// The matrix types of music: 1, 4 and 5.
constexpr bool isMidiMatrixType(int matrixType) {
  return matrixType == ZQMatrixTypeMIDINoteAndQuanta || matrixType == ZQMatrixTypeMIDITriple_NDMT ||
         matrixType == ZQMatrixTypeMIDIGMQuadruple_NDMTS;
}

// --- update of one sub-matrix

/// Whether items of this many integers fit the preprocessing; always true for types other than music.
bool dimensionFitsMidi(int preProcessingType, int coordinateDimension);

template <class Matrix>
int updateMatrixWithLongMIDISequenceIn(Matrix* matrix, const int* sequence, int numberOfItems, const int* symbolMarkers) {
  auto* info = matrix->getMatrixInfo();
  if (!isMidiMatrixType(info->getMatrixType())) {
    dbPrintf(0, "updateMatrixWithLongMIDISequence: illegal matrixType %d\n", info->getMatrixType());
    return 0;
  }
  if (info->getAllowLargeIndices() != 0) {
    dbPrintf(0, "updateMatrixWithLongMIDISequence: illegal allowLargeIndices %d\n", info->getAllowLargeIndices());
    return 0;
  }
  const int dimension = info->getCoordinateDimension();
  if (!dimensionFitsMidi(info->getPreProcessingType(), dimension)) {
    dbPrintf(0, "updateMatrixWithLongMIDISequence: illegal Cdimension %d\n", dimension);
    return 0;
  }
  const long long length = static_cast<long long>(numberOfItems) * dimension;
  if (length < 0 || length > INT_MAX || (sequence == nullptr && length > 0)) return 0;
  if (info->getAddUpdateInfo() == 1) info->generateUpdateInfoSequence(sequence, static_cast<int>(length));
  const int result = MidiTier<Matrix>::updateWithSequence(matrix, sequence, static_cast<int>(length), symbolMarkers);
  if (result >= 1) matrix->countUpdate();
  return result;
}

// --- the choice of a sub-matrix for a track

/// The first of all reserved sub-matrices of this type and meter for which `agrees(info)` is true, or -1.
template <class Matrix, class Agrees>
int getMatrixIDForMidi(Matrix* matrix, int type, int nom, int denom, Agrees agrees) {
  if (!isMidiMatrixType(type)) {
    dbPrintf(0, "getMatrixIDForMidiParameters: type %d unexpected\n", type);
    return -1;
  }
  for (int matrixID = 0; matrixID < matrix->getMaxNumberOfMatrices(); matrixID++) {
    const auto* info = matrix->getMatrixInfo(matrixID);
    if (info->getMatrixType() == type && info->getMidiTimeSignatureNom() == nom && info->getMidiTimeSignatureDenom() == denom &&
        agrees(*info))
      return matrixID;
  }
  return -1;
}

/// A `subType`, `style` or `sound` of 0 matches any.
template <class Matrix>
int getMatrixIDForMidiIn(Matrix* matrix, int type, int nom, int denom, int subType, int style, int sound) {
  return getMatrixIDForMidi(matrix, type, nom, denom, [&](const auto& info) {
    return (subType == 0 || info.getMidiSubType() == subType) && (style == 0 || info.getMusicStyle() == style) &&
           (sound == 0 || info.getMidiSoundID() == sound);
  });
}

/// The texts of a feed's messages about a failed profile, in the order of the preprocessing types below, and whether symbols are
/// kept with the last of these types too.
struct MusicProfileTexts {
  const char* caller;
  const char* namesOfChecks[4];
  bool quadruplesKeepSymbols;
};

extern const MusicProfileTexts midiProfileTexts;

/// Sets up the current sub-matrix by the global block or, if the block fails its check, by the default profile of the
/// preprocessing type; the defaults are applied to an empty sub-matrix only.
template <class Matrix>
void applyMidiProperties(Matrix* matrix, const char* fileName, const MusicProfileTexts& texts) {
  struct ProfileRow {
    int preProcessingType;
    int (*check)(Matrix*);
    void (*setDefaults)(Matrix*, const char*);
  };
  static constexpr ProfileRow profiles[] = {
      {1, [](Matrix* m) { return m->checkGlobalMatrixPropertiesForMIDIElementsCDim2NoteNumberAndQuanta(); },
       [](Matrix* m, const char* name) { m->setDefaultMatrixPropertiesForMIDIElementsCDim2NoteNumberAndQuanta(name); }},
      {ZQPreProcessingTypeMidiNoteAndModQuanta,
       [](Matrix* m) { return m->checkGlobalMatrixPropertiesForMIDIElementsCDim2NoteNumberAndModQuanta(); },
       [](Matrix* m, const char* name) { m->setDefaultMatrixPropertiesForMIDIElementsCDim2NoteNumberAndModQuanta(name); }},
      {ZQPreProcessingTypeMidiTriple_NDMT, [](Matrix* m) { return m->checkGlobalMatrixPropertiesForMIDIElementsTriple_NDMT(); },
       [](Matrix* m, const char* name) { m->setDefaultMatrixPropertiesForMIDIElementsTriple_NDMT(name); }},
      {ZQPreProcessingTypeMidiGMQuadruple_NDMTS,
       [](Matrix* m) { return m->checkGlobalMatrixPropertiesForMIDIElementsGMQuadruple_NDMTS(); },
       [](Matrix* m, const char* name) { m->setDefaultMatrixPropertiesForMIDIElementsGMQuadruple_NDMTS(name); }},
  };
  const int type = matrix->getGlobalPreProcessingType();
  const ProfileRow* profile = nullptr;
  for (const ProfileRow& row : profiles) {
    if (row.preProcessingType == type) profile = &row;
  }
  const bool keepsSymbols =
      profile != nullptr && (type != ZQPreProcessingTypeMidiGMQuadruple_NDMTS || texts.quadruplesKeepSymbols);
  if (profile == nullptr || (profile->check(matrix) == 1 && (!keepsSymbols || keepSymbolsIsLegal(matrix)))) {
    matrix->applyGlobalMatrixProperties();
    if (keepsSymbols) setKeepSymbols(matrix, true);
    return;
  }
  dbPrintf(0, "%s: %s() failed. Applying default values\n", texts.caller, texts.namesOfChecks[profile - profiles]);
  profile->setDefaults(matrix, fileName);
  if (keepsSymbols) setKeepSymbols(matrix, false);
}

/// Makes the sub-matrix of a meter, texture, style and sound current, or a free one if there is none yet. False if none is free.
template <class Matrix>
bool makeMatrixForMusicCurrent(Matrix* matrix, int nom, int denom, int subType, int sound) {
  int matrixID = matrix->getMatrixIDForMidiTimeSignatureAndSubTypeAndMusicStyleAndSoundID(
      matrix->getGlobalMatrixType(), nom, denom, subType, static_cast<ZQMatrixMusicStyle>(matrix->getGlobalMusicStyle()),
      static_cast<ZQMatrixSoundID>(sound));
  if (matrixID < 0) {
    matrixID = matrix->getNextFreeMatrixID();
    if (matrixID < 0) return false;
    matrix->setNumberOfMatrices(matrixID + 1);
  }
  matrix->setCurrentMatrixID(matrixID);
  return true;
}

/// What is recorded about a learned track in its sub-matrix. A texture or sound of 0 matched any sub-matrix of the meter, and
/// replaces what its record held.
struct LearnedTrack {
  int nom, denom, subType, sound;
  int index;
};

template <class Info>
void describeLearnedTrack(Info* info, const LearnedTrack& track, const char* fileName) {
  info->setMidiTimeSignatureNom(track.nom);
  info->setMidiTimeSignatureDenom(track.denom);
  info->setMidiSubType(track.subType);
  info->setMidiSoundID(track.sound);
  info->setNameOfUpdateFile(fileName);
}

/// The history entry of a track without the name of the file, which is appended.
struct NameOfLearnedTrack {
  char text[256];
};
NameOfLearnedTrack nameOfLearnedTrack(int matrixID, const LearnedTrack& track, int style);

/// Adds the entry with the file's name; does nothing if memory runs out.
template <class Info>
void addNameOfLearnedTrack(Info* info, const NameOfLearnedTrack& entry, const char* fileName) {
  const size_t length = strlen(entry.text) + strlen(fileName) + 1;
  const SystemOwned<char> name(systemMallocArray<char>(static_cast<long long>(length)));
  if (name == nullptr) return;
  snprintf(name.get(), length, "%s%s", entry.text, fileName);
  info->addNameOfUpdateFile(name.get());
}

// --- files

/// The three settings in the global block.
template <class Matrix>
MidiFeedSettings globalMidiSettings(Matrix& matrix) {
  return {matrix.getGlobalPreProcessingType(), matrix.getGlobalCoordinateDimension(), matrix.getGlobalMatrixType()};
}

template <class Matrix>
void setGlobalMidiSettings(Matrix& matrix, const MidiFeedSettings& settings) {
  matrix.setGlobalPreProcessingType(settings.preProcessingType);
  matrix.setGlobalCoordinateDimension(settings.coordinateDimension);
  matrix.setGlobalMatrixType(settings.matrixType);
}

/// The form of a sequence by the grids of the current sub-matrix, which is that of the track before; for the first track of a
/// file it is sub-matrix 0.
template <class Matrix>
MidiSequenceForm formOfSequence(Matrix& matrix, int preProcessingType) {
  const auto* info = matrix.getMatrixInfo();
  return {preProcessingType, info->getMidiNoteOnQuantization(), info->getMidiDurationQuantization()};
}

/// The feed of one file.
template <class Matrix>
class MidiFeed {
 public:
  MidiFeed(Matrix* target, const char* path) : matrix_(target), fileName_(path) {
    printInto(description_, sizeof description_, MidiTier<Matrix>::texts.description, 64);
  }

  /// Returns the result of the last update; `numberOfNotes` gets the number of notes of all tracks that were learned.
  int run(int* numberOfNotes) {
    const std::unique_ptr<ZQMidiTrackList, void (*)(ZQMidiTrackList*)> list(createZQMidiTrackList(), deleteZQMidiTrackList);
    if (list == nullptr || !read(*list)) return 0;
    MidiTrackJudge judge(*list, globalMidiSettings(*matrix_), matrix_->getGlobalMidiNoteOnQuantization(), fileName_,
                         MidiTier<Matrix>::texts);
    int result = 0;
    for (int i = 1; i < list->getNumberOfMidiObjectTracks(); i++) {
      if (!feedTrack(judge, list->getMidiObjectTrackAtIndex(i), i, numberOfNotes, &result)) break;
    }
    return result;
  }

 private:
  /// False if memory runs out; a file that is no MIDI file gives no tracks.
  bool read(ZQMidiTrackList& list) {
    MidiReadFindings findings;
    ZQMidiFile().readEventsFromFileWithPath(&list, fileName_, &findings);
    if (findings.end == MidiReadEnd::outOfMemory) return false;
    const auto* channelFilter = reinterpret_cast<const unsigned char*>(matrix_->getGlobalMidiChannelFilterArray());
    if (!list.updateMIDIObjectTracksFromMIDIEventTracks(midiFeedStatusFilter, channelFilter,
                                                        matrix_->getGlobalMidiTrackAnalyze()))
      return false;
    const ZQMidiObjectTrack* metaTrack = list.getMidiObjectTrackAtIndex(0);
    dbPrintf(2, "number of midi event tracks found: %d:\n", list.getNumberOfMidiEventTracks());
    dbPrintf(2, "%d midi object Tracks generated\n", list.getNumberOfMidiObjectTracks());
    dbPrintf(2, "%d meta events written to midi object track no. 0\n", metaTrack != nullptr ? metaTrack->getCount() : 0);
    return true;
  }

  /// False if no sub-matrix is free, which ends the file.
  bool feedTrack(MidiTrackJudge& judge, const ZQMidiObjectTrack* track, int index, int* numberOfNotes, int* result) {
    const MidiTrackVerdict verdict = judge.takeUp(track, index);
    setGlobalMidiSettings(*matrix_, judge.settings());
    if (verdict != MidiTrackVerdict::taken) return true;
    addWrapping(numberOfNotes, judge.numberOfNotes());
    const MidiSequenceForm form = formOfSequence(*matrix_, judge.settings().preProcessingType);
    const MidiSequence sequence = sequenceOfTrack(*track, form, judge.lengthOfSequence());
    if (judge.findMeter() != MidiTrackVerdict::taken) return true;
    if (!makeMatrixCurrent(judge)) return false;
    applyMidiProperties(matrix_, fileName_, midiProfileTexts);
    describeMatrix(judge, index);
    const int dimension = judge.settings().coordinateDimension;
    *result = sequence.values == nullptr
                  ? outOfMemory
                  : matrix_->updateMatrixWithLongMIDISequence(sequence.values.get(),
                                                              dimension > 0 ? static_cast<int>(sequence.count / dimension) : 0);
    judge.finish();
    setGlobalMidiSettings(*matrix_, judge.settings());
    return true;
  }

  bool makeMatrixCurrent(const MidiTrackJudge& judge) {
    if (makeMatrixForMusicCurrent(matrix_, judge.numerator(), judge.denominator(), judge.subType(), judge.soundID())) return true;
    MidiTier<Matrix>::reportNoFreeMatrix(fileName_, judge.numerator(), judge.denominator());
    dbPrintf(0, "please restart and set maxNumberOfMatrices to a value > %d!\n", matrix_->getMaxNumberOfMatrices());
    return false;
  }

  void describeMatrix(const MidiTrackJudge& judge, int index) {
    auto* info = matrix_->getMatrixInfo();
    const int style = matrix_->getGlobalMusicStyle();
    const LearnedTrack track{judge.numerator(), judge.denominator(), judge.subType(), judge.soundID(), index};
    describeLearnedTrack(info, track, fileName_);
    info->setMusicStyle(style);
    MidiTier<Matrix>::addFileName(info, nameOfLearnedTrack(matrix_->getCurrentMatrixID(), track, style), fileName_);
    matrix_->setMatrixDescription(description_);
  }

  static void addWrapping(int* sum, int value) {
    *sum = static_cast<int>(static_cast<unsigned>(*sum) + static_cast<unsigned>(value));
  }

  static constexpr int outOfMemory = -2;  // the code of the update

  Matrix* matrix_;
  const char* fileName_;
  char description_[256];
};

template <class Matrix>
int updateMatrixWithMIDIFileIn(Matrix* matrix, const char* fileName, int* numberOfNotes) {
  if (!canBeOpened(fileName)) {
    dbPrintf(MidiTier<Matrix>::texts.levelOfCannotOpen, "updateMatrixWithMIDIFile: cannot open %s...\n",
             fileName != nullptr ? fileName : "");
    return 0;
  }
  dbPrintf(5, "begin updateMatrixWithMIDIFile %s...\n", fileName);
  const KeepCurrentMatrixID<Matrix> keep(matrix);
  matrix->setCurrentMatrixID(0);
  int notes = 0;
  const int result = MidiFeed<Matrix>(matrix, fileName).run(&notes);
  if (numberOfNotes != nullptr) *numberOfNotes = notes;
  dbPrintf(1, "end updateMatrixWithMIDIFile, %d midiNotes processed...\n", notes);
  return result;
}

/// Learns every MIDI file of a directory in alphabetical order. A file that fails doesn't end the run.
template <class Matrix>
int updateMatrixWithMIDIFilesIn(Matrix* matrix, const char* path, int recursive, int* numberOfNotes) {
  constexpr int level = MidiTier<Matrix>::reportsBatch ? 8 : INT_MAX;
  unsigned sumOfNotes = 0;
  dbPrintf(level, "GetMidiFilesInPath ...");
  ZQFileNameList* names = ZQFileNameList().getMidiFilesInFilePath(path, recursive, nullptr);
  dbPrintf(level, "GetMidiFilesInPath finshed\n");
  if (names != nullptr) {
    names->sortByFunction(ZQCompareFileNames);
    dbPrintf(level, "number of MidiFiles found;: %d\n", names->getCount());
    for (int i = 0; i < names->getCount(); i++) {
      int notes = 0;
      matrix->updateMatrixWithMIDIFile(names->getFileNameAtIndex(i), &notes);
      sumOfNotes += static_cast<unsigned>(notes);
    }
    deleteZQFileNameList(names);
  }
  if (numberOfNotes != nullptr) *numberOfNotes = static_cast<int>(sumOfNotes);
  return 1;
}

}  // namespace zmatrix
