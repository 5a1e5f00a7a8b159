// What the reader makes of small scores, above all where that is not what the score says.
#include "music/kern/ZQKernReader.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "music/kern/KernUnderTest.h"

namespace {

using zmatrix::kern;
using Texts = std::vector<std::string>;

struct KernReaderTest : testing::Test, zmatrix::KernUnderTest {
  /// The objects of records in one spine.
  std::string readSpine(const std::string& records) { return read(kern("**kern\n" + records + "\n*-")); }
  void expect(const std::vector<std::pair<const char*, const char*>>& cases) {
    for (const auto& [records, objects] : cases) EXPECT_EQ(read(kern(records)), objects) << records;
  }
};

TEST_F(KernReaderTest, TakesPitchesAndDurations) {
  EXPECT_EQ(readSpine("4c"), "n3072:60+3072 o6144:60");
  const std::vector<std::pair<std::string, std::string>> notes = {
      {"4.c", "60+4608"},       {"8..c", "60+2688"},  {"0c", "60+24576"},       {"00c", "60+24576"},    {"3c", "60+4096"},
      {"2%3c", "60+6144"},      {"1000000c", "60+0"}, {"99999999999c", "60+0"}, {"c", "60+0"},          {"4cc", "72+3072"},
      {"4C", "48+3072"},        {"4CC", "36+3072"},   {"4f##", "67+3072"},      {"4b--n", "69+3072"},   {"4gggg#", "104+3072"},
      {"5.......c", "60+4892"}, {"qc", "60+192"},     {"8Qc", "60+128"},        {"4CCCCCC", "244+3072"}};
  for (const auto& [token, note] : notes) {
    EXPECT_EQ(readSpine(token).substr(0, 6 + note.size()), "n3072:" + note) << token;
  }
  EXPECT_EQ(readSpine("{4c\n4d}\n{4e}\n4f\n4r}\n4g\n4r\n4r}"),
            "n3072:60+3072{ o6144:60 n6144:62+3072} o9216:62 n9216:64+3072} o12288:64 n12288:65+3072} o15360:65 "
            "n18432:67+3072 o21504:67");
}

TEST_F(KernReaderTest, TakesTheTimeOfChordsRestsAndTies) {
  expect({
      {"**kern\n4c_4e_4g\n4r\n*-", "n3072:60+3072 n3072:64+3072 n3072:67+3072 o6144:60 o6144:64 o6144:67"},
      {"**kern\n4c_4r_8d_8r\n4e\n*-", "n3072:60+3072 n3072:62+1536 o6144:60 o6144:62 n6144:64+3072 o9216:64"},
      {"**kern\n[4c\n4c]\n4d\n*-", "n3072:60+3072 o9216:60 n9216:62+3072 o12288:62"},
      {"**kern\n4c\n4d_4e]\n4r]\n4f\n*-", "n3072:60+3072 o12288:60 n12288:65+3072 o15360:65"},
      // A token without a pitch takes time, stops nothing, and ends the look at its token.
      {"**kern **kern\n2c 4e\n. 4_4f\n4d 4g\n*- *-",
       "n3072:60+6144 n3072:64+3072c1 o9216:60 n9216:62+3072 o9216:64c1 n9216:67+3072c1 o12288:62 o12288:67c1"},
      // One pitch in two spines of a channel sounds until both have left it.
      {"**kern **kern\n*Ch1 *Ch1\n2c 4c\n. 4d\n4e 4e\n*- *-",
       "n3072:60+6144c1 n3072:60+3072c1 n6144:62+3072c1 o9216:60c1 n9216:64+3072c1 o9216:62c1 n9216:64+3072c1 o12288:64c1"},
      // Records of null tokens take no time, once one has taken time.
      {"**kern **text\n4c la\n. li\n. lo\n4d .\n*- *-", "n3072:60+3072 o6144:60 n6144:62+3072 o9216:62"},
  });
}

TEST_F(KernReaderTest, PushesAllSpinesOnByGraceNotes) {
  expect({
      {"**kern **kern\n4c 4e\nqd .\n4f 4g\n*- *-",
       "n3072:60+3072 n3072:64+3072c1 o6144:60 n6144:62+192 o6336:62 n6336:65+3072 o6336:64c1 n6336:67+3072c1 o9408:65 "
       "o9408:67c1"},
      // Beside a note that goes on the flags push each spine, and they are gone with the record.
      {"**kern **kern\nqd 4g\n4e 4f\n*- *-",
       "n3072:62+192 n3072:67+3072c1 o3264:62 n3264:64+3072 o3264:67c1 n3264:65+3072c1 o6336:64 o6336:65c1"},
      {"**kern **kern\n8Qd 8Qf\n4e 4f\n*- *-",
       "n3072:62+128 n3072:65+128c1 o3584:62 n3584:64+3072 o3584:65c1 n3584:65+3072c1 o6656:64 o6656:65c1"},
  });
}

TEST_F(KernReaderTest, ReadsInterpretations) {
  EXPECT_EQ(readSpine("*M4/4\n*MM90\n*MM100-120\n*MM\n*MM[Adagio]\n*k[f#c#]\n4c\n*k[b-]"),
            "M0:4/4 T3072:90 T3072:110 k3072:3 n3072:60+3072 k6144:1 o6144:60");
  for (const auto& [token, count] : std::vector<std::pair<std::string, std::string>>{{"*k[f#]", "k3072:2"},
                                                                                     {"*k[b-]", "k3072:1"},
                                                                                     {"*k[]", "k3072:1"},
                                                                                     {"*k[", ""},
                                                                                     {"*k[f#", "k3072:1"},
                                                                                     {"*k[f#c#g#d#a#e#b#]", "k3072:7"}})
    EXPECT_EQ(readSpine(token), count) << token;
  // A meter is new if both numbers differ from those of the first.
  EXPECT_EQ(readSpine("*M3/4\n*M6/8\n*M2/2"), "M0:3/4 M0:3/4 M0:3/4");
  EXPECT_EQ(messages,
            "reading KERN file: more than one time signature found (2)\n"
            "reading KERN file: more than one time signature found (3)\n");
  EXPECT_EQ(readSpine("*M3/4\n*M6/4\n*M6/4"), "M0:3/4 M0:6/4 M0:6/4");
  EXPECT_EQ(readSpine("*M3/0\n=1\n4c\n=2"), "M0:0/0 n3072:60+3072 o6144:60");
  EXPECT_EQ(readSpine("*M1/1\n*M0/0\n=1\n4c\n=2"), "M0:1/1 M0:1/1 n12288:60+3072 o15360:60");
  EXPECT_EQ(readSpine("*M99999999999/-1\n=1\n4c\n=2").substr(0, 17), "M0:2147483647/-1 ");
  EXPECT_EQ(read(kern("!!!a\n**kern\n!!b\n4c\n!c\n*-")), "#0:!!!a\n #3072:!!b\n n3072:60+3072 #6144:!c\n o6144:60");
  EXPECT_EQ(read(kern("**kern **kern\n*Ch9 *Ch300\n4c 4d\n*- *-")).substr(0, 32), "n3072:60+3072c9 n3072:62+3072c44");
}

TEST_F(KernReaderTest, MovesTheMusicToTheBarsOfAPickUp) {
  // One quarter before the first bar line: the notes, which begin a quarter late, are moved on by half a bar.
  EXPECT_EQ(readSpine("*M4/4\n4c\n=1\n4d\n4e\n4f\n4g\n=2\n2.c"),
            "M0:4/4 n9216:60+3072 o12288:60 n12288:62+3072 o15360:62 n15360:64+3072 o18432:64 n18432:65+3072 o21504:65 "
            "n21504:67+3072 o24576:67 n24576:60+9216 o33792:60");
  EXPECT_EQ(messages,
            "bar line at (from time signature) unexpected position found. Correction offset 6144 will be applied later\n"
            "readKernObjects: applying barOffset...\n");
}

TEST_F(KernReaderTest, ResynchronisesAtABarLineInAnyColumn) {
  EXPECT_EQ(read(kern("**kern **kern **text\n2c 4e a\n. 4f =\n4d 4g b\n*- *- *-")),
            "n3072:60+6144 n3072:64+3072c1 o6144:64c1 n6144:65+3072c1 o6144:60 n6144:62+3072 o6144:65c1 n6144:67+3072c1 o9216:62 "
            "o9216:67c1");
}

TEST_F(KernReaderTest, FollowsSpinePaths) {
  expect({
      // The join stops the note of the spine that goes, and sets the time back by a step.
      {"**kern\n4c\n*^\n4d 4e\n*v *v\n4f\n*-",
       "n3072:60+3072 o6144:60 n6144:62+3072 n6144:64+3072c1 o9216:64c1 o6144:62 n6144:65+3072 o9216:65"},
      // Nothing sounds in it: the time stays.
      {"**kern\n*^\n4d 4r\n*v *v\n4f\n*-", "n3072:62+3072 o6144:62 n6144:65+3072 o9216:65"},
      // A spine that is added.
      {"**kern **kern\n4d 4r\n* *-\n*+\n* **kern\n4e 4f\n*- *-",
       "n3072:62+3072 o6144:62 n6144:64+3072 n6144:65+3072c1 o9216:64 o9216:65c1"},
      // The channel stays with the column when a spine before it goes, and goes along in an exchange.
      {"**kern **kern **kern\n4d 4e 4f\n*- * *\n4g 4a\n*x *x\n4b 4cc\n*- *-",
       "n3072:62+3072 n3072:64+3072c1 n3072:65+3072c2 o6144:62 o3072:64 n3072:67+3072 o3072:65c1 n3072:69+3072c1 o6144:69c1 "
       "n6144:71+3072c1 o6144:67 n6144:72+3072 o9216:71c1 o9216:72"},
      // A second section begins where the first one ended, a step back.
      {"**kern\n4c\n*-\n**kern\n4d\n*-", "n3072:60+3072 o6144:60 n3072:62+3072 o6144:62"},
      // A tandem interpretation of another name doesn't make a spine less a kern spine; a text spine is none.
      {"**kern **text\n4c 4d\n**dynam *\n4e 4f\n*- *-", "n3072:60+3072 o6144:60 n6144:64+3072 o9216:64"},
  });
}

TEST_F(KernReaderTest, EndsAtATimingError) {
  EXPECT_EQ(read(kern("**kern **kern\n=1 =1\n4c 4e\n=2 =2\n!!x\n8 8\n4g .\n4f 4f\n=3 =3\n*- *-")),
            "n3072:60+3072 n3072:64+3072c1 #6144:!!x\n o6144:60 n6144:67+3072");
  EXPECT_EQ(messages, "KERN Module: Timing error at line 7, spine 1.\n4g\t.\n");
}

TEST_F(KernReaderTest, LosesNothingInWideScores) {
  // A hundred spines, then a few thousand: each has its note, on the channel of its column.
  const auto row = [](const std::string& token, int count) {
    std::string record = token;
    for (int i = 1; i < count; i++) record += " " + token;
    return record;
  };
  std::string said = read(kern(row("**kern", 100) + "\n" + row("4c", 100) + "\n" + row("4d", 100) + "\n" + row("*-", 100)));
  EXPECT_EQ(std::count(said.begin(), said.end(), 'n'), 200);
  EXPECT_NE(said.find(" n6144:62+3072c3 "), std::string::npos);  // columns 96 to 99
  EXPECT_EQ(std::count(said.begin(), said.end(), 'o'), 2 * 16) << "the last of a channel's spines stops its pitch";

  std::string records = "**kern\n";
  int columns = 1;
  for (; columns < 256; columns *= 2) records += row("*^", columns) + "\n";
  for (; columns < 10000; columns += 256) records += row("*^", 256) + "\n";
  for (int i = 0; i < 60; i++) records += "*^\n4c\n";
  said = read(kern(records + "4" + std::string(150, 'd') + "\n*-"));
  EXPECT_EQ(list->getKernObjectTrackAtIndex(0)->getCount(), 122) << "sixty notes, then one of a long token";
  EXPECT_EQ(list->getKernObjectTrackAtIndex(0)->getKernObjectAtIndex(120)->getNoteNumber(), (62 + 12 * 149) % 256);
}

TEST_F(KernReaderTest, TakesLongLinesInPieces) {
  // 959 bytes and the line feed: the second piece holds nothing, and makes time 0 for both spines.
  const std::string comment = "!!" + std::string(956, 'x');
  EXPECT_EQ(read(kern("**kern\n" + comment + "\n4c\n*-")).size(), 6 + comment.size() + 1 + 1 + 13 + 1 + 8);
  EXPECT_EQ(read(kern("**kern\n!!" + std::string(957, 'x') + "2g\n4c\n*-")).substr(965),
            " n3072:67+6144 o9216:67 n9216:60+3072 o12288:60");
}

TEST_F(KernReaderTest, RefusesWhatIsNoFile) {
  const std::string pipe = folder.path() + "/pipe";
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  for (const std::string& path : {pipe, folder.path(), folder.path() + "/none"}) {
    EXPECT_EQ(readFile(path), "");
    EXPECT_EQ(messages, "error readKernObjectsFromFileWithPath: cannot open " + path + "\n");
  }
  EXPECT_EQ(read(""), "");
  EXPECT_EQ(messages, "");
  // A refused file leaves the list as it was.
  list->getKernObjectTrackAtIndex(0)->setChannel(3);
  ZQKernFile().readKernObjectsFromFileWithPath(list, folder.put("b.krn", "**kern\n").c_str());
  EXPECT_EQ(list->getKernObjectTrackAtIndex(0)->getChannel(), 3);
}

}  // namespace
