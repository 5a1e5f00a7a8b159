// The two readings of music: what each learns and reports, and tunes that keep meter, sound and tempo.

#include "hosts/RunProgram.h"
#include "music/midi/MidiBytes.h"

namespace {

using namespace zmatrix;

// The tempo event for a quarter note of so many microseconds.
std::string tempo(int microseconds) {
  return bytes({0, 0xff, 81, 3}) + zmatrix::bigEndian(static_cast<unsigned>(microseconds), 3);
}

// A bar in 4/4 and three in 3/4, for oboe and drums.
std::string changingTune() {
  const std::string meters = meter(4, 2) + tempo(750000) + bytes({0x83, 0, 0xff, 88, 4, 3, 2, 24, 8});
  const std::string oboe =
      bytes({0, 0xc0, 68, 0, 0x90, 60, 100, 96, 0x80, 60, 0}) + melody({62, 64, 65, 67, 65, 64, 62, 60, 62}).substr(3);
  std::string drums = bytes({0, 0x99, 36, 100, 96, 0x89, 36, 0});
  for (int beat = 1; beat < 10; ++beat) drums += bytes({0, 0x99, 36 + beat % 2, 100, 96, 0x89, 36 + beat % 2, 0});
  return midiHead(1, 3, 96) + midiTrack(meters) + midiTrack(oboe) + midiTrack(drums);
}

const std::string score =
    "**kern\t**kern\n*M2/4\t*M2/"
    "4\n*MM72\t*MM72\n4c\t[4e\n4d\t8e]\n.\t8qf\n.\t8f\n=\t=\n*\t*^\n4e\t4g\t4cc\n4f\t4a\t4dd\n*\t*v\t*v\n"
    "=\t=\n4g\t4b\n4c\t4cc\n*-\t*-\n";

class ReadingTest : public ProgramTest {
 protected:
  Json inspect(const std::string& file) const { return json("inspect --json " + file)[0]; }
};

}  // namespace

TEST_F(ReadingTest, TheExactReadingLearnsWhatTheClassicOneLeavesOut) {
  writeFile("changing.mid", changingTune());
  writeFile("plain.mid", midiHead(1, 2, 96) + midiTrack("") + midiTrack(melody({60, 62, 64, 65})));
  expectMessage("learn changing.mid plain.mid --reading classic -o none", 3, "2 tracks: the file has several time signatures");
  expectMessage("learn changing.mid plain.mid -o model", 0, "1 file without a meter, learned as 4/4");
  const Json info = json("info model --json");
  EXPECT_EQ(info["reading"], "exact");
  long long ofParts = 0;
  for (const Json& line : info["tracks"]) {
    if (line["kind"] != "several channels") ofParts += line["notes"].get<long long>();
  }
  EXPECT_EQ(ofParts, 24);
  const Json seen = inspect("changing.mid");
  EXPECT_EQ(seen["readings"][0]["notes_learned"], 20);
  EXPECT_EQ(seen["readings"][1]["notes_read"], 20);
  EXPECT_EQ(seen["readings"][1]["notes_learned"], 0);
  EXPECT_EQ(seen["classic_losses"][0]["cause"], "not learned: the file has several time signatures");
  EXPECT_EQ(seen["exact"]["sub_matrices"], 6) << "in each meter the oboe, the drums and both";
  expectMessage("learn changing.mid --no-percussion -o model", 0, "left out 10 notes: drums, percussion and effects");
  expectMessage("learn changing.mid --no-percussion --reading classic -o model", 2, "--no-percussion needs the exact");
}

TEST_F(ReadingTest, WritesTheLearnedMeterSoundAndTempo) {
  writeFile("changing.mid", changingTune());
  ASSERT_EQ(zmatrix("learn changing.mid -o model").exitCode, 0);
  const Json info = json("info model --json");
  for (const Json& line : info["tracks"]) {
    EXPECT_EQ(line["tempo"], 80);
    ASSERT_EQ(zmatrix("generate model --count 30 -q --out new.mid --matrix " + line["id"].dump()).exitCode, 0);
    const Json runs = inspect("new.mid")["exact"]["runs"];
    EXPECT_EQ(runs.back()["meter"], line["meter"]);
    EXPECT_EQ(runs.back()["sound"], line["sound"]);
    EXPECT_EQ(runs.back()["tempo"], 80);
  }
  ASSERT_EQ(zmatrix("generate model --count 30 --tempo 132.5 --out fast.mid").exitCode, 0);
  EXPECT_NEAR(inspect("fast.mid")["exact"]["runs"][0]["tempo"].get<double>(), 132.5, 0.001);
  EXPECT_EQ(zmatrix("generate model --count 30 --tempo 132.5").output, readFile("fast.mid"));
  expectMessage("generate model --tempo 0 --out n.mid", 2, "--tempo");
}

TEST_F(ReadingTest, KeepsTheReadingOfTheModel) {
  writeFile("tune.mid", zmatrix::tune(melody({60, 62, 64, 65, 67, 65, 64, 62, 60, 62})));
  ASSERT_EQ(zmatrix("learn tune.mid --reading classic -o old").exitCode, 0);
  EXPECT_EQ(json("info old --json")["reading"], "classic");
  expectMessage("learn tune.mid -u -o old --reading exact", 2, "the model was learned with --reading classic");
  ASSERT_EQ(zmatrix("learn tune.mid -u -o old").exitCode, 0);
  EXPECT_EQ(json("info old --json")["reading"], "classic");
  ASSERT_EQ(zmatrix("learn tune.mid -o new").exitCode, 0);
  expectMessage("learn tune.mid -u -o new --reading classic", 2, "the model was learned with --reading exact");
  writeFile("start.mid", zmatrix::tune(melody({60, 62, 64})));
  ASSERT_EQ(zmatrix("generate new --start start.mid --count 2 --method best --out on.mid").exitCode, 0);
  EXPECT_EQ(inspect("on.mid")["exact"]["notes"], 5);
  ASSERT_EQ(zmatrix("generate old --start start.mid --count 2 --method best --out on.mid").exitCode, 0);
  EXPECT_GT(inspect("on.mid")["exact"]["notes"], 2);
}

TEST_F(ReadingTest, ConvertsAllNotesOfAScore) {
  writeFile("score.krn", score);
  const Json seen = inspect("score.krn");
  EXPECT_EQ(seen["readings"][0]["notes_read"], 15);
  EXPECT_EQ(seen["readings"][0]["notes_learned"], 15);
  EXPECT_GT(seen["readings"][1]["at_another_time"], 0) << "the notes after the grace note and the join";
  ASSERT_FALSE(seen["classic_losses"].empty());
  ASSERT_EQ(zmatrix("convert score.krn score.mid").exitCode, 0);
  const Json converted = inspect("score.mid")["exact"];
  EXPECT_EQ(converted["notes"], 15);
  EXPECT_EQ(converted["runs"][0]["meter"], "2/4");
  EXPECT_NEAR(converted["runs"][0]["tempo"].get<double>(), 72, 0.001);
  EXPECT_EQ(converted["grid_in_quanta"]["notes_without_duration"], 1);
  ASSERT_EQ(zmatrix("convert score.krn long.mid --grace-quanta 384").exitCode, 0);
  EXPECT_EQ(inspect("long.mid")["exact"]["grid_in_quanta"]["notes_without_duration"], 0);
  ASSERT_EQ(zmatrix("convert score.krn old.mid --reading classic").exitCode, 0);
  EXPECT_NE(readFile("old.mid"), readFile("score.mid"));
  expectMessage("convert score.krn old.mid --reading classic --grace-quanta 384", 2, "--grace-quanta needs the exact reading");
  EXPECT_FALSE(json("inspect score.krn --json --reading exact")[0].contains("readings"));
  EXPECT_FALSE(json("inspect score.krn --json --reading classic")[0].contains("exact"));
}
