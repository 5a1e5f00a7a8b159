#include "music/score/ZQMidiScoreTrack.h"

#include <algorithm>

namespace zmatrix {

namespace {

constexpr unsigned char noteOff = 0x8, noteOn = 0x9, programChange = 0xc, channelPressure = 0xd;
constexpr unsigned char systemExclusive = 0xf0, systemEscape = 0xf7, meta = 0xff;
constexpr unsigned char metaTrackName = 0x03, metaInstrumentName = 0x04, metaChannelPrefix = 0x20, metaEndOfTrack = 0x2f,
                        metaTempo = 0x51, metaMeter = 0x58, metaKey = 0x59;
constexpr unsigned char largestDataByte = 0x7f;
constexpr int percussionChannel = 9;
constexpr int largestPowerOfMeter = 30;
constexpr int mostSharps = 7;
constexpr size_t longestName = 1024;
constexpr double microsecondsPerMinute = 60e6;

/// The number of data bytes of a system event without a length, 0xf1 to 0xf3; 0 for the others.
size_t dataBytesOf(unsigned char systemStatus) {
  if (systemStatus == 0xf2) return 2;
  return systemStatus == 0xf1 || systemStatus == 0xf3 ? 1 : 0;
}

/// The smallest number of data bytes with which a meta event is usable; it may have more.
size_t bytesNeededBy(unsigned char metaType) {
  switch (metaType) {
    case metaChannelPrefix:
      return 1;
    case metaTempo:
      return 3;
    case metaMeter:
      return 4;
    case metaKey:
      return 2;
    default:
      return 0;
  }
}

/// Sorts by onset, and drops entries that repeat the one before.
template <class Entry, class Equal>
void arrange(std::vector<Entry>& entries, Equal areEqual) {
  std::stable_sort(entries.begin(), entries.end(), [](const Entry& one, const Entry& other) { return one.onset < other.onset; });
  const auto isRepeated = [&](const Entry& one, const Entry& other) { return one.onset == other.onset && areEqual(one, other); };
  entries.erase(std::unique(entries.begin(), entries.end(), isRepeated), entries.end());
}

}  // namespace

void MidiScoreSignatures::moveTo(ScoreBuilder& builder, const MidiScoreTime& time) {
  arrange(meters, [](const Meter& one, const Meter& other) {
    return one.numerator == other.numerator && one.denominator == other.denominator;
  });
  arrange(keys, [](const Key& one, const Key& other) { return one.fifths == other.fifths && one.isMinor == other.isMinor; });
  arrange(tempi, [](const Tempo& one, const Tempo& other) { return one.microsecondsPerQuarter == other.microsecondsPerQuarter; });
  for (const Meter& meter : meters) {
    builder.addMeter({meter.onset, time.denominator}, meter.place, -1, meter.numerator, meter.denominator);
  }
  for (const Key& key : keys) builder.addKey({key.onset, time.denominator}, -1, key.fifths, key.isMinor != 0);
  for (const Tempo& tempo : tempi) {
    builder.addTempo({tempo.onset, time.denominator}, microsecondsPerMinute / tempo.microsecondsPerQuarter);
  }
}

MidiScoreTrackReader::MidiScoreTrackReader(MidiScoreReading& reading, int track, long long offset, bool sharesPrograms)
    : reading_(reading), track_(track), offset_(offset), sharesPrograms_(sharesPrograms), tick_(offset) {
}

void MidiScoreTrackReader::addFinding(zq_ScoreFindingKind kind, long long place) {
  reading_.builder.addFinding(kind, place, track_);
}

void MidiScoreTrackReader::read(const unsigned char* begin, const unsigned char* end) {
  event_ = position_ = begin;
  end_ = end;
  while (state_ == State::reading && position_ < end_) {
    event_ = position_;
    readDelta();
    if (state_ == State::reading) readEvent();
  }
  if (!hasEndOfTrack() && state_ != State::outOfRange) addFinding(zq_ScoreTrackWithoutEnd, reading_.placeOf(end_));
  endHeldNotes();
  nameParts();
}

void MidiScoreTrackReader::cut() {
  addFinding(zq_ScoreChunkCut, reading_.placeOf(event_));
  state_ = State::cut;
}

/// Reads a variable-length quantity of any length, limited to a value that is too large for any use. False if the data end within
/// it.
inline bool MidiScoreTrackReader::readQuantity(unsigned long long& value) {
  constexpr unsigned long long largeEnough = 1ULL << 56;
  for (value = 0; position_ < end_;) {
    const unsigned char byte = *position_++;
    if (value < largeEnough) value = value << 7 | (byte & largestDataByte);
    if (byte <= largestDataByte) return true;
  }
  cut();
  return false;
}

inline void MidiScoreTrackReader::readDelta() {
  unsigned long long delta = 0;
  if (!readQuantity(delta)) return;
  if (delta > static_cast<unsigned long long>(reading_.time.latestTick - tick_)) {
    addFinding(zq_ScoreTimeOutOfRange, reading_.placeOf(event_));
    state_ = State::outOfRange;
    return;
  }
  tick_ += static_cast<long long>(delta);
}

inline void MidiScoreTrackReader::readEvent() {
  if (position_ == end_) return cut();
  if (*position_ <= largestDataByte && status_ == 0) passOverData();
  if (state_ != State::reading) return;
  event_ = position_;
  if (*position_ >= systemExclusive) return readSystemEvent(*position_++);
  if (*position_ > largestDataByte) status_ = *position_++;
  readChannelEvent();
}

/// Data bytes without a status can't be interpreted: they are skipped up to the next status byte, whose event has no delta.
void MidiScoreTrackReader::passOverData() {
  addFinding(zq_ScoreDataWithoutStatus, reading_.placeOf(position_));
  position_ = std::find_if(position_, end_, [](unsigned char byte) { return byte > largestDataByte; });
  if (position_ == end_) cut();
}

inline void MidiScoreTrackReader::readChannelEvent() {
  const int kind = status_ >> 4;
  const bool hasOneByte = kind == programChange || kind == channelPressure;
  const std::ptrdiff_t size = hasOneByte ? 1 : 2;
  if (end_ - position_ < size) return cut();
  const unsigned char first = position_[0], second = hasOneByte ? 0 : position_[1];
  position_ += size;
  namedChannel_ = -1;
  const bool isNote = kind == noteOn || kind == noteOff;
  if ((first | second) > largestDataByte) {
    addFinding(zq_ScoreBadEvent, reading_.placeOf(event_));
    if (!isNote || first > largestDataByte) return;
  }
  if (isNote) {
    readNote(first, std::min(second, largestDataByte), reading_.placeOf(event_));
  } else if (kind == programChange) {
    changeProgram(first);
  }
}

inline void MidiScoreTrackReader::readNote(unsigned char key, unsigned char velocity, long long place) {
  if (status_ >> 4 == noteOn && velocity > 0) {
    beginNote(key, velocity, place);
  } else {
    endNote(key, place);
  }
}

inline void MidiScoreTrackReader::beginNote(unsigned char key, unsigned char velocity, long long place) {
  const int number = status_ & 0xf;
  Channel& channel = channels_[static_cast<size_t>(number)];
  if (channel.part < 0) {
    channel.part = reading_.builder.addPart(track_, number);
    reading_.parts.push_back({0, 0, track_, number, ""});
  }
  if (number == percussionChannel) channel.sound = midiScoreSound(number, channel.program);
  zq_ScoreNote note{};
  note.onset = onset();
  note.onsetDenominator = note.durationDenominator = reading_.time.denominator;
  note.duration = MidiHeldNotes::none;
  note.place = place;
  note.part = channel.part;
  note.pitch = key;
  note.velocity = velocity;
  note.program = channel.program;
  note.sound = channel.sound;
  note.flags = number == percussionChannel ? zq_ScorePercussion : 0;
  const long long index = reading_.builder.addNote(note);
  reading_.held.hold(reading_.builder, static_cast<size_t>(number << 7 | key), index);
}

inline void MidiScoreTrackReader::endNote(unsigned char key, long long place) {
  zq_ScoreNote* const note = reading_.held.release(reading_.builder, static_cast<size_t>((status_ & 0xf) << 7 | key));
  if (note == nullptr) return addFinding(zq_ScoreEndWithoutNote, place);
  note->duration = onset() - note->onset;
}

void MidiScoreTrackReader::changeProgram(unsigned char program) {
  const int number = status_ & 0xf;
  channels_[static_cast<size_t>(number)].program = program;
  channels_[static_cast<size_t>(number)].sound = midiScoreSound(number, program);
  if (sharesPrograms_) reading_.programs.add(number, {onset(), reading_.builder.numberOfNotes(), track_, program});
}

void MidiScoreTrackReader::readSystemEvent(unsigned char status) {
  if (status == meta) return readMetaEvent();
  if (status == systemExclusive || status == systemEscape) {
    size_t length = 0;
    if (readLength(length)) position_ += length;
    return;
  }
  addFinding(zq_ScoreBadEvent, reading_.placeOf(event_));
  const size_t size = dataBytesOf(status);
  if (static_cast<size_t>(end_ - position_) < size) return cut();
  position_ += size;
}

/// Reads the length of an event's data; false if the data exceed the chunk.
bool MidiScoreTrackReader::readLength(size_t& length) {
  unsigned long long value = 0;
  if (!readQuantity(value)) return false;
  length = static_cast<size_t>(value);
  if (value <= static_cast<unsigned long long>(end_ - position_)) return true;
  cut();
  return false;
}

void MidiScoreTrackReader::readMetaEvent() {
  if (position_ == end_) return cut();
  const unsigned char type = *position_++;
  size_t length = 0;
  if (!readLength(length)) return;
  const unsigned char* const data = position_;
  position_ += length;
  if (length < bytesNeededBy(type) || (type == metaEndOfTrack && length > 0)) {
    addFinding(zq_ScoreBadEvent, reading_.placeOf(event_));
    if (type != metaEndOfTrack) return;
  }
  takeMetaEvent(type, data, length);
}

void MidiScoreTrackReader::takeMetaEvent(unsigned char type, const unsigned char* data, size_t length) {
  switch (type) {
    case metaTrackName:
    case metaInstrumentName:
      return takeName(type, {reinterpret_cast<const char*>(data), std::min(length, longestName)});
    case metaChannelPrefix:
      namedChannel_ = data[0] < channels_.size() ? data[0] : -1;
      return;
    case metaEndOfTrack:
      state_ = State::ended;
      return;
    case metaTempo:
      return takeTempo(data);
    case metaMeter:
      return takeMeter(data);
    case metaKey:
      return takeKey(data);
    default:
      return;
  }
}

void MidiScoreTrackReader::takeTempo(const unsigned char* data) {
  const int microseconds = data[0] << 16 | data[1] << 8 | data[2];
  if (microseconds == 0) return addFinding(zq_ScoreBadTempo, reading_.placeOf(event_));
  if (reading_.time.isInSeconds) return;
  reading_.signatures.tempi.push_back({onset(), microseconds});
  hasTempoAtStart_ = hasTempoAtStart_ || tick_ == offset_;
}

void MidiScoreTrackReader::takeMeter(const unsigned char* data) {
  if (data[0] == 0 || data[1] > largestPowerOfMeter) return addFinding(zq_ScoreBadMeter, reading_.placeOf(event_));
  reading_.signatures.meters.push_back({onset(), reading_.placeOf(event_), data[0], 1 << data[1]});
  hasMeterAtStart_ = hasMeterAtStart_ || tick_ == offset_;
}

void MidiScoreTrackReader::takeKey(const unsigned char* data) {
  const int fifths = data[0] < 128 ? data[0] : data[0] - 256;
  if (fifths < -mostSharps || fifths > mostSharps || data[1] > 1) return addFinding(zq_ScoreBadEvent, reading_.placeOf(event_));
  reading_.signatures.keys.push_back({onset(), fifths, data[1]});
}

/// The first name is used: some files have other texts in further name events.
void MidiScoreTrackReader::takeName(unsigned char type, std::string_view text) {
  std::string& name = namedChannel_ >= 0      ? channels_[static_cast<size_t>(namedChannel_)].name
                      : type == metaTrackName ? trackName_
                                              : instrumentName_;
  if (name.empty()) name = text;
}

void MidiScoreTrackReader::endHeldNotes() {
  for (size_t key = 0; key < MidiHeldNotes::numberOfKeys && reading_.held.count() > 0; ++key) {
    while (zq_ScoreNote* const note = reading_.held.release(reading_.builder, key)) {
      note->duration = onset() - note->onset;
      note->flags |= zq_ScoreUnended;
      addFinding(zq_ScoreNoteWithoutEnd, note->place);
    }
  }
}

/// The name of a part: that of its channel, else that of the track, else the instrument name of the track.
void MidiScoreTrackReader::nameParts() {
  const std::string& nameOfTrack = trackName_.empty() ? instrumentName_ : trackName_;
  for (const Channel& channel : channels_) {
    const std::string& name = channel.name.empty() ? nameOfTrack : channel.name;
    if (channel.part >= 0 && !name.empty()) reading_.builder.setNameOfPart(channel.part, name);
  }
}

}  // namespace zmatrix
