#include "music/midi/ZQMidiPairing.h"

#include <algorithm>
#include <iterator>
#include <new>

#include "frame/ZQDebugChannel.h"

namespace zmatrix {

namespace {

constexpr int percussionChannel = 9;

bool isNoteEvent(const ZQMidiEvent& event) {
  return event.isChannelEvent() && (event.getStatus() == ZQMidiNoteOn || event.getStatus() == ZQMidiNoteOff);
}

bool endsNotes(const ZQMidiEvent& event) {
  return event.getStatus() == ZQMidiNoteOff || event.getByte3() == 0;
}

}  // namespace

void MidiPairing::append(Chain& chain, int index) {
  if (chain.last == none) {
    chain.first = index;
  } else {
    next[chain.last] = index;
  }
  chain.last = index;
}

bool MidiPairing::linkEvents() {
  if (!next.resize(count, none) || !isDropped.resize(count)) return false;
  for (int i = 0; i < count; i++) {
    const ZQMidiEvent* event = eventAt(i);
    if (event == nullptr) {
      dbPrintf(0, "createMidiObjectTrackFromMidiEventTrack; MidiEvent = NULL unexpected\n");
      continue;
    }
    found.events++;
    if (!isNoteEvent(*event)) {
      append(others[event->getChannel()], i);
      continue;
    }
    std::unique_ptr<NotesOfChannel>& ofChannel = notes[event->getChannel()];
    if (ofChannel == nullptr) ofChannel.reset(new (std::nothrow) NotesOfChannel);
    if (ofChannel == nullptr) return false;
    append(endsNotes(*event) ? ofChannel->offs[event->getByte2()] : ofChannel->ons[event->getByte2()], i);
  }
  return true;
}

/// The first event of a chain behind `index`. Later searches begin further on, so that the events before it are removed from the
/// chain.
int MidiPairing::firstBehind(Chain& chain, int index) {
  while (chain.first != none && chain.first <= index) chain.first = next[chain.first];
  return chain.first;
}

bool MidiPairing::run() {
  if (!linkEvents()) return false;
  for (int i = 0; i < count; i++) {
    if (eventAt(i) == nullptr || isDropped[i] != 0) continue;
    if (!take(i)) return false;
  }
  return true;
}

bool MidiPairing::take(int index) {
  const ZQMidiEvent& event = *eventAt(index);
  if (event.getEventType() == ZQMidiMetaTimeSignature) return takeTimeSignature(event);
  const int status = event.getStatus();
  if (!event.isChannelEvent() || status < ZQMidiNoteOff || filter.dropsStatus(status)) {
    found.ofOtherKinds++;
    return true;
  }
  if (filter.dropsChannel(event.getChannel())) {
    found.onFilteredChannels++;
    return true;
  }
  if (status == ZQMidiProgramChange) return takeProgramChange(event);
  if (isNoteEvent(event)) return takeNote(index);
  found.ofOtherKinds++;
  return true;
}

/// Adds an object to the track; false if memory runs out, with the object released.
bool MidiPairing::add(ZQMidiObject* object) {
  if (object != nullptr && objects.addMidiObject(object)) return true;
  deleteZQMidiObject(object);
  return false;
}

bool MidiPairing::takeTimeSignature(const ZQMidiEvent& event) {
  const int denominator = powerOfTwo(event.getByte2());
  if (found.timeSignatures++ == 0) {
    firstNumerator = event.getByte1();
    firstDenominator = denominator;
  }
  ZQMidiObject* object = createZQMidiObject();
  if (object == nullptr) return false;
  object->setType(ZQMidiObjectTimeSignature);
  if (object->addDataByte(event.getByte1()) && object->addDataByte(static_cast<unsigned char>(denominator))) return add(object);
  deleteZQMidiObject(object);
  return false;
}

bool MidiPairing::takeProgramChange(const ZQMidiEvent& event) {
  found.programChanges++;
  isUsed[event.getChannel()] = true;
  ZQMidiObject* object = createZQMidiObject();
  if (object == nullptr) return false;
  object->initWithProgramChange(event.getTimeQuanta(), event.getByte2(), static_cast<unsigned char>(event.getChannel()));
  return add(object);
}

/// Makes a note that begins at this event. A note-off without a note-on before it is treated as a note-on.
bool MidiPairing::takeNote(int index) {
  const ZQMidiEvent& event = *eventAt(index);
  const bool isNoteOff = endsNotes(event);
  const int endIndex = findEnd(index);
  if (endIndex == none) {
    (isNoteOff ? found.noteOffsWithoutNote : found.noteOnsWithoutEnd)++;
    dbPrintf(1, "Error: Note-Off for Note-On (%d) not found\n", event.getByte2());
    return true;
  }
  const ZQMidiEvent& end = *eventAt(endIndex);
  const int channel = event.getChannel();
  found.notes++;
  if (isNoteOff) found.noteOffsTakenAsNotes++;
  isUsed[channel] = true;
  if (channel == percussionChannel) hasDrums = true;
  ZQMidiObject* note = createZQMidiObject();
  if (note == nullptr) return false;
  note->initWithNote(event.getTimeQuanta(), end.getTimeQuanta(), event.getByte2(), event.getByte3(),
                     static_cast<unsigned char>(channel));
  note->setReleaseVelocity(end.getByte3());
  return add(note);
}

/// Finds the event that ends a note: the next note-off of its number, which is then dropped, else the next note-on of its number,
/// which also begins its own note. The search for a note-off drops all other events of the channel that it passes, even if it
/// finds none.
int MidiPairing::findEnd(int index) {
  const ZQMidiEvent& event = *eventAt(index);
  const int channel = event.getChannel();
  Chain& noteOffs = notes[channel]->offs[event.getByte2()];
  const int noteOff = firstBehind(noteOffs, index);
  dropOthersBetween(channel, index, noteOff == none ? count : noteOff);
  if (noteOff != none) {
    isDropped[noteOff] = 1;
    noteOffs.first = next[noteOff];
    return noteOff;
  }
  const int noteOn = firstBehind(notes[channel]->ons[event.getByte2()], index);
  if (noteOn != none) found.notesEndedByTheNext++;
  return noteOn;
}

void MidiPairing::dropOthersBetween(int channel, int index, int end) {
  Chain& chain = others[channel];
  for (int i = firstBehind(chain, index); i != none && i < end; i = chain.first) {
    const ZQMidiEvent& event = *eventAt(i);
    isDropped[i] = 1;
    found.lostInsideNotes++;
    if (event.isChannelEvent() && event.getStatus() == ZQMidiProgramChange) found.programChangesLostInsideNotes++;
    chain.first = next[i];
  }
}

int MidiPairing::numberOfUsedChannels() const {
  return static_cast<int>(std::count(std::begin(isUsed), std::end(isUsed), true));
}

}  // namespace zmatrix
