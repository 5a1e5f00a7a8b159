// Kern files: tracks, learning, conversion to MIDI, reports.
#include "music/kern/ZQKernReport.h"

#include "music/kern/KernUnderTest.h"
#include "music/kern/ZQKernTracks.h"
#include "support/Account.h"
#include "support/KeptText.h"
#include "support/TierTest.h"

namespace {

using zmatrix::kern;
using zmatrix::Vector;

// --- tracks

TEST(KernTracksTest, HaveTheirTexture) {
  zmatrix::expectKeptCases("kern_textures.txt", [](const std::string& line) {
    zmatrix::ZQKernObjectTrack track;
    std::istringstream numbers(line);
    for (int time, channel; numbers >> time >> channel;) {
      zmatrix::ZQKernObject* note = zmatrix::createAndInitZQKernObjectOfType(zmatrix::ZQKernObjectNoteOn, time);
      note->setChannel(static_cast<unsigned char>(channel));
      EXPECT_TRUE(track.addKernObject(note));
    }
    int size = -1;
    const int texture = track.getMidiSubTypeFromKernObjectTrack(&size);
    return std::to_string(texture) + " " + std::to_string(size);
  });
}

TEST(KernTracksTest, AreCreatedForEachChannel) {
  zmatrix::KernUnderTest test;
  test.read(kern("**kern **kern **kern\n*MM60 *Ch3 *Ch16\n4c 4e 4g\n*M3/4 *M3/4 *M3/4\n4d 4f 4a\n*- *- *-"));
  const unsigned char filter[16] = {};
  ASSERT_TRUE(zmatrix::arrangeKernTracks(test.list, filter, "x"));
  EXPECT_EQ(test.captured.take(),
            "x: trackID 0 unexpected\nx: trackID 0 unexpected\nx: trackID 0 unexpected\n"
            "x: trackID 0 unexpected\n");
  const auto trackText = [&](int index) {
    std::string text;
    for (const zmatrix::ZQKernObject* object : *test.list->getKernObjectTrackAtIndex(index))
      text += zmatrix::textOfObject(*object) + " ";
    return text;
  };
  EXPECT_EQ(trackText(0), "M0:3/4 T0:60 n3072:67+3072c16 M0:3/4 M0:3/4 o6144:67c16 n6144:69+3072c16 o9216:69c16 ");
  EXPECT_EQ(trackText(1), "#0:ZM1c1 n3072:60+3072 o6144:60 n6144:62+3072 o9216:62 ");
  EXPECT_EQ(trackText(2), "#0:ZM2c2 n3072:64+3072c3 o6144:64c3 n6144:65+3072c3 o9216:65c3 ");
  ASSERT_TRUE(zmatrix::mergeKernTracks(test.list, 2));
  EXPECT_EQ(test.list->getNumberOfKernObjectTracks(), 4);
  const std::string merged = trackText(3);
  ASSERT_TRUE(zmatrix::mergeKernTracks(test.list, 1));  // a second merge has the merged track twice
  EXPECT_EQ(test.list->getNumberOfKernObjectTracks(), 2);
  EXPECT_EQ(trackText(1).size(), 2 * merged.size());
  EXPECT_EQ(merged,
            "#0:ZM1c1 #0:ZM2c2 n3072:60+3072 n3072:64+3072c3 o6144:60 n6144:62+3072 o6144:64c3 n6144:65+3072c3 "
            "o9216:62 o9216:65c3 ");
}

// --- MIDI

struct KernConversionTest : zmatrix::TierTest<ZQMatrixMedium> {
  /// The tracks of the MIDI file in hexadecimal digits.
  std::string convert(const std::string& text) {
    const std::string score = folder.put("a.krn", text), midi = folder.path() + "/a.mid";
    EXPECT_EQ(matrix->convertKERNFileToMIDIFile(score.c_str(), midi.c_str()), 1);
    std::string digits;
    for (const unsigned char byte : folder.contentOf(midi)) {
      const char* const hexadecimal = "0123456789abcdef";
      digits += {hexadecimal[byte / 16], hexadecimal[byte % 16]};
    }
    std::string tracks;
    for (size_t begin = digits.find("4d54726b"); begin < digits.size();) {
      const size_t end = std::min(digits.find("4d54726b", begin + 1), digits.size());
      tracks += digits.substr(begin + 16, end - begin - 16) + "\n";
      begin = end;
    }
    return tracks;
  }
  zmatrix::TestFolder folder;
};

TEST_F(KernConversionTest, WritesGoldenBytes) {
  zmatrix::expectKeptCases("kern_to_midi.txt", [this](const std::string& text) { return convert(text); });
}

TEST_F(KernConversionTest, ReportsFilesThatCannotBeOpened) {
  EXPECT_EQ(matrix->convertKERNFileToMIDIFile(nullptr, "x"), 0);
  EXPECT_EQ(matrix->convertKERNFileToMIDIFile("x", nullptr), 0);
  EXPECT_EQ(matrix->convertKERNFileToMIDIFile("/nowhere/x", "x"), 1);
  EXPECT_EQ(take(), "convertKernFileToMidiFile: cannot open /nowhere/x...\n");
  const std::string score = folder.put("a.krn", "**kern\n*-\n");
  EXPECT_EQ(matrix->convertKERNFileToMIDIFile(score.c_str(), "/nowhere/x"), 1);
  EXPECT_EQ(take(), "convertKernFileToMidiFile: cannot open for writing/nowhere/x...\n");
}

// --- learning

template <class Matrix>
class KernFeedTest : public zmatrix::TierTest<Matrix> {
 public:
  KernFeedTest() {
    this->matrix->setGlobalDefaultMatrixPropertiesForMIDIElementsTriple_NDMT();
    this->matrix->setGlobalMidiTrackAnalyze(0);
    this->take();
  }
  int feed(const std::string& records) {
    return this->matrix->updateMatrixWithKERNFile(folder.put("a.krn", kern(records)).c_str(), &notes);
  }
  /// Type, meter, texture and sound of the first sub-matrices.
  std::string matrices() {
    std::string text;
    for (int id = 0; id < this->matrix->getMaxNumberOfMatrices(); id++) {
      const auto* info = this->matrix->getMatrixInfo(id);
      if (info->getMatrixType() == 0) break;
      text += std::to_string(info->getMatrixType()) + ":" + std::to_string(info->getMidiTimeSignatureNom()) + "/" +
              std::to_string(info->getMidiTimeSignatureDenom()) + "." + std::to_string(info->getMidiSubType()) + "." +
              std::to_string(info->getMidiSoundID()) + " ";
    }
    return text;
  }
  int notes = -7;
  zmatrix::TestFolder folder;
};
TYPED_TEST_SUITE(KernFeedTest, zmatrix::LearningTiers);

TYPED_TEST(KernFeedTest, LearnsEachChannelInItsSubMatrix) {
  EXPECT_EQ(this->feed("**kern **kern\n*M3/4 *M3/4\n4c 4e\n4d 4f\n8e qg\n*- *-"), 1);
  EXPECT_EQ(this->notes, 6);
  EXPECT_EQ(this->matrix->getCurrentMatrixID(), 0);
  EXPECT_EQ(this->matrices(), "4:3/4.1.0 4:3/4.1.1 ");
  // The coding as pairs of pitch and time.
  this->matrix->setGlobalPreProcessingType(1);
  this->matrix->setGlobalCoordinateDimension(2);
  this->matrix->setGlobalMatrixType(ZQMatrixTypeMIDINoteAndQuanta);
  EXPECT_EQ(this->feed("**kern\n*M3/4\n4c\n4d\n*-"), 1);
  EXPECT_EQ(this->take(), "");
}

TYPED_TEST(KernFeedTest, ReportsDiscardedTracks) {
  zmatrix::Account tell([this] { return this->take(); }, this->folder.path());
  const auto feed = [&](const std::string& records) {
    const int result = this->feed(records);
    tell(zmatrix::escaped(records), result, this->notes, this->matrices());
  };
  feed("**kern **kern\n*M3/4 *\n*M2/4 *\n4c 4e\n4d 4f\n*- *-");
  feed("**kern\n*M4/1\n4c\n4d\n*-");  // the notes of the discarded track are counted
  feed("**kern\n4c\n4r\n*-");
  feed("**kern\n4c\n4d");
  tell("no file", this->matrix->updateMatrixWithKERNFile("/nowhere", &this->notes));
}

TYPED_TEST(KernFeedTest, LearnsQuadruplesOfOneChannelAsTriples) {
  this->matrix->setGlobalDefaultMatrixPropertiesForMIDIElementsGMQuadruple_NDMTS();
  this->matrix->setGlobalMidiTrackAnalyze(2);
  const auto settings = [&] {
    return Vector{this->matrix->getGlobalPreProcessingType(), this->matrix->getGlobalCoordinateDimension(),
                  this->matrix->getGlobalMatrixType()};
  };
  EXPECT_EQ(this->feed("**kern **kern\n4c 4e\n4d 4f\n*- *-"), 1);
  EXPECT_EQ(this->matrices(), "4:4/4.1.0 4:4/4.1.1 5:4/4.4.0 ");
  EXPECT_EQ(settings(), (Vector{1004, 4, 5}));
  // A track that is discarded after its downgrade leaves the settings of triples, also for the merged track.
  EXPECT_EQ(this->feed("**kern **kern\n*M4/1 *\n4c 4e\n4d 4f\n*- *-"), 0);
  EXPECT_EQ(settings(), (Vector{1003, 3, 4}));
}

TYPED_TEST(KernFeedTest, StopsWithoutAFreeSubMatrix) {
  std::string names = "**kern", first = "4c", second = "4d", last = "*-";
  for (int i = 1; i < 6; i++) names += " **kern", first += " 4c", second += " 4d", last += " *-";
  zmatrix::Account tell([this] { return this->take(); }, this->folder.path());
  const int result = this->feed(names + "\n" + first + "\n" + second + "\n" + last);
  tell("six parts", result, this->notes, this->matrix->getCurrentMatrixID());
}

TYPED_TEST(KernFeedTest, LearnsAFolderInOrder) {
  this->folder.put("b/x.krn", kern("**kern\n4c\n4d\n*-"));
  this->folder.put("y.krn", kern("**kern\n4c\n4d\n4e\n*-"));
  this->folder.put("z.krn", "\n");
  EXPECT_EQ(this->matrix->updateMatrixWithKERNFiles(this->folder.path().c_str(), 0, &this->notes), 1);
  EXPECT_EQ(this->notes, 3);
  EXPECT_EQ(this->matrix->updateMatrixWithKERNFiles(this->folder.path().c_str(), 1, &this->notes), 1);
  EXPECT_EQ(this->notes, 5);
}

// --- the report

zq_KernReport* reportOn(const std::string& path, int trackAnalyze = 0) {
  return zmatrix::createKernReport(path.c_str(), 1003, trackAnalyze, nullptr);
}

TEST(KernReportTest, ListsTracksErrorsAndDeviations) {
  zmatrix::TestFolder folder;
  zmatrix::expectKeptCases("kern_reports.txt", [&folder](const std::string& records) {
    const std::string score = kern(records), path = folder.put("a.krn", score.substr(0, score.size() - 1));
    std::string text;
    for (const int trackAnalyze : {0, 1, 2}) {
      zq_KernReport* report = reportOn(path, trackAnalyze);
      text += std::to_string(report->state) + " " + std::to_string(report->notesLearned);
      for (int i = 0; i < report->numberOfTracks; i++) {
        const zq_KernTrack& track = report->tracks[i];
        text += " " + std::to_string(track.index) + (track.isMerged != 0 ? "m" : "") + ":" + std::to_string(track.verdict) + "," +
                std::to_string(track.notes) + "," + std::to_string(track.numerator) + "/" + std::to_string(track.denominator);
      }
      text += "\n";
      for (int i = 0; i < report->numberOfFindings && trackAnalyze == 2; i++) {
        const zq_KernFinding& finding = report->findings[i];
        text += std::string(1, "EWD"[finding.kind == zq_KernError     ? 0
                                     : finding.kind == zq_KernWarning ? 1
                                                                      : 2]) +
                std::to_string(finding.number) + "@" + std::to_string(finding.line) + "." + std::to_string(finding.column) +
                (finding.stopsRead != 0 ? "!" : "") + (finding.token[0] != 0 ? std::string("[") + finding.token + "]" : "") +
                (finding.amount != 0 ? "=" + std::to_string(finding.amount) : "") + " ";
      }
      if (trackAnalyze == 2) text += "meters " + std::to_string(report->numberOfMeters) + " counts ";
      for (const auto count : {report->notes, report->rests, report->ties, report->graceNotes, report->splits, report->joins,
                               report->additions, report->exchanges, report->ends, report->barLines}) {
        if (trackAnalyze == 2) text += std::to_string(count) + " ";
      }
      zmatrix::deleteKernReport(report);
    }
    return text;
  });
  zq_KernReport* report = reportOn("/nowhere");
  EXPECT_EQ(report->state, zq_KernFileNotOpened);
  zmatrix::deleteKernReport(report);
}

}  // namespace
