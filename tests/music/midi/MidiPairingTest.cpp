// Files as tracks of events, and events as objects: the pairing of the library compared with the plain one, and queries of
// tracks.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <memory>
#include <random>

#include "music/midi/MidiBytes.h"
#include "music/midi/ZQMidiFile.h"
#include "music/midi/ZQMidiSounds.h"
#include "support/CapturedMessages.h"
#include "support/PlainPairing.h"
#include "support/TestFolder.h"

namespace {

using namespace zmatrix;
using zmatrix::plain::PairedObject;

constexpr int feedFilter[8] = {0, 0, 1, 1, 0, 1, 1, 1};
constexpr unsigned char noFilter[16] = {};

std::vector<PairedObject> pairedByLibrary(const ZQMidiEventTrack& track, const int* statuses, const unsigned char* channels) {
  int numberOfChannels = 0, hasPercussion = 0, nom = 0, denom = 0;
  std::unique_ptr<ZQMidiObjectTrack> objects(ZQMidiTrackList().createMIDIObjectTrackFromMidiEventTrack(
      &track, statuses, channels, &numberOfChannels, &hasPercussion, &nom, &denom));
  std::vector<PairedObject> result;
  for (const ZQMidiObject* o : *objects) {
    const bool isNote = o->isNote(), isMeter = o->getType() == 8;
    result.push_back({o->getStartQuanta(), o->getEndQuanta(), o->getType(),
                      isMeter  ? o->dataByteAt(0)
                      : isNote ? o->getNoteNumber()
                               : o->getSoundID(),
                      isNote ? o->getVelocity() : 0, isNote ? o->getReleaseVelocity() : 0, o->getChannel()});
  }
  return result;
}

/// Sorted like the library's: by start, number and sound, stable.
std::vector<PairedObject> pairedPlainly(const ZQMidiEventTrack& track, const int* statuses, const unsigned char* channels) {
  std::vector<PairedObject> objects = plain::paired(track, statuses, channels);
  for (PairedObject& o : objects) {
    double tonality = 0;
    if (o[2] == 4) o[3] = getSoundIDFromGMProgramChange(static_cast<unsigned char>(o[3]), &tonality);
    if (o[2] == 8) o[4] = 0;
  }
  std::stable_sort(objects.begin(), objects.end(), [](const PairedObject& a, const PairedObject& b) {
    const auto key = [](const PairedObject& o) { return std::vector{o[0], o[2] == 1 ? o[3] : 0, o[2] == 4 ? o[3] : 0}; };
    return key(a) < key(b);
  });
  return objects;
}

void addEvent(ZQMidiEventTrack& track, int time, int status, int number, int velocity, int type = -1) {
  ZQMidiEvent* event = createZQMidiEvent();
  event->initWith(time, static_cast<unsigned char>(status), static_cast<unsigned char>(number),
                  static_cast<unsigned char>(velocity), 8);
  if (type >= 0) event->setEventType(type);
  EXPECT_TRUE(track.addMidiEvent(event));
}

std::unique_ptr<ZQMidiTrackList> listOf(const std::string& path, MidiReadFindings* findings = nullptr) {
  std::unique_ptr<ZQMidiTrackList> list(createZQMidiTrackList());
  ZQMidiFile().readEventsFromFileWithPath(list.get(), path.c_str(), findings);
  return list;
}

std::unique_ptr<ZQMidiTrackList> listOfBytes(const std::string& content, int midiTrackAnalyze = 0) {
  const TestFolder folder;
  auto list = listOf(folder.put("a.mid", content));
  EXPECT_TRUE(list->updateMIDIObjectTracksFromMIDIEventTracks(feedFilter, noFilter, midiTrackAnalyze));
  return list;
}

}  // namespace

TEST(MidiPairingTest, AgreesWithThePlainPairingOnRandomTracks) {
  std::mt19937 random(17);
  const auto draw = [&](int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); };
  for (int round = 0; round < 400; round++) {
    ZQMidiEventTrack track;
    int time = 0;
    const int length = draw(120), statuses = 2 + draw(6), numbers = 1 + draw(5);
    for (int i = 0; i < length; i++) {
      time += draw(3);
      const int channel = draw(2), status = (8 + draw(statuses)) << 4 | channel, number = 60 + draw(numbers), velocity = draw(3);
      addEvent(track, time, status, number, velocity, draw(12) > 0 ? -1 : draw(2) == 0 ? 88 : 1);
    }
    unsigned char channels[16] = {static_cast<unsigned char>(draw(8) == 0)};
    const int nothing[8] = {};
    const int* filter = draw(2) == 0 ? feedFilter : nothing;
    EXPECT_EQ(pairedByLibrary(track, filter, channels), pairedPlainly(track, filter, channels)) << "round " << round;
  }
}

TEST(MidiPairingTest, AgreesWithThePlainPairingOnRealTracks) {
  const char* folder = getenv("ZMATRIX_MIDI_FILES");
  const std::filesystem::path path = folder != nullptr ? folder : ZMATRIX_EXAMPLES;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(path)) {
    if (entry.path().extension() != ".mid") continue;
    const auto list = listOf(entry.path().string());
    for (int i = 0; i < list->getNumberOfMidiEventTracks(); i++) {
      const ZQMidiEventTrack& track = *list->getMidiEventTrackAtIndex(i);
      EXPECT_EQ(pairedByLibrary(track, feedFilter, noFilter), pairedPlainly(track, feedFilter, noFilter)) << entry.path() << i;
    }
  }
}

TEST(MidiPairingTest, PairsAMillionUnendedNotesInTime) {
  ZQMidiEventTrack track;
  for (int i = 0; i < 1000000; i++) {
    addEvent(track, i, 0x90, i % 100, 0x40);
  }
  EXPECT_EQ(pairedByLibrary(track, feedFilter, noFilter).size(), 999900u);
}

TEST(MidiFileTest, AssignsEventsToTracks) {
  // The notes of the file's track 0 are at index 1, those of the next track at 2. Velocity 0 is a note-off.
  const std::string notes = bytes({0, 0x90, 60, 100, 96, 0x90, 60, 0});
  auto list = listOfBytes(midiHead(1, 2, 96) + midiTrack(meter(6, 3) + notes) + midiTrack(notes));
  ASSERT_EQ(list->getNumberOfMidiEventTracks(), 3);
  EXPECT_EQ(list->getMidiEventTrackAtIndex(0)->getCount(), 2);  // the meter and the end of the first track
  const ZQMidiEvent* noteOff = list->getMidiEventTrackAtIndex(2)->getMidiEventAtIndex(1);
  EXPECT_EQ(noteOff->getTimeQuanta(), 3072);
  EXPECT_EQ(noteOff->getByte1(), 0x80);
  EXPECT_EQ(noteOff->getByte3(), 127);
  int nom = 0, denom = 0;
  EXPECT_EQ(list->getMidiTimeSignatureFromTrackList(&nom, &denom), 1);
  EXPECT_EQ(nom * 100 + denom, 608);

  // A text can name a meter. Ignored events don't lengthen a track.
  const std::string text = "!!!AMT: simple triple";
  list = listOfBytes(midiHead(1, 3, 96) + midiTrack(bytes({0, 0xff, 1, static_cast<int>(text.size())}) + text) + midiTrack("") +
                     midiTrack(bytes({0, 0xf0, 1, 0xf7})));
  ASSERT_EQ(list->getNumberOfMidiEventTracks(), 1);
  EXPECT_EQ(list->getMidiTimeSignatureFromTrackList(&nom, &denom), 1);
  EXPECT_EQ(nom * 100 + denom, 304);
}

TEST(MidiTrackListTest, MergesTracksAsSet) {
  const std::string program = bytes({0, 0xc0, 40}), note = bytes({0, 0x90, 60, 100, 96, 0x80, 60, 0});
  const std::string drum = bytes({0, 0x99, 36, 100, 96, 0x89, 36, 0});
  const std::string file = midiHead(1, 3, 96) + midiTrack(meter(4, 2)) + midiTrack(program + note) + midiTrack(drum + note);
  auto list = listOfBytes(file, 2);
  ASSERT_EQ(list->getNumberOfMidiObjectTracks(), 4);
  EXPECT_EQ(list->getMidiObjectTrackAtIndex(3)->getCount(), 4);
  // The third track's note on channel 0 has the program that the second track sets at that time.
  int sounds = 0, hasPercussion = 0, chordSize = 0;
  EXPECT_EQ(list->getMidiObjectTrackAtIndex(2)->getMidiSoundIDFromMidiObjectTrack(&sounds, &hasPercussion), 6);
  EXPECT_EQ(sounds * 10 + hasPercussion, 21);
  // Notes at time 0 count into a chord.
  EXPECT_EQ(list->getMidiObjectTrackAtIndex(1)->getMidiSubTypeFromMidiObjectTrack(&chordSize, 16, &hasPercussion), 0);
  EXPECT_TRUE(list->updateMIDIObjectTracksFromMIDIEventTracks(feedFilter, noFilter, 1));
  ASSERT_EQ(list->getNumberOfMidiObjectTracks(), 2);
  EXPECT_EQ(list->getMidiObjectTrackAtIndex(1)->getCount(), 4);
  EXPECT_EQ(list->getMidiObjectTrackAtIndex(1)->getMidiSubTypeFromMidiObjectTrack(&chordSize, 16, &hasPercussion), 0);
  EXPECT_EQ(chordSize, 3);
  // 4/4 in an object reads as 4/16.
  int nom = 0, denom = 0;
  EXPECT_EQ(list->getMidiObjectTrackAtIndex(0)->getMidiTimeSignatureFromMidiObjectTrack(&nom, &denom), 1);
  EXPECT_EQ(nom * 100 + denom, 416);
  list->deleteAllMidiEventTracks();
  EXPECT_EQ(list->getNumberOfMidiEventTracks(), 0);
}

TEST(MidiTracksTest, DeleteAndSort) {
  ZQMidiObjectTrack objects;
  ZQMidiObject* kept[3];
  for (int i = 0; i < 3; i++) EXPECT_TRUE(objects.addMidiObject(kept[i] = createZQMidiObject()));
  objects.deleteMidiObjectAtIndex(-1);
  EXPECT_EQ(objects.getCount(), 2);
  EXPECT_EQ(objects.getMidiObjectAtIndex(0), kept[1]);
  deleteZQMidiObject(kept[0]);
  std::mt19937 random(5);
  ZQMidiEventTrack events;
  for (int i = 0; i < 3000; i++) {
    const int time = static_cast<int>(random());
    addEvent(events, time, static_cast<int>(random() % 256), 0, 0);
  }
  events.deleteMidiEventAtIndex(-1);
  events.sortByFunction(ZQCompareMidiEventsAscending);
  ASSERT_EQ(events.getCount(), 3000);
  EXPECT_TRUE(std::is_sorted(events.begin(), events.end(),
                             [](ZQMidiEvent* a, ZQMidiEvent* b) { return ZQCompareMidiEventsAscending(&a, &b) < 0; }));
}
