// MIDI files into a matrix and back, in both tiers that learn; what a report says of the same files; and files that are damaged.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>

#include "music/midi/MidiBytes.h"
#include "music/midi/ZQGeneratedMidi.h"
#include "music/midi/ZQMidiReport.h"
#include "support/TestFolder.h"
#include "support/TierTest.h"

namespace {

using zmatrix::bytes;
using zmatrix::melody;
using zmatrix::midiHead;
using zmatrix::midiTrack;
using zmatrix::tune;

struct DeleteReport {
  void operator()(zq_MidiReport* report) const { zmatrix::deleteMidiReport(report); }
};
using Report = std::unique_ptr<zq_MidiReport, DeleteReport>;

Report reportOn(const std::string& path, int type = 1003, int analyze = 2) {
  return Report(zmatrix::createMidiReport(path.c_str(), type, 16, analyze, nullptr));
}

const std::string drums = bytes({96, 0x99, 36, 100, 48, 0x89, 36, 0, 48, 0x99, 38, 100, 48, 0x89, 38, 0});

template <class Matrix>
class MidiFeedTest : public zmatrix::TierTest<Matrix> {
 protected:
  MidiFeedTest() {
    this->matrix->setMaxNumberOfMatrices(6);
    this->matrix->setGlobalDefaultMatrixPropertiesForMIDIElementsTriple_NDMT();
    this->matrix->setGlobalMidiTrackAnalyze(0);
    ZQDebugChannel::globalDebugLevel = 0;
    this->take();
  }
  int feed(const std::string& content) {
    notes = -7;
    const std::string path = folder.put("tune.mid", content);
    const int result = this->matrix->updateMatrixWithMIDIFile(path.c_str(), &notes);
    EXPECT_EQ(this->matrix->getCurrentMatrixID(), 0);
    // The report follows the same rules: it finds what was learned, if the globals are those that it is told.
    const Report report = reportOn(path, this->matrix->getGlobalPreProcessingType(), this->matrix->getGlobalMidiTrackAnalyze());
    learned = static_cast<int>(report->notesLearned);
    verdict = report->numberOfTracks > 0 ? report->tracks[0].verdict : -1;
    return result;
  }
  /// Type, meter, texture, sound and notes' first path of a sub-matrix.
  std::vector<int> recordOf(int id) {
    const auto* record = this->matrix->getMatrixInfo(id);
    return {record->getMatrixType(),
            record->getMidiTimeSignatureNom(),
            record->getMidiTimeSignatureDenom(),
            record->getMidiSubType(),
            record->getMidiSoundID(),
            record->getCoordinateDimension(),
            record->getNumberOfWriteElements() > 0};
  }
  std::vector<int> globals() {
    return {this->matrix->getGlobalPreProcessingType(), this->matrix->getGlobalCoordinateDimension(),
            this->matrix->getGlobalMatrixType()};
  }

  zmatrix::TestFolder folder;
  int notes = 0, learned = 0, verdict = 0;
};
TYPED_TEST_SUITE(MidiFeedTest, zmatrix::LearningTiers);

constexpr bool isFull(const ZQMatrix*) {
  return true;
}
constexpr bool isFull(const ZQMatrixMedium*) {
  return false;
}

}  // namespace

TYPED_TEST(MidiFeedTest, LearnsATrackInTheSubMatrixOfItsKind) {
  EXPECT_EQ(this->feed(tune(melody({60, 62, 64, 60}))), 1);
  EXPECT_EQ(this->notes, 4);
  EXPECT_EQ(this->learned, 4);
  EXPECT_EQ(this->recordOf(0), (std::vector<int>{4, 4, 4, 1, 1, 3, 1}));
  // Intervals, times modulo the bar, durations: two wholes steps up behind each other.
  EXPECT_GT(this->exist({2, 6144, 3072, 2, 9216, 3072}), 0);
  EXPECT_EQ(this->feed(tune(melody({60, 62, 64}), 3)), 1);
  EXPECT_EQ(this->recordOf(1), (std::vector<int>{4, 3, 4, 1, 1, 3, 1}));
  EXPECT_EQ(this->feed(tune(melody({70, 72, 74}))), 1);
  EXPECT_EQ(this->matrix->getNumberOfMatrices(), 2);
  const std::string names = this->matrix->getMatrixInfo(0)->getNamesOfUpdateFiles();
  EXPECT_EQ(names.starts_with("MatID0: 4/4, Monophon, Undefined, Piano (track1): "), !isFull(this->matrix)) << names;
  EXPECT_EQ(this->take(), "");
}

TYPED_TEST(MidiFeedTest, DiscardsWhatHasNoUsableMeter) {
  const std::string track = midiTrack(melody({60, 62}));
  EXPECT_EQ(this->feed(midiHead(1, 1, 96) + midiTrack("") + track), 0);
  EXPECT_EQ(this->notes * 10 + this->learned, 20);
  EXPECT_EQ(this->verdict, zq_MidiNoMeter);
  EXPECT_TRUE(this->told("error: ambigous or no time signature in Midi file detected (0 items).\ndiscarding track 1 of file "));
  this->feed(midiHead(1, 1, 96) + midiTrack(zmatrix::meter(3, 2) + zmatrix::meter(3, 3)) + track);
  EXPECT_EQ(this->verdict, zq_MidiSeveralMeters);
  EXPECT_EQ(this->feed(midiHead(1, 1, 96) + midiTrack(zmatrix::meter(3, 2) + zmatrix::meter(3, 2)) + track), 1);
  for (const int power : {0, 5, 31, 255}) {
    EXPECT_EQ(this->feed(tune(melody({60, 62}), 4, power)), 0);
    EXPECT_EQ(this->verdict, zq_MidiMeterOutOfRange);
  }
  EXPECT_EQ(this->feed(tune(melody({60}))), 0);
  EXPECT_EQ(this->verdict, zq_MidiTooFewNotes);
  EXPECT_EQ(this->notes, 0);
  EXPECT_EQ(this->feed(tune(bytes({0, 0xc0, 120}) + melody({60, 62}).substr(3) + melody({60}).substr(3))), 0);
  EXPECT_EQ(this->verdict, zq_MidiOnlyPercussionSound);
}

TYPED_TEST(MidiFeedTest, ChangesTheCodingForDrumsAndSingleSounds) {
  const std::vector<int> triple = this->globals();
  const std::string track = midiTrack(melody({60, 64, 67}));
  EXPECT_EQ(this->feed(midiHead(1, 3, 96) + midiTrack(zmatrix::meter(4, 2)) + midiTrack(drums) + track), 1);
  EXPECT_EQ(this->recordOf(0)[0], 5);
  EXPECT_EQ(this->recordOf(1)[0], 4);
  EXPECT_EQ(this->globals(), triple);
  EXPECT_EQ(this->notes, 5);
  // A track with drums that is discarded leaves the coding as it changed it.
  this->feed(midiHead(1, 3, 96) + midiTrack("") + midiTrack(drums) + track);
  EXPECT_EQ(this->globals(), (std::vector<int>{1004, 4, 5}));
  EXPECT_EQ(this->feed(tune(melody({60, 62, 64}))), 1);  // of one sound: down to a triple and back
  EXPECT_EQ(this->globals(), (std::vector<int>{1004, 4, 5}));
  this->matrix->setGlobalDefaultMatrixPropertiesForMIDIElementsTriple_NDMT();
  this->matrix->setGlobalCoordinateDimension(2);
  this->take();
  EXPECT_EQ(this->feed(tune(melody({60, 62, 64}))), 0);
  EXPECT_EQ(this->take(), isFull(this->matrix) ? "updateMatrixMIDIFile: illegal coordDimension, should be 3!: 2\n"
                                               : "updateMatrixMIDIKernFile: illegal coordDimension, should be 3!: 2\n");
}

TYPED_TEST(MidiFeedTest, StopsWhereNoSubMatrixIsLeft) {
  for (int numerator = 2; numerator < 9; numerator++) this->feed(tune(melody({60, 62}), numerator));
  EXPECT_EQ(this->matrix->getNumberOfMatrices(), 6);
  EXPECT_EQ(this->feed(tune(melody({60, 62}), 9)), 0);
  EXPECT_TRUE(this->told(
      "could not find a free matrixID for timeSignature 9/4\nplease restart and set maxNumberOfMatrices to a value > 6!\n"));
}

TYPED_TEST(MidiFeedTest, ComposesWhatItLearned) {
  const std::string path = this->folder.path() + "/new.mid";
  EXPECT_EQ(zmatrix::readMidiObjexsAndWriteToMidiFile(this->matrix, 5, path.c_str(), &this->notes), -1);
  this->feed(tune(melody({60, 62, 64, 65, 67, 65, 64, 62})));
  this->info()->setEnableStopItem(0);
  this->info()->setRestartWithTrueStartItem(1);
  EXPECT_EQ(this->matrix->readMidiObjexsAndWriteToMidiFile(5, (this->folder.path() + "/none/new.mid").c_str()), -5);
  const int start[] = {60, 3072, 3072, 62, 6144, 3072};
  this->matrix->initializeKernelSequenceWithOriginalSequence(start, 6, 1);
  EXPECT_EQ(this->matrix->readMidiObjexsAndWriteToMidiFile(0, path.c_str()), 1);
  EXPECT_EQ(reportOn(path)->tracks[0].notes, 2);
  this->matrix->initializeKernelSequenceWithOriginalSequence(start, 6, 1);
  EXPECT_EQ(zmatrix::readMidiObjexsAndWriteToMidiFile(this->matrix, 4, path.c_str(), &this->notes), 1);
  const Report report = reportOn(path);
  EXPECT_EQ(report->end, zq_MidiEndComplete);
  EXPECT_EQ(report->fileTracks[0].noteOnsWithoutEnd, 0);
  EXPECT_EQ(report->tracks[0].notes, this->notes);
  EXPECT_EQ(report->numerator * 100 + report->denominator, 404);
  EXPECT_EQ(this->notes, 6);
  // The tune goes on where it was: 64 follows 62 at the next beat, on the channel of its sound, whose program comes first.
  const std::string content = zmatrix::TestFolder::contentOf(path);
  EXPECT_NE(content.find(bytes({0xc1, 0})), std::string::npos);
  EXPECT_NE(content.find(bytes({0x81, 62, 101, 0, 0x91, 64, 100})), std::string::npos);
  EXPECT_EQ(zmatrix::readMidiObjexsAndWriteToMidiFile(this->matrix, 4, "/dev/full", &this->notes), -6);
}

TYPED_TEST(MidiFeedTest, SurvivesFilesOfAnyShape) {
  const std::string whole =
      midiHead(1, 3, 96) + midiTrack(zmatrix::meter(4, 2)) + midiTrack(melody({60, 62, 64})) + midiTrack(drums);
  for (size_t length = 0; length < whole.size(); length += 3) this->feed(whole.substr(0, length));
  const std::string longDelta = bytes({0x8f, 0xff, 0xff, 0xff, 0x7f});
  for (const std::string& events :
       {longDelta + melody({60, 62}) + longDelta + melody({60, 62}),
        bytes({0, 0x90, 200, 255, 9, 0x90, 200, 254, 9, 0x80, 200, 200}), bytes({0, 0xc0, 255}) + melody({60, 62}),
        bytes({0, 0xff, 3, 0x8f, 0xff, 0xff, 0xff, 0x7f})}) {
    for (const int division : {1, 0x7fff, 0x8001, 0}) {
      this->feed(midiHead(1, 65535, division) + midiTrack(zmatrix::meter(4, 2)) + midiTrack(events));
    }
  }
  std::string hundred = midiHead(1, 100, 96) + midiTrack(zmatrix::meter(4, 2));
  for (int i = 0; i < 100; i++) hundred += midiTrack(melody({60, 62, 64}, i % 16));
  this->matrix->setGlobalMidiTrackAnalyze(2);
  this->feed(hundred);
  const std::string pipe = this->folder.path() + "/pipe";
  mkfifo(pipe.c_str(), 0600);
  this->take();
  for (const std::string& path : {pipe, this->folder.path(), this->folder.path() + "/none.mid"}) {
    EXPECT_EQ(this->matrix->updateMatrixWithMIDIFile(path.c_str(), &this->notes), 0);
    EXPECT_EQ(reportOn(path)->end, zq_MidiEndNotFound);
  }
  EXPECT_EQ(this->told("updateMatrixWithMIDIFile: cannot open "), !isFull(this->matrix));  // of level 1 there
  EXPECT_EQ(this->broken(), "");
}

TYPED_TEST(MidiFeedTest, LearnsDirectoriesInOrder) {
  this->folder.put("a.mid", tune(melody({60, 62, 64})));
  this->folder.put("deep/b.MIDI", tune(melody({60, 62})));
  this->folder.put("c.txt", tune(melody({60, 62})));
  EXPECT_EQ(this->matrix->updateMatrixWithMIDIFiles(this->folder.path().c_str(), 1, &this->notes), 1);
  EXPECT_EQ(this->notes, 5);
  EXPECT_EQ(this->matrix->updateMatrixWithMIDIFiles("/none", 1, &this->notes), 1);
  EXPECT_EQ(this->notes, 0);
}
