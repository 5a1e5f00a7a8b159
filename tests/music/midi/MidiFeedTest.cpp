// Learning and writing MIDI files in both learning tiers, reports on the same files, and damaged files.
#include <sys/stat.h>

#include "music/midi/MidiBytes.h"
#include "music/midi/ZQGeneratedMidi.h"
#include "music/midi/ZQMidiReport.h"
#include "support/Account.h"
#include "support/TierTest.h"

using zmatrix::ZQDebugChannel;

namespace {

using namespace zmatrix;

struct DeleteReport {
  void operator()(zq_MidiReport* report) const { deleteMidiReport(report); }
};
using Report = std::unique_ptr<zq_MidiReport, DeleteReport>;

Report reportOn(const std::string& path, int type = 1003, int analyze = 2) {
  return Report(createMidiReport(path.c_str(), type, 16, analyze, nullptr));
}

const std::string drums = bytes({96, 0x99, 36, 100, 48, 0x89, 36, 0, 48, 0x99, 38, 100, 48, 0x89, 38, 0});

template <class Matrix>
class MidiFeedTest : public TierTest<Matrix> {
 public:
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
    // The report on the same file, with the same settings.
    const Report report = reportOn(path, this->matrix->getGlobalPreProcessingType(), this->matrix->getGlobalMidiTrackAnalyze());
    learned = static_cast<int>(report->notesLearned);
    verdict = report->numberOfTracks > 0 ? report->tracks[0].verdict : -1;
    return result;
  }
  /// Type, meter, texture, sound and dimension of a sub-matrix, and whether it has learned.
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

  TestFolder folder;
  static constexpr bool isFull = std::is_same_v<Matrix, ZQMatrix>;
  int notes = 0, learned = 0, verdict = 0;
};
TYPED_TEST_SUITE(MidiFeedTest, LearningTiers);

}  // namespace

TYPED_TEST(MidiFeedTest, LearnsATrackInTheSubMatrixOfItsKind) {
  EXPECT_EQ(this->feed(tune(melody({60, 62, 64, 60}))), 1);
  // Intervals, times modulo the bar, durations: twice a whole tone up.
  EXPECT_GT(this->exist({2, 6144, 3072, 2, 9216, 3072}), 0);
  const std::string held = tune(bytes({0, 0x90, 60, 100, 8, 0xb0, 7, 90, 8, 0xc0, 3, 8, 0x80, 60, 0}) + melody({62}));
  EXPECT_EQ(reportOn(this->folder.put("held.mid", held))->fileTracks[1].eventsLostInsideNotes, 2);
  const std::string names = this->matrix->getMatrixInfo(0)->getNamesOfUpdateFiles();
  EXPECT_EQ(names.starts_with("MatID0: 4/4, Monophon, Undefined, Piano (track1): "), !this->isFull) << names;
}

// For each file: result, notes, the report's number of learned notes and its verdict on the first track; then the global settings
// and the first records; and the messages.
TYPED_TEST(MidiFeedTest, ReportsTheVerdictOnEachTrack) {
  Account tell([this] { return this->take(); }, this->folder.path());
  const auto feed = [&](const std::string& step, const std::string& content) {
    const int result = this->feed(content);
    tell(step, result, this->notes, this->learned, this->verdict);
    tell(" ", this->globals(), this->matrix->getNumberOfMatrices());
    for (const int id : {0, 1, 2}) tell(" ", this->recordOf(id));
  };
  const std::string pair = midiTrack(melody({60, 62})), chord = midiTrack(melody({60, 64, 67})), four = meter(4, 2);
  feed("no meter", midiHead(1, 1, 96) + midiTrack("") + pair);
  feed("two meters", midiHead(1, 1, 96) + midiTrack(meter(3, 2) + meter(3, 3)) + pair);
  for (const int power : {0, 5, 31, 255}) feed("4/2^" + std::to_string(power), tune(melody({60, 62}), 4, power));
  feed("one note", tune(melody({60})));
  feed("a sound of drums", tune(bytes({0, 0xc0, 120}) + melody({60, 62}).substr(3) + melody({60}).substr(3)));
  feed("the same meter twice", midiHead(1, 1, 96) + midiTrack(meter(3, 2) + meter(3, 2)) + pair);
  feed("drums and a track", midiHead(1, 3, 96) + midiTrack(four) + midiTrack(drums) + chord);
  feed("drums that are discarded and keep the coding", midiHead(1, 3, 96) + midiTrack("") + midiTrack(drums) + chord);
  feed("one sound", tune(melody({60, 62, 64})));
  for (int numerator = 5; numerator < 9; numerator++) feed(std::to_string(numerator) + "/4", tune(melody({60, 62}), numerator));
  this->matrix->setGlobalDefaultMatrixPropertiesForMIDIElementsTriple_NDMT();
  this->matrix->setGlobalCoordinateDimension(2);
  feed("two coordinates", tune(melody({60, 62, 64})));
}

TYPED_TEST(MidiFeedTest, WritesTheLearnedTune) {
  const std::string path = this->folder.path() + "/new.mid";
  EXPECT_EQ(readMidiObjexsAndWriteToMidiFile(this->matrix, 5, path.c_str(), &this->notes), -1);
  this->feed(tune(melody({60, 62, 64, 65, 67, 65, 64, 62})));
  this->info()->setEnableStopItem(0);
  this->info()->setRestartWithTrueStartItem(1);
  EXPECT_EQ(this->matrix->readMidiObjexsAndWriteToMidiFile(5, (this->folder.path() + "/none/new.mid").c_str()), -5);
  const int start[] = {60, 3072, 3072, 62, 6144, 3072};
  this->matrix->initializeKernelSequenceWithOriginalSequence(start, 6, 1);
  EXPECT_EQ(this->matrix->readMidiObjexsAndWriteToMidiFile(0, path.c_str()), 1);
  EXPECT_EQ(reportOn(path)->tracks[0].notes, 2);
  this->matrix->initializeKernelSequenceWithOriginalSequence(start, 6, 1);
  EXPECT_EQ(readMidiObjexsAndWriteToMidiFile(this->matrix, 4, path.c_str(), &this->notes), 1);
  const Report report = reportOn(path);
  EXPECT_EQ(report->end, zq_MidiEndComplete);
  EXPECT_EQ(report->fileTracks[0].noteOnsWithoutEnd, 0);
  EXPECT_EQ(report->tracks[0].notes, this->notes);
  EXPECT_EQ(report->numerator * 100 + report->denominator, 404);
  EXPECT_EQ(this->notes, 6);
  // The tune continues the start: 64 follows 62 at the next beat, on the channel of its sound, after its program.
  const std::string content = TestFolder::contentOf(path);
  EXPECT_NE(content.find(bytes({0xc1, 0})), std::string::npos);
  EXPECT_NE(content.find(bytes({0x81, 62, 101, 0, 0x91, 64, 100})), std::string::npos);
  EXPECT_EQ(readMidiObjexsAndWriteToMidiFile(this->matrix, 4, "/dev/full", &this->notes), -6);
}

TYPED_TEST(MidiFeedTest, SurvivesFilesOfAnyShape) {
  const std::string whole = midiHead(1, 3, 96) + midiTrack(meter(4, 2)) + midiTrack(melody({60, 62, 64})) + midiTrack(drums);
  for (size_t length = 0; length < whole.size(); length += 3) this->feed(whole.substr(0, length));
  const std::string longDelta = bytes({0x8f, 0xff, 0xff, 0xff, 0x7f});
  for (const std::string& events :
       {longDelta + melody({60, 62}) + longDelta + melody({60, 62}),
        bytes({0, 0x90, 200, 255, 9, 0x90, 200, 254, 9, 0x80, 200, 200}), bytes({0, 0xc0, 255}) + melody({60, 62}),
        bytes({0, 0xff, 3, 0x8f, 0xff, 0xff, 0xff, 0x7f})}) {
    for (const int division : {1, 0x7fff, 0x8001, 0}) {
      this->feed(midiHead(1, 65535, division) + midiTrack(meter(4, 2)) + midiTrack(events));
    }
  }
  std::string hundred = midiHead(1, 100, 96) + midiTrack(meter(4, 2));
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
  EXPECT_EQ(this->told("updateMatrixWithMIDIFile: cannot open "), !this->isFull);  // of level 1 in the full tier
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
