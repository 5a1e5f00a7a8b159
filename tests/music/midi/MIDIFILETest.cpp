// The MIDI codec: bytes to events and back, also of unusual and damaged files.
#include "music/midi/MIDIFILE.h"

#include <gtest/gtest.h>

#include "music/midi/MidiBytes.h"
#include "support/KeptText.h"

namespace {

using namespace zmatrix;

struct ReadFile {
  int preamble = -1, format = -1, tracks = -1;
  std::vector<std::string> events;  // time, "m" for a meta event, bytes
  double tempo = 0;
};

ReadFile read(const std::string& content) {
  ReadFile result;
  FILE* file = fmemopen(const_cast<char*>(content.data()), content.size(), "rb");
  _MIDIFILEReadStruct event;
  _MIDIFILEInStruct* in = MIDIFILEBeginReading(file, &event);
  result.preamble = MIDIFILEReadPreamble(in, &result.format, &result.tracks);
  while (result.preamble == 1 && MIDIFILEReadEvent(in) == 1) {
    std::string text = std::to_string(event.time) + (event.metaFlag == 1 ? "m" : ":");
    for (int i = 0; i < event.byteCount; i++) text += " " + std::to_string(event.buffer[i]);
    result.events.push_back(text);
  }
  result.tempo = in->tempo;
  EXPECT_EQ(MIDIFILEEndReading(in), 0);
  fclose(file);
  return result;
}

using Events = std::vector<std::string>;

}  // namespace

TEST(MIDIFILETest, ReadsThePreamble) {
  EXPECT_EQ(read(midiHead(1, 3, 96)).tracks, 2);
  EXPECT_EQ(read(midiHead(0, 3, 96)).tracks, 1);
  const std::string head = midiHead(1, 1, 96);
  EXPECT_EQ(read("MThd" + bigEndian(5, 4) + head.substr(8)).preamble, 0);
  EXPECT_EQ(read("MThd" + bigEndian(8, 4) + head.substr(8) + "xx" + midiTrack(bytes({0, 0x90, 60, 1}))).events.size(), 1u);
  EXPECT_EQ(read("MThd" + bigEndian(0xffffffff, 4) + head.substr(8)).preamble, 0);
  EXPECT_EQ(read(midiHead(3, 1, 96)).preamble, 0);
  EXPECT_EQ(read(midiHead(1, 1, 0)).preamble, 0);
  EXPECT_EQ(read(midiHead(1, 1, 0xe700)).preamble, 0);
  // 25 frames of 40 ticks are read as 1000 ticks per quarter note.
  EXPECT_EQ(read(midiHead(1, 1, 0xe728) + midiTrack(bytes({2, 0x90, 60, 1}))).events, Events{"120: 144 60 1"});
}

TEST(MIDIFILETest, ReadsEvents) {
  expectKeptCases("midi_events.txt", [](const std::string& digits) {
    std::string events, output;
    for (size_t i = 0; i + 1 < digits.size(); i += 2) events += static_cast<char>(std::stoi(digits.substr(i, 2), nullptr, 16));
    const ReadFile result = read(midiHead(1, 1, 1000) + midiTrack(events));
    for (const std::string& event : result.events) output += event + "\n";
    return output + (result.tempo != 0 ? "tempo " + std::to_string(result.tempo) : "");
  });
  EXPECT_EQ(read(midiHead(1, 2, 1000) + midiTrack(bytes({0, 0x90, 60, 1})) + midiTrack(bytes({0, 64, 2}))).events,
            (Events{"0: 144 60 1", "0m 47 0 1", "0: 144 64 2"}));
  const std::string cut = midiHead(1, 1, 1000) + "MTrk" + bigEndian(9, 4);
  EXPECT_EQ(read(cut + bytes({1, 0xf0, 9, 7, 8})).events, Events{"60: 240 7 8"});
  EXPECT_EQ(read(cut + bytes({1, 0xf0, 0x8f, 0xff, 0xff, 0xff, 0x7f, 5})).events, Events{"60: 240 5"});
}

TEST(MIDIFILETest, StopsAtTheEndOfACutFile) {
  const std::string events = bytes({0x81, 0, 0x90, 60, 100, 0, 0xff, 1, 3, 'a', 'b', 'c', 0, 0xf0, 3, 1, 2, 0xf7});
  const std::string whole = midiHead(1, 2, 96) + midiTrack(events) + midiTrack(events);
  const size_t all = read(whole).events.size();
  EXPECT_EQ(all, 7u);
  for (size_t length = 0; length < whole.size(); length++) EXPECT_LE(read(whole.substr(0, length)).events.size(), all) << length;
}

TEST(MIDIFILETest, WritesGoldenBytes) {
  const TestFolder folder;
  const std::string path = folder.path() + "/golden.mid";
  FILE* file = fopen(path.c_str(), "wb");
  _MIDIFILEOutStruct* out = MIDIFILEBeginWriting(file, 1, 96, "one");
  const unsigned char note[] = {0x90, 60, 100}, sysex[] = {1, 7, 0xf7}, escape[] = {0xf2, 1, 2};
  EXPECT_EQ(MIDIFILEWriteTempo(out, 0, 120.0), 1);
  EXPECT_EQ(MIDIFILEWriteTimeSig(out, 0, 6, 3, 24, 8), 1);
  EXPECT_EQ(MIDIFILEWriteKeySig(out, 0, 255, 1), 1);
  EXPECT_EQ(MIDIFILEWriteText(out, 0, 0x106, "ab"), 1);
  EXPECT_EQ(MIDIFILEWriteText(out, 5, 6, nullptr), 1);
  EXPECT_EQ(MIDIFILEWriteSMPTEoffset(out, 1, 2, 3, 4, 5), 1);
  EXPECT_EQ(MIDIFILEWriteSequenceNumber(out, 0x1234), 1);
  EXPECT_EQ(MIDIFILEWriteEvent(out, 0x4080, 3, note), 1);
  EXPECT_EQ(MIDIFILEBeginWritingTrack(out, ""), 1);
  EXPECT_EQ(MIDIFILEWriteSysExcl(out, 1, 3, sysex), 1);
  EXPECT_EQ(MIDIFILEWriteEvent(out, 1, 3, escape), 1);
  EXPECT_EQ(MIDIFILEWriteEvent(out, 0, 0, note), 0);  // the length becomes the low bits of -1
  EXPECT_EQ(MIDIFILEEndWritingTrack(out, 0x10000000), 1);
  EXPECT_EQ(MIDIFILEEndWriting(out), 1);
  fclose(file);
  const std::string first = bytes({0, 0xff, 3, 3, 'o', 'n', 'e', 0, 0xff, 81, 3, 7, 0xa1, 0x20, 0, 0xff, 88, 4, 6, 3, 24, 8}) +
                            bytes({0, 0xff, 89, 2, 255, 1, 0, 0xff, 6, 2, 'a', 'b', 0, 0xff, 84, 5, 1, 2, 3, 5, 4}) +
                            bytes({0, 0xff, 0, 2, 0x12, 0x34, 0x81, 0x81, 0, 0x90, 60, 100}) +
                            bytes({0, 0xff, 47, 0});  // at time 0: the low seven bits of the negative distance are 0
  const std::string second = bytes({1, 0xf0, 2, 7, 0xf7, 0, 0xf7, 3, 0xf2, 1, 2, 0x7f, 0x81, 0x80, 0x80, 0x80, 0, 0xff, 47, 0});
  EXPECT_EQ(TestFolder::contentOf(path), midiHead(1, 2, 96) + "MTrk" + bigEndian(static_cast<unsigned>(first.size()), 4) + first +
                                             "MTrk" + bigEndian(static_cast<unsigned>(second.size()), 4) + second);
}

TEST(MIDIFILETest, ReportsAFullDisk) {
  FILE* file = fopen("/dev/full", "wb");
  if (file == nullptr) GTEST_SKIP() << "there is no /dev/full";
  setvbuf(file, nullptr, _IONBF, 0);
  EXPECT_EQ(MIDIFILEBeginWriting(file, 1, 96, nullptr), nullptr);
  fclose(file);
}
