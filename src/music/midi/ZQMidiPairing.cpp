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
    next_[chain.last] = index;
  }
  chain.last = index;
}

bool MidiPairing::linkEvents() {
  if (!next_.resize(count_, none) || !isDropped_.resize(count_)) return false;
  for (int i = 0; i < count_; i++) {
    const ZQMidiEvent* event = eventAt(i);
    if (event == nullptr) {
      dbPrintf(0, "createMidiObjectTrackFromMidiEventTrack; MidiEvent = NULL unexpected\n");
      continue;
    }
    found_.events++;
    if (!isNoteEvent(*event)) {
      append(others_[event->getChannel()], i);
      continue;
    }
    std::unique_ptr<NotesOfChannel>& ofChannel = notes_[event->getChannel()];
    if (ofChannel == nullptr) ofChannel.reset(new (std::nothrow) NotesOfChannel);
    if (ofChannel == nullptr) return false;
    append(endsNotes(*event) ? ofChannel->offs[event->getByte2()] : ofChannel->ons[event->getByte2()], i);
  }
  return true;
}

/// The first event of a chain behind `index`. Later searches begin further on, so that the events before it are removed from the
/// chain.
int MidiPairing::firstBehind(Chain& chain, int index) {
  while (chain.first != none && chain.first <= index) chain.first = next_[chain.first];
  return chain.first;
}

bool MidiPairing::run() {
  if (!linkEvents()) return false;
  for (int i = 0; i < count_; i++) {
    if (eventAt(i) == nullptr || isDropped_[i] != 0) continue;
    if (!take(i)) return false;
  }
  return true;
}

bool MidiPairing::take(int index) {
  const ZQMidiEvent& event = *eventAt(index);
  if (event.getEventType() == ZQMidiMetaTimeSignature) return takeTimeSignature(event);
  const int status = event.getStatus();
  if (!event.isChannelEvent() || status < ZQMidiNoteOff || filter_.dropsStatus(status)) {
    found_.ofOtherKinds++;
    return true;
  }
  if (filter_.dropsChannel(event.getChannel())) {
    found_.onFilteredChannels++;
    return true;
  }
  if (status == ZQMidiProgramChange) return takeProgramChange(event);
  if (isNoteEvent(event)) return takeNote(index);
  found_.ofOtherKinds++;
  return true;
}

/// Adds an object to the track; false if memory runs out, with the object released.
bool MidiPairing::add(ZQMidiObject* object) {
  if (object != nullptr && objects_.addMidiObject(object)) return true;
  deleteZQMidiObject(object);
  return false;
}

bool MidiPairing::takeTimeSignature(const ZQMidiEvent& event) {
  const int denominator = powerOfTwo(event.getByte2());
  if (found_.timeSignatures++ == 0) {
    firstNumerator_ = event.getByte1();
    firstDenominator_ = denominator;
  }
  ZQMidiObject* object = createZQMidiObject();
  if (object == nullptr) return false;
  object->setType(ZQMidiObjectTimeSignature);
  if (object->addDataByte(event.getByte1()) && object->addDataByte(static_cast<unsigned char>(denominator))) return add(object);
  deleteZQMidiObject(object);
  return false;
}

bool MidiPairing::takeProgramChange(const ZQMidiEvent& event) {
  found_.programChanges++;
  isUsed_[event.getChannel()] = true;
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
    (isNoteOff ? found_.noteOffsWithoutNote : found_.noteOnsWithoutEnd)++;
    dbPrintf(1, "Error: Note-Off for Note-On (%d) not found\n", event.getByte2());
    return true;
  }
  const ZQMidiEvent& end = *eventAt(endIndex);
  const int channel = event.getChannel();
  found_.notes++;
  if (isNoteOff) found_.noteOffsTakenAsNotes++;
  isUsed_[channel] = true;
  if (channel == percussionChannel) hasDrums_ = true;
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
  Chain& noteOffs = notes_[channel]->offs[event.getByte2()];
  const int noteOff = firstBehind(noteOffs, index);
  dropOthersBetween(channel, index, noteOff == none ? count_ : noteOff);
  if (noteOff != none) {
    isDropped_[noteOff] = 1;
    noteOffs.first = next_[noteOff];
    return noteOff;
  }
  const int noteOn = firstBehind(notes_[channel]->ons[event.getByte2()], index);
  if (noteOn != none) found_.notesEndedByTheNext++;
  return noteOn;
}

void MidiPairing::dropOthersBetween(int channel, int index, int end) {
  Chain& chain = others_[channel];
  for (int i = firstBehind(chain, index); i != none && i < end; i = chain.first) {
    const ZQMidiEvent& event = *eventAt(i);
    isDropped_[i] = 1;
    found_.lostInsideNotes++;
    if (event.isChannelEvent() && event.getStatus() == ZQMidiProgramChange) found_.programChangesLostInsideNotes++;
    chain.first = next_[i];
  }
}

int MidiPairing::numberOfUsedChannels() const {
  return static_cast<int>(std::count(std::begin(isUsed_), std::end(isUsed_), true));
}

}  // namespace zmatrix
