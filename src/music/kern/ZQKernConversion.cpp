#include "music/kern/ZQKernConversion.h"

#include <cstdio>
#include <memory>

#include "file/ZQFileStream.h"
#include "frame/ZQDebugChannel.h"
#include "music/kern/ZQKernTracks.h"
#include "music/midi/ZQMidiFile.h"

namespace zmatrix {

namespace {

constexpr unsigned char velocity = 100;
constexpr unsigned char releaseVelocity = 127;
constexpr unsigned char clocksPerClick = 24;
constexpr unsigned char thirtySecondsPerQuarter = 8;
constexpr unsigned char usualByteOfTempo = 127;
constexpr int charactersOfText = 4;

unsigned char lowByte(int value) {
  return static_cast<unsigned char>(value & 0xff);
}

/// Writes the events of one kern track, in the order of its objects.
class EventWriter {
 public:
  explicit EventWriter(ZQMidiEventTrack* track) : track_(track) {}

  /// False if memory runs out.
  bool add(const ZQKernObject& object) {
    const int time = object.getTimeQuanta();
    const auto channel = object.getChannel();
    switch (object.getType()) {
      case ZQKernObjectNoteOn:
        return (object.getPhraseBegin() != 1 || addText(ZQMidiMetaMarker, time, "PH_1")) &&
               (object.getPhraseEnd() != 1 || addText(ZQMidiMetaMarker, time, "PH_0")) &&
               addEvent(ZQMidiEventTypeChannel, time, 3, lowByte(ZQMidiNoteOn + channel), object.getNoteNumber(), velocity, 0);
      case ZQKernObjectNoteOff:
        return addEvent(ZQMidiEventTypeChannel, time, 3, lowByte(ZQMidiNoteOff + channel), object.getNoteNumber(),
                        releaseVelocity, 0);
      case ZQKernObjectTimeSignature:
        return addSignature(object.getTimeSignatureNom(), object.getTimeSignatureDenom());
      case ZQKernObjectKeySignature:
        return addKey(object, time);
      case ZQKernObjectTempo:
        return addEvent(ZQMidiMetaTempo, 0, 3, usualByteOfTempo, 0, 0, 0, object.getTempo());
      case ZQKernObjectText:
      case ZQKernObjectComment:
        return addText(ZQMidiMetaText, time, object);
      case ZQKernObjectTrackName:
        return addText(ZQMidiMetaTrackName, time, object);
      default:
        return true;
    }
  }

 private:
  bool addEvent(int type, int time, int byteCount, int b1, int b2, int b3, int b4, float value = 0) {
    const unsigned char bytes[] = {lowByte(b1), lowByte(b2), lowByte(b3), lowByte(b4)};
    return addEventTo(track_, type, time, byteCount, bytes, value);
  }

  /// Signature and tempo are always written at time 0.
  bool addSignature(int numerator, int denominator) {
    const bool isUnset = numerator == 0 && denominator == 0;
    return addEvent(ZQMidiMetaTimeSignature, 0, 4, isUnset ? 4 : numerator, exponentOf(isUnset ? 4 : denominator, 31),
                    clocksPerClick, thirtySecondsPerQuarter);
  }

  bool addKey(const ZQKernObject& object, int time) {
    int second = 0;
    const int count = object.getKeySignature(&second);
    return addEvent(ZQMidiMetaKeySignature, time, 2, count, second, 0, 0);
  }

  bool addText(int type, int time, const char* text) {
    return addEvent(type, time, charactersOfText, text[0], text[1], text[2], text[3]);
  }

  bool addText(int type, int time, const ZQKernObject& object) {
    return addEvent(type, time, charactersOfText, object.textByteAt(0), object.textByteAt(1), object.textByteAt(2),
                    object.textByteAt(3));
  }

  ZQMidiEventTrack* track_;
};

/// Adds one event track for each track of the list; false if memory runs out.
bool makeEventTracks(const ZQKernTrackList& list, ZQMidiTrackList* events) {
  for (int i = 0; i < list.getNumberOfKernObjectTracks(); i++) {
    ZQMidiEventTrack* track = createZQMidiEventTrack();
    if (track == nullptr || !events->addMidiEventTrack(track)) {
      deleteZQMidiEventTrack(track);
      return false;
    }
    EventWriter writer(track);
    for (const ZQKernObject* object : *list.getKernObjectTrackAtIndex(i)) {
      if (!writer.add(*object)) return false;
    }
  }
  return true;
}

bool canBeWritten(const char* path) {
  FILE* file = path != nullptr ? fopen(path, "wb") : nullptr;
  if (file != nullptr) fclose(file);
  return file != nullptr;
}

}  // namespace

int ZQKernTrackList::writeToMidiFile(const char* path) const {
  if (!canBeWritten(path)) {
    dbPrintf(0, "ZQKernTrackList::writeToMidiFile: could not open file %s for writing\n", path != nullptr ? path : "");
    return 0;
  }
  const std::unique_ptr<ZQMidiTrackList, void (*)(ZQMidiTrackList*)> events(createZQMidiTrackList(), deleteZQMidiTrackList);
  if (events == nullptr || !makeEventTracks(*this, events.get())) return 0;
  dbPrintf(2, "ZQKern: writeToMidiFile: number of midi Objects tracks: %d:\n", getNumberOfKernObjectTracks());
  dbPrintf(2, "ZQKern: writeToMidiFile: number of midi Event tracks: %d:\n", events->getNumberOfMidiEventTracks());
  ZQMidiFile().writeEventsToFileWithPath(events.get(), path);
  return 1;
}

int convertKernFileToMidiFile(const char* kernFile, const char* midiFile) {
  if (kernFile == nullptr || midiFile == nullptr) return 0;
  if (!canBeOpened(kernFile)) {
    dbPrintf(1, "convertKernFileToMidiFile: cannot open %s...\n", kernFile);
    return 1;
  }
  if (!canBeWritten(midiFile)) {
    dbPrintf(1, "convertKernFileToMidiFile: cannot open for writing%s...\n", midiFile);
    return 1;
  }
  dbPrintf(5, "begin convertKernKERNFileToMidiFile %s...\n", kernFile);
  const char* const caller = "convertKernKERNFileToMidiFile";
  const std::unique_ptr<ZQKernTrackList, void (*)(ZQKernTrackList*)> list(readKernTrackList(kernFile, caller),
                                                                          deleteZQKernTrackList);
  if (list == nullptr || !arrangeKernTracks(list.get(), nullptr, caller)) return 1;
  fflush(stdout);
  dbPrintf(1, "writeToMidiFile %s\n", midiFile);
  list->writeToMidiFile(midiFile);
  return 1;
}

}  // namespace zmatrix
