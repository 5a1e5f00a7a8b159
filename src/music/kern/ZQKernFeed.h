// Learning from kern files, shared by the tiers that learn; steps that don't differ are those of the MIDI feed. A file is read,
// its notes are moved to one track per channel, and each track is learned in the sub-matrix of its meter, texture and channel.
//
// KernTier<Matrix> has:
//   texts                   its messages, KernFeedTexts
//   profileTexts            its messages about a failed profile
#pragma once

#include <cstdio>
#include <memory>

#include "frame/ZQDebugChannel.h"
#include "music/ZQFileNameList.h"
#include "music/kern/ZQKernSequence.h"
#include "music/kern/ZQKernTrackJudge.h"
#include "music/kern/ZQKernTracks.h"
#include "music/midi/MIDIFILE.h"
#include "music/midi/ZQMidiFeed.h"

namespace zmatrix {

template <class Matrix>
struct KernTier;

/// The feed of one file.
template <class Matrix>
class KernFeed {
 public:
  KernFeed(Matrix* target, const char* path) : matrix_(target), fileName_(path) {
    printInto(description_, sizeof description_, KernTier<Matrix>::texts.description, 64);
  }

  /// Returns the result of the last update; `numberOfNotes` gets the number of notes of all tracks that were learned.
  int run(int* numberOfNotes) {
    const char* const caller = "updateMatrixWithKernFile";
    const std::unique_ptr<ZQKernTrackList, void (*)(ZQKernTrackList*)> list(readKernTrackList(fileName_, caller),
                                                                            deleteZQKernTrackList);
    const auto* channelFilter = reinterpret_cast<const unsigned char*>(matrix_->getGlobalMidiChannelFilterArray());
    if (list == nullptr || !arrangeKernTracks(list.get(), channelFilter, caller) ||
        !mergeKernTracks(list.get(), matrix_->getGlobalMidiTrackAnalyze()))
      return 0;
    const int numberOfTracks = list->getNumberOfKernObjectTracks();
    dbPrintf(4, "number of kern tracks found: %d:\n", numberOfTracks);
    dbPrintf(4, "%d Kern object Tracks generated\n", numberOfTracks);
    dbPrintf(4, "%d Kern\tMeta events written to Kern midi object track no. 0\n", list->getKernObjectTrackAtIndex(0)->getCount());
    KernTrackJudge judge(*list, globalMidiSettings(*matrix_), fileName_, KernTier<Matrix>::texts);
    int result = 0;
    for (int i = 1; i < numberOfTracks; i++) {
      if (!feedTrack(judge, list->getKernObjectTrackAtIndex(i), i, numberOfNotes, &result)) break;
    }
    return result;
  }

 private:
  /// False if no sub-matrix is free, which ends the file.
  bool feedTrack(KernTrackJudge& judge, const ZQKernObjectTrack* track, int index, int* numberOfNotes, int* result) {
    const MidiTrackVerdict verdict = judge.takeUp(track, index);
    setGlobalMidiSettings(*matrix_, judge.settings());
    if (verdict != MidiTrackVerdict::taken) return true;
    *numberOfNotes = wrappingSum(*numberOfNotes, judge.numberOfNotes());
    const MidiSequence sequence = sequenceOf(*track, judge);
    if (judge.findMeter() != MidiTrackVerdict::taken) return true;
    const LearnedTrack learned = judge.learnedTrack();
    if (!makeMatrixForMusicCurrent(matrix_, learned.nom, learned.denom, learned.subType, learned.sound)) {
      reportNoFreeMatrix(learned);
      return false;
    }
    applyMidiProperties(matrix_, fileName_, KernTier<Matrix>::profileTexts);
    describeMatrix(learned);
    const int dimension = judge.settings().coordinateDimension;
    const int numberOfItems = dimension > 0 ? static_cast<int>(sequence.count / dimension) : 0;
    *result = sequence.values == nullptr ? outOfMemory
                                         : matrix_->updateMatrixWithLongMIDISequence(sequence.values.get(), numberOfItems);
    judge.finish();
    setGlobalMidiSettings(*matrix_, judge.settings());
    return true;
  }

  MidiSequence sequenceOf(const ZQKernObjectTrack& track, const KernTrackJudge& judge) const {
    const MidiSequenceForm form = formOfSequence(*matrix_, judge.settings().preProcessingType);
    MidiSequence sequence = sequenceOfKernTrack(track, form, judge.lengthOfSequence());
    if (sequence.count != judge.lengthOfSequence())
      dbPrintf(0, "updateMatrixWithKernFile: i != numberOfSequenceItemsPerTrack %d<->%d\n", static_cast<int>(sequence.count),
               static_cast<int>(judge.lengthOfSequence()));
    return sequence;
  }

  /// The music style selects the sub-matrix but is not written into its record.
  void describeMatrix(const LearnedTrack& track) {
    auto* info = matrix_->getMatrixInfo();
    describeLearnedTrack(info, track, fileName_);
    addNameOfLearnedTrack(info, nameOfLearnedTrack(matrix_->getCurrentMatrixID(), track, matrix_->getGlobalMusicStyle()),
                          fileName_);
    matrix_->setMatrixDescription(description_);
  }

  void reportNoFreeMatrix(const LearnedTrack& track) const {
    dbPrintf(0, "updateMatrixWithKernFile %s: could not find a free matrixID for timeSignature %d/%d\n", fileName_, track.nom,
             track.denom);
    dbPrintf(0, KernTier<Matrix>::texts.pleaseRestart, matrix_->getMaxNumberOfMatrices());
    dbPrintf(0, "matrix occupation up to now:\n");
    for (int i = 0; i < matrix_->getMaxNumberOfMatrices(); i++) {
      const auto* info = matrix_->getMatrixInfo(i);
      dbPrintf(0, "ID %d: signature %d/%d, midiSubTyp= %d, musicstyl= %d\n", i, info->getMidiTimeSignatureNom(),
               info->getMidiTimeSignatureDenom(), info->getMidiSubType(), info->getMusicStyle());
    }
  }

  static constexpr int outOfMemory = -2;  // the code of the update

  Matrix* matrix_;
  const char* fileName_;
  char description_[256];
};

/// Unlike the feed of MIDI files this leaves sub-matrix 0 current.
template <class Matrix>
int updateMatrixWithKERNFileIn(Matrix* matrix, const char* fileName, int* numberOfNotes) {
  int notes = 0;
  if (numberOfNotes != nullptr) *numberOfNotes = 0;
  if (!canBeOpened(fileName)) {
    dbPrintf(1, "updateMatrixWithKernFile: cannot open %s...\n", fileName != nullptr ? fileName : "");
    return 0;
  }
  dbPrintf(5, "begin updateMatrixWithKERNFile %s...\n", fileName);
  matrix->setCurrentMatrixID(0);
  const int result = KernFeed<Matrix>(matrix, fileName).run(&notes);
  if (numberOfNotes != nullptr) *numberOfNotes = notes;
  dbPrintf(5, "end updateMatrixWithKERNFile, %d kernNotes processed...\n", notes);
  matrix->setCurrentMatrixID(0);
  return result;
}

/// Learns every kern file of a directory in alphabetical order. A file that fails doesn't end the run.
template <class Matrix>
int updateMatrixWithKERNFilesIn(Matrix* matrix, const char* path, int recursive, int* numberOfNotes) {
  int sumOfNotes = 0;
  if (ZQFileNameList* names = ZQFileNameList().getKernFilesInFilePath(path, recursive, nullptr)) {
    names->sortByFunction(ZQCompareFileNames);
    for (int i = 0; i < names->getCount(); i++) {
      int notes = 0;
      matrix->updateMatrixWithKERNFile(names->getFileNameAtIndex(i), &notes);
      sumOfNotes = wrappingSum(sumOfNotes, notes);
    }
    deleteZQFileNameList(names);
  }
  if (numberOfNotes != nullptr) *numberOfNotes = sumOfNotes;
  return 1;
}

}  // namespace zmatrix
