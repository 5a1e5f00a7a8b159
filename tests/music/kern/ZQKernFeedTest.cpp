// Kern files on their way into a matrix, into a MIDI file and into a report.
#include "music/kern/ZQKernReport.h"

#include "music/kern/KernUnderTest.h"
#include "music/kern/ZQKernTracks.h"
#include "support/TierTest.h"

namespace {

using zmatrix::kern;
using zmatrix::Vector;

// --- tracks

TEST(KernTracksTest, KnowTheirTexture) {
  const struct {
    std::vector<std::pair<int, int>> notes;  // time and channel
    int subType, chordSize;
  } cases[] = {
      {{}, 0, 0},
      {{{5, 0}, {9, 0}}, 1, 0},
      {{{0, 0}, {9, 0}}, 2, 2},  // a first note at time 0 counts into a chord
      {{{5, 0}, {5, 0}, {5, 0}, {9, 0}}, 2, 3},
      {{{5, 0}, {9, 0}, {9, 0}}, 1, 0},  // a chord at the end isn't told
      {{{5, 9}, {5, 9}, {7, 9}}, 3, 2},
      {{{5, 0}, {9, 1}}, 4, 0},
      {{{0, 0}, {0, 1}}, 4, 0},
      {{{5, 200}, {9, 200}}, 1, 0},
  };
  for (const auto& [notes, subType, chordSize] : cases) {
    ZQKernObjectTrack track;
    for (const auto& [time, channel] : notes) {
      ZQKernObject* note = createAndInitZQKernObjectOfType(ZQKernObjectNoteOn, time);
      note->setChannel(static_cast<unsigned char>(channel));
      track.addKernObject(note);
    }
    int size = -1;
    EXPECT_EQ(track.getMidiSubTypeFromKernObjectTrack(&size), subType);
    EXPECT_EQ(size, chordSize);
  }
}

TEST(KernTracksTest, AreMadeForEachChannel) {
  zmatrix::KernUnderTest test;
  test.read(kern("**kern **kern **kern\n*MM60 *Ch3 *Ch16\n4c 4e 4g\n*M3/4 *M3/4 *M3/4\n4d 4f 4a\n*- *- *-"));
  const unsigned char filter[16] = {};
  ASSERT_TRUE(zmatrix::arrangeKernTracks(test.list, filter, "x"));
  EXPECT_EQ(test.captured.take(),
            "x: trackID 0 unexpected\nx: trackID 0 unexpected\nx: trackID 0 unexpected\n"
            "x: trackID 0 unexpected\n");
  const auto said = [&](int index) {
    std::string text;
    for (const ZQKernObject* object : *test.list->getKernObjectTrackAtIndex(index)) text += zmatrix::sayObject(*object) + " ";
    return text;
  };
  EXPECT_EQ(said(0), "M0:3/4 T0:60 n3072:67+3072c16 M0:3/4 M0:3/4 o6144:67c16 n6144:69+3072c16 o9216:69c16 ");
  EXPECT_EQ(said(1), "#0:ZM1c1 n3072:60+3072 o6144:60 n6144:62+3072 o9216:62 ");
  EXPECT_EQ(said(2), "#0:ZM2c2 n3072:64+3072c3 o6144:64c3 n6144:65+3072c3 o9216:65c3 ");
  ASSERT_TRUE(zmatrix::mergeKernTracks(test.list, 2));
  EXPECT_EQ(test.list->getNumberOfKernObjectTracks(), 4);
  const std::string merged = said(3);
  ASSERT_TRUE(zmatrix::mergeKernTracks(test.list, 1));  // once more: what is merged already is in it twice
  EXPECT_EQ(test.list->getNumberOfKernObjectTracks(), 2);
  EXPECT_EQ(said(1).size(), 2 * merged.size());
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

TEST_F(KernConversionTest, WritesTheSameBytes) {
  const std::string end = "00ff2f00\n", tempo = "00ff51030790fc", meter = "00ff580404021808";
  EXPECT_EQ(convert("**kern\n*-\n"), meter + tempo + end);
  EXPECT_EQ(convert("**kern\n"), meter + tempo + end) << "refused";
  // Comment, key with its closing bracket, meter of 6/8 and tempo at 0; markers of the phrase, velocities 100 and 127.
  EXPECT_EQ(convert("!!!COM: x\n**kern\n*k[f#c#]\n{4c\n*M6/8\n*MM60\n4d}\n*-\n"),
            "00ff51030f4240"
            "00ff580406031808"
            "00ff010421212143"
            "9800ff59020300" +
                end +
                "00ff03035a4d31"
                "9800ff060450485f31"
                "00903c64"
                "9800803c7f"
                "00ff060450485f30"
                "00903e64"
                "9800803e7f" +
                end);
  // Each channel in its track. The end of one spine moves the other to its column and channel and sets it back, which no delta
  // can say.
  EXPECT_EQ(convert("**kern\t**kern\n4c\t4e\n*-\t*\n4f\n*-\n"), meter + tempo + end +
                                                                    "00ff03035a4d31"
                                                                    "9800903c64"
                                                                    "9800803c7f"
                                                                    "0080407f"
                                                                    "00904164"
                                                                    "980080417f" +
                                                                    end +
                                                                    "00ff03035a4d32"
                                                                    "9800914064" +
                                                                    end);
}

TEST_F(KernConversionTest, RefusesWithMessages) {
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
 protected:
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
    std::string said;
    for (int id = 0; id < this->matrix->getMaxNumberOfMatrices(); id++) {
      const auto* info = this->matrix->getMatrixInfo(id);
      if (info->getMatrixType() == 0) break;
      said += std::to_string(info->getMatrixType()) + ":" + std::to_string(info->getMidiTimeSignatureNom()) + "/" +
              std::to_string(info->getMidiTimeSignatureDenom()) + "." + std::to_string(info->getMidiSubType()) + "." +
              std::to_string(info->getMidiSoundID()) + " ";
    }
    return said;
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
  // Number, start and duration, the music beginning a quarter late; on a grid of sixteenths a grace note lasts one.
  this->matrix->setGlobalPreProcessingType(1);
  this->matrix->setGlobalCoordinateDimension(2);
  this->matrix->setGlobalMatrixType(ZQMatrixTypeMIDINoteAndQuanta);
  EXPECT_EQ(this->feed("**kern\n*M3/4\n4c\n4d\n*-"), 1);
  EXPECT_EQ(this->take(), "");
}

TYPED_TEST(KernFeedTest, MergesAndFiltersAsTheGlobalBlockSays) {
  const std::string score = "**kern **kern\n4c 4e\n4d 4f\n*- *-";
  EXPECT_EQ(this->feed(score), 1);
  EXPECT_EQ(this->matrices(), "4:4/4.1.0 4:4/4.1.1 ") << "without a signature";
  this->matrix->setGlobalMidiTrackAnalyze(1);
  this->feed(score);
  EXPECT_EQ(this->notes, 4);
  EXPECT_EQ(this->matrices(), "4:4/4.1.0 4:4/4.1.1 4:4/4.4.0 ");
  this->matrix->setGlobalMidiTrackAnalyze(2);
  this->feed(score);
  EXPECT_EQ(this->notes, 8);
  char filter[16] = {1};
  this->matrix->setGlobalMidiChannelFilterArray(filter);
  this->feed(score);
  EXPECT_EQ(this->notes, 4) << "the one track that is left, and once more merged";
}

TYPED_TEST(KernFeedTest, DiscardsTracksWithMessages) {
  const std::string file = this->folder.path() + "/a.krn";
  EXPECT_EQ(this->feed("**kern **kern\n*M3/4 *\n*M2/4 *\n4c 4e\n4d 4f\n*- *-"), 0);
  const std::string ambiguous =
      "updateMatrixWithKernFile: error: ambigous or no time signature in kern file detected (2 items).\n";
  EXPECT_EQ(this->take(),
            ambiguous + "discarding track 1 in file " + file + "\n" + ambiguous + "discarding track 2 in file " + file + "\n");
  EXPECT_EQ(this->feed("**kern\n*M4/1\n4c\n4d\n*-"), 0);
  EXPECT_EQ(this->take(), "updateMatrixWithKernFile: suspicious signature 4/1 in file " + file +
                              " (discarded)\ndiscarding track 1 of file " + file + "\n");
  EXPECT_EQ(this->notes, 2) << "counted before they were discarded";
  EXPECT_EQ(this->feed("**kern\n4c\n4r\n*-"), 0);
  EXPECT_EQ(this->notes, 0);
  EXPECT_EQ(this->feed("**kern\n4c\n4d"), 0);
  EXPECT_EQ(this->take(), "humdrum: ERROR 14: All spines have not been properly terminated\n                  ");
  EXPECT_EQ(this->matrices(), "");
  EXPECT_EQ(this->matrix->updateMatrixWithKERNFile("/nowhere", &this->notes), 0);
  EXPECT_EQ(this->take(), "updateMatrixWithKernFile: cannot open /nowhere...\n");
}

TYPED_TEST(KernFeedTest, LearnsQuadruplesAsTriplesWhereThereIsOneChannel) {
  this->matrix->setGlobalDefaultMatrixPropertiesForMIDIElementsGMQuadruple_NDMTS();
  this->matrix->setGlobalMidiTrackAnalyze(2);
  const auto settings = [&] {
    return Vector{this->matrix->getGlobalPreProcessingType(), this->matrix->getGlobalCoordinateDimension(),
                  this->matrix->getGlobalMatrixType()};
  };
  EXPECT_EQ(this->feed("**kern **kern\n4c 4e\n4d 4f\n*- *-"), 1);
  EXPECT_EQ(this->matrices(), "4:4/4.1.0 4:4/4.1.1 5:4/4.4.0 ");
  EXPECT_EQ(settings(), (Vector{1004, 4, 5}));
  // A track that is discarded behind its downgrade leaves the settings of triples, to the merged track too.
  EXPECT_EQ(this->feed("**kern **kern\n*M4/1 *\n4c 4e\n4d 4f\n*- *-"), 0);
  EXPECT_EQ(settings(), (Vector{1003, 3, 4}));
}

TYPED_TEST(KernFeedTest, StopsWhereNoSubMatrixIsLeft) {
  std::string names = "**kern", first = "4c", second = "4d", last = "*-";
  for (int i = 1; i < 6; i++) names += " **kern", first += " 4c", second += " 4d", last += " *-";
  EXPECT_EQ(this->feed(names + "\n" + first + "\n" + second + "\n" + last), 1);
  EXPECT_EQ(this->notes, 10);
  const std::string occupied = ": signature 4/4, midiSubTyp= 1, musicstyl= 0\n";
  const std::string said = this->take();
  EXPECT_TRUE(said.starts_with("updateMatrixWithKernFile " + this->folder.path() +
                               "/a.krn: could not find a free matrixID for timeSignature 4/4\nPlease restart "));
  EXPECT_TRUE(said.ends_with("set maxnumber of matrices to > 4!matrix occupation up to now:\nID 0" + occupied + "ID 1" +
                             occupied + "ID 2" + occupied + "ID 3" + occupied));
  EXPECT_EQ(this->matrix->getCurrentMatrixID(), 0);
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

TEST(KernReportTest, JudgesTracksAsTheFeedDoes) {
  zmatrix::TestFolder folder;
  const auto tell = [&](const std::string& text, int trackAnalyze = 0) {
    zq_KernReport* report = reportOn(folder.put("a.krn", text), trackAnalyze);
    std::string said = std::to_string(report->notesLearned);
    for (int i = 0; i < report->numberOfTracks; i++) {
      const zq_KernTrack& track = report->tracks[i];
      said += " " + std::to_string(track.index) + (track.isMerged != 0 ? "m" : "") + ":" + std::to_string(track.verdict) + "," +
              std::to_string(track.notes) + "," + std::to_string(track.numerator) + "/" + std::to_string(track.denominator);
    }
    zmatrix::deleteKernReport(report);
    return said;
  };
  const std::string two = kern("**kern **kern\n*M3/4 *M3/4\n4c 4e\n4d 4r\n*- *-");
  EXPECT_EQ(tell(two), "2 1:0,2,3/4 2:1,1,3/4");
  EXPECT_EQ(tell(two, 1), "3 1m:0,3,3/4");
  EXPECT_EQ(tell(two, 2), "5 1:0,2,3/4 2:1,1,3/4 3m:0,3,3/4");
  // A second meter counts only if both of its numbers differ; then all objects say the first.
  EXPECT_EQ(tell(kern("**kern\n*M4/4\n4c\n*M6/8\n4d\n*-")), "2 1:0,2,4/4");
  EXPECT_EQ(tell(kern("**kern\n*M4/4\n4c\n*M3/4\n4d\n*-")), "0 1:5,2,4/4");
  EXPECT_EQ(tell(kern("**kern\n*M4/1\n4c\n4d\n*-")), "0 1:6,2,4/1");
  EXPECT_EQ(tell("\n"), "0");
}

TEST(KernReportTest, TellsFaultsAndDepartures) {
  zmatrix::TestFolder folder;
  const auto tell = [&](const std::string& text) {
    zq_KernReport* report = reportOn(folder.put("a.krn", text));
    std::string said = std::to_string(report->state);
    for (int i = 0; i < report->numberOfFindings; i++) {
      const zq_KernFinding& finding = report->findings[i];
      said += " " +
              std::string(finding.kind == zq_KernError     ? "E"
                          : finding.kind == zq_KernWarning ? "W"
                                                           : "D") +
              std::to_string(finding.number) + "@" + std::to_string(finding.line) + "." + std::to_string(finding.column) +
              (finding.stopsRead != 0 ? "!" : "") + (finding.token[0] != 0 ? std::string("[") + finding.token + "]" : "") +
              (finding.amount != 0 ? "=" + std::to_string(finding.amount) : "");
    }
    zmatrix::deleteKernReport(report);
    return said;
  };
  EXPECT_EQ(tell(kern("**kern\n4\n5c\nc\n2%3d\n*-")), "3 D0@2.1[4] D2@3.1[5c]=2457 D1@4.1[c] D2@5.1[2%3d]=6144");
  EXPECT_EQ(tell(kern("**kern **kern\n4c\n4c 4d 4e\n=1 =1\n*- *-")), "3 E13@2.0 E13@3.0 D5@2.2=1 D6@3.3[4e]=1 D4@4.1[=1]=3072");
  EXPECT_EQ(tell(kern("**kern\n*^\n4c 4d\n=1 =1\n2c 4d\n=2 =2\n*v *v\n4f\n*-")), "3 D4@6.1[=2]=3072 D3@7.0=3072");
  EXPECT_EQ(tell(kern("**kern **kern\n=1 =1\n4c 4e\n=2 =2\n8 8\n4g .\n4f 4f\n*- *-")),
            "2 D0@5.1[8] D0@5.2[8] D7@6.2![.] D8@7.1[4f] D8@7.2[4f]");
  EXPECT_EQ(tell("**kern\n!!" + std::string(1100, 'x') + "\n*-"), "1 D9@2.0=1024 D10@3.0 E14@3.0!");
  EXPECT_EQ(tell(kern("**kern\n[4c_4e\n4c]_4f\n4d]_4e]\n*-")),
            "3 D12@3.1[4c] 4f] D13@3.1[4c] 4f] D14@4.1[4d] 4e]] D12@4.1[4d] 4e]]");
  EXPECT_EQ(tell(kern("**kern **kern\n8gq 4a\n4g 4b\n*- *-")), "3 D15@2.0=192");
  EXPECT_EQ(tell(""), "3");
  zq_KernReport* report = reportOn("/nowhere");
  EXPECT_EQ(report->state, zq_KernFileNotOpened);
  zmatrix::deleteKernReport(report);

  report = reportOn(
      folder.put("b.krn", kern("**kern **kern\n*M6/8 *Ch30\n4c_4e [4g\n* *^\n4r 4g] qa\n* *v *v\n*+ *x\n* **text *x\n=2 = =\n"
                               "4d . 4e\n*- *- *-")));
  EXPECT_EQ(report->errors, 3);
  EXPECT_EQ(
      (Vector{int(report->notes), int(report->rests), int(report->ties), int(report->graceNotes), int(report->splits),
              int(report->joins), int(report->additions), int(report->exchanges), int(report->ends), int(report->barLines)}),
      (Vector{6, 1, 1, 1, 1, 1, 1, 0, 3, 1}));
  zmatrix::deleteKernReport(report);
}

}  // namespace
