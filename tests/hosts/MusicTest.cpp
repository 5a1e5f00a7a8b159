// Music: MIDI files are learned, continued and inspected, and losses are reported.
#include <algorithm>

#include "hosts/RunProgram.h"
#include "music/midi/MidiBytes.h"

namespace {

using namespace zmatrix;

const std::string tunes = example("tide.mid") + " " + example("quay.mid") + " " + example("gulls.mid") + " ";
const std::string meter44 = meter(4, 2);

std::string midiFile(const std::vector<std::string>& tracks) {
  std::string file = midiHead(1, static_cast<int>(tracks.size()), 96);
  for (const std::string& events : tracks) file += midiTrack(events);
  return file;
}

// Eight rising quarter notes from pitch 60, repeated.
std::string scale(int notes) {
  std::string events;
  for (int i = 0; i < notes; ++i) events += bytes({0, 0x90, 60 + i % 8, 0x50, 96, 0x80, 60 + i % 8, 0x40});
  return events;
}

class MusicTest : public ProgramTest {
 protected:
  Json inspect(const std::string& files) const { return json("inspect --json " + files); }

  // The notes of a file, each of which must have an end.
  int notesIn(const std::string& file) const {
    int notes = 0;
    const Json report = inspect(file)[0];
    for (const Json& read : report["file_tracks"]) {
      EXPECT_EQ(read["note_ons_without_end"], 0) << file;
      EXPECT_EQ(read["note_offs_without_note"], 0) << file;
      notes += read["notes"].get<int>();
    }
    return notes;
  }
};

TEST_F(MusicTest, WritesTheSameTuneForTheSameSeed) {
  ASSERT_EQ(zmatrix("learn " + tunes + "-o model").exitCode, 0);
  ASSERT_EQ(zmatrix("generate model --count 150 --seed 5 -q --out a.mid").exitCode, 0);
  EXPECT_EQ(zmatrix("generate model --count 150 --seed 5").output, readFile("a.mid"));
  EXPECT_EQ(zmatrix("continue " + tunes + "--count 150 --seed 5").output, readFile("a.mid"));
  EXPECT_NE(zmatrix("generate model --count 150 --seed 6").output, readFile("a.mid"));
  EXPECT_GT(notesIn("a.mid"), 100);
}

TEST_F(MusicTest, ListsTheSubMatricesAndContinuesTheChosenOne) {
  ASSERT_EQ(zmatrix("learn " + tunes + "-o model").exitCode, 0);
  const Json info = json("info model --json");
  EXPECT_EQ(info["subject"], "music");
  EXPECT_EQ(info["coding"], "triple");
  const Json& lines = info["tracks"];
  ASSERT_FALSE(lines.empty());
  std::size_t mostNotes = 0;
  for (const Json& line : lines) {
    const std::string id = line["id"].dump();
    expectMessage("generate model --matrix " + id + " --count 40 --out part.mid", 0,
                  "continuing ID " + id + ": " + line["meter"].get<std::string>());
    EXPECT_EQ(inspect("part.mid")[0]["meter"], line["meter"]);
    mostNotes = std::max(mostNotes, line["notes"].get<std::size_t>());
  }
  expectMessage("generate model --count 1", 0, ", " + std::to_string(mostNotes) + " notes");
}

TEST_F(MusicTest, LearnsTheTracksThatTheOptionsSelect) {
  const auto soundsOf = [this](const std::string& options) {
    EXPECT_EQ(zmatrix("learn " + example("quay.mid") + " -o model " + options).exitCode, 0);
    Names sounds;
    const Json info = json("info model --json");
    for (const Json& line : info["tracks"]) sounds.push_back(line["sound"]);
    std::sort(sounds.begin(), sounds.end());
    return sounds;
  };
  EXPECT_EQ(soundsOf("--tracks single"), (Names{"bass", "drums", "organ", "synth lead"}));
  EXPECT_EQ(soundsOf("--tracks merged"), Names{"any"});
  EXPECT_EQ(soundsOf("--tracks both"), (Names{"any", "bass", "drums", "organ", "synth lead"}));
  EXPECT_EQ(soundsOf("--tracks single --skip-channel 10 --skip-channel 3"), (Names{"organ", "synth lead"}));
  for (const std::string coding : {"pitch-time", "pitch-bartime", "triple", "quadruple"}) {
    const std::string learn = "continue " + example("quay.mid") + " --count 80 --out " + coding + ".mid --coding " + coding;
    EXPECT_EQ(zmatrix(learn).exitCode, 0) << coding;
    EXPECT_GT(notesIn(coding + ".mid"), 40) << coding;
  }
}

TEST_F(MusicTest, ContinuesAStart) {
  writeFile("scale.mid", midiFile({meter44, scale(64)}));
  writeFile("start.mid", midiFile({meter44, scale(21)}));
  ASSERT_EQ(zmatrix("continue scale.mid --tracks single --start start.mid --count 3 --method best --out on.mid").exitCode, 0);
  const std::string bars = run("python3 " + example("show_tune.py") + " on.mid 3").output;
  EXPECT_NE(bars.find("E4:4"), std::string::npos) << "the last note of the start\n" << bars;
  EXPECT_NE(bars.find("F4:4  F#4:4  G4:4"), std::string::npos) << bars;
}

TEST_F(MusicTest, ReportsWhatIsLostOfAFile) {
  const std::string open = bytes({0, 0x90, 0x40, 0x50});
  const std::string whole = midiFile({meter44, scale(8) + open, scale(1)});
  writeFile("lost.mid", whole + "12345");
  const Json lost = inspect("lost.mid")[0];
  EXPECT_EQ(lost["bytes_unread"], 5);
  EXPECT_EQ(lost["file_tracks"][1]["notes"], 8);
  EXPECT_EQ(lost["file_tracks"][1]["note_ons_without_end"], 1);
  const auto single =
      std::find_if(lost["tracks"].begin(), lost["tracks"].end(), [](const Json& line) { return line["track"] == 2; });
  ASSERT_NE(single, lost["tracks"].end());
  EXPECT_EQ((*single)["notes_learned"], 0);
  EXPECT_NE((*single)["verdict"], "learned");
  for (const char* loss : {"left out 1 track: ", "left out 1 note without an end"}) {
    expectMessage("learn lost.mid -o model --reading classic", 0, loss);
  }
  EXPECT_EQ(zmatrix("learn lost.mid -q -o model").diagnostics, "");
}

TEST_F(MusicTest, EndsWithOneCodePerKindOfFault) {
  const std::string whole = midiFile({meter44, scale(16)});
  writeFile("whole.mid", whole);
  writeFile("cut.mid", whole.substr(0, whole.size() - 9));
  writeFile("no-meter.mid", midiFile({"", scale(16)}));
  writeFile("folder/broken.mid", "RIFF and so on");
  writeFile("folder/A.MID", midiFile({"", scale(8)}));
  writeFile("text.txt", "It is a text.");
  ASSERT_EQ(zmatrix("learn whole.mid -o model").exitCode, 0);
  expectCodes("faults_of_music.txt");
  EXPECT_EQ(filesInFolder(), (Names{"c.mid", "cut.mid", "folder", "model", "no-meter.mid", "text.txt", "whole.mid"}));
}

}  // namespace
