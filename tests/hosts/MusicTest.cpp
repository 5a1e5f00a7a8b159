// Music from outside: MIDI and kern files are learned, continued, inspected and converted, and what is lost is told.
#include <algorithm>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "hosts/RunProgram.h"

namespace {

using Json = nlohmann::json;
using Names = std::vector<std::string>;

const std::string tunes = "'" ZMATRIX_EXAMPLES "/tide.mid' '" ZMATRIX_EXAMPLES "/quay.mid' '" ZMATRIX_EXAMPLES "/gulls.mid' ";

std::string bigEndian(std::size_t value, int bytes) {
  std::string result;
  for (int at = bytes - 1; at >= 0; --at) result += static_cast<char>(value >> (8 * at));
  return result;
}

std::string track(const std::string& events) {
  const std::string data = events + std::string("\x00\xFF\x2F\x00", 4);
  return "MTrk" + bigEndian(data.size(), 4) + data;
}

std::string midiFile(const std::vector<std::string>& tracks, std::size_t division = 96) {
  std::string file = "MThd" + bigEndian(6, 4) + bigEndian(1, 2) + bigEndian(tracks.size(), 2) + bigEndian(division, 2);
  for (const std::string& events : tracks) file += track(events);
  return file;
}

const std::string meter44("\x00\xFF\x58\x04\x04\x02\x18\x08", 8);

// Quarters one after the other, from pitch 60 up and again.
std::string scale(int notes) {
  std::string events;
  for (int at = 0; at < notes; ++at) {
    const char pitch = static_cast<char>(60 + at % 8);
    events += std::string("\x00\x90", 2) + pitch + '\x50' + std::string("\x60\x80", 2) + pitch + '\x40';
  }
  return events;
}

class MusicTest : public ProgramTest {
 protected:
  Json inspect(const std::string& files, int exitCode = 0) const {
    const RunResult result = zmatrix("inspect --json " + files);
    EXPECT_EQ(result.exitCode, exitCode) << result.talk;
    return Json::parse(result.output, nullptr, false);
  }

  // Notes of a file, each of which has to have an end.
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

TEST_F(MusicTest, ListsTheSubMatricesAndContinuesTheOneAskedFor) {
  ASSERT_EQ(zmatrix("learn " + tunes + "-o model").exitCode, 0);
  const Json info = Json::parse(zmatrix("info model --json").output);
  EXPECT_EQ(info["subject"], "music");
  EXPECT_EQ(info["coding"], "triple");
  const Json& lines = info["tracks"];
  ASSERT_FALSE(lines.empty());
  std::size_t mostNotes = 0;
  for (const Json& line : lines) {
    const std::string id = line["id"].dump();
    const RunResult result = zmatrix("generate model --matrix " + id + " --count 40 --out part.mid");
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_NE(result.talk.find("continuing ID " + id + ": " + line["meter"].get<std::string>()), std::string::npos)
        << result.talk;
    EXPECT_EQ(inspect("part.mid")[0]["meter"], line["meter"]);
    mostNotes = std::max(mostNotes, line["notes"].get<std::size_t>());
  }
  const RunResult unasked = zmatrix("generate model --count 1");
  EXPECT_NE(unasked.talk.find(", " + std::to_string(mostNotes) + " notes"), std::string::npos) << unasked.talk;
}

TEST_F(MusicTest, LearnsOfTracksWhatTheOptionsSay) {
  const auto soundsOf = [this](const std::string& options) {
    EXPECT_EQ(zmatrix("learn '" ZMATRIX_EXAMPLES "/quay.mid' -o model " + options).exitCode, 0);
    std::vector<std::string> sounds;
    const Json info = Json::parse(zmatrix("info model --json").output);
    for (const Json& line : info["tracks"]) sounds.push_back(line["sound"]);
    std::sort(sounds.begin(), sounds.end());
    return sounds;
  };
  EXPECT_EQ(soundsOf("--tracks single"), (Names{"bass", "drums", "organ", "synth lead"}));
  EXPECT_EQ(soundsOf("--tracks merged"), Names{"any"});
  EXPECT_EQ(soundsOf("--tracks both"), (Names{"any", "bass", "drums", "organ", "synth lead"}));
  EXPECT_EQ(soundsOf("--tracks single --skip-channel 10 --skip-channel 3"), (Names{"organ", "synth lead"}));
  for (const std::string coding : {"pitch-time", "pitch-bartime", "triple", "quadruple"}) {
    const std::string learn = "continue '" ZMATRIX_EXAMPLES "/quay.mid' --count 80 --out " + coding + ".mid --coding " + coding;
    EXPECT_EQ(zmatrix(learn).exitCode, 0) << coding;
    EXPECT_GT(notesIn(coding + ".mid"), 40) << coding;
  }
}

TEST_F(MusicTest, GoesOnFromAStart) {
  writeFile("scale.mid", midiFile({meter44, scale(64)}));
  writeFile("start.mid", midiFile({meter44, scale(21)}));
  ASSERT_EQ(zmatrix("continue scale.mid --tracks single --start start.mid --count 3 --method best --out on.mid").exitCode, 0);
  const RunResult shown = run("python3 '" ZMATRIX_EXAMPLES "/show_tune.py' on.mid 3");
  const std::string bars = shown.output;
  EXPECT_NE(bars.find("E4:4"), std::string::npos) << "the start ends on it\n" << bars;
  EXPECT_NE(bars.find("F4:4  F#4:4  G4:4"), std::string::npos) << bars;
}

TEST_F(MusicTest, TellsWhatIsLostOfAFile) {
  const std::string open("\x00\x90\x40\x50", 4);
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
  const RunResult learned = zmatrix("learn lost.mid -o model --reading classic");
  EXPECT_NE(learned.talk.find("left out 1 track: "), std::string::npos) << learned.talk;
  EXPECT_NE(learned.talk.find("left out 1 note without an end"), std::string::npos) << learned.talk;
  EXPECT_EQ(zmatrix("learn lost.mid -q -o model").talk, "");
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
