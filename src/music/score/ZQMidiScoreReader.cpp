#include "music/score/ZQMidiScoreReader.h"

#include <algorithm>
#include <cstring>
#include <memory>

#include "music/score/ZQMidiScoreTrack.h"
#include "music/score/ZQScoreFile.h"

namespace zmatrix {

namespace {

constexpr size_t sizeOfChunkHead = 8;
constexpr size_t bytesOfFileHead = 6;
constexpr size_t fewestBytesOfNote = 6;  // note-on and note-off in running status
constexpr int largestFormat = 2;
constexpr int usualTempo = 500000;

size_t bigEndian(const unsigned char* bytes, size_t count) {
  size_t value = 0;
  for (size_t i = 0; i < count; ++i) value = value << 8 | bytes[i];
  return value;
}

size_t littleEndian32(const unsigned char* bytes) {
  return static_cast<size_t>(bytes[3]) << 24 | static_cast<size_t>(bytes[2]) << 16 | static_cast<size_t>(bytes[1]) << 8 |
         bytes[0];
}

bool hasName(const unsigned char* chunk, const char* name) {
  return memcmp(chunk, name, 4) == 0;
}

/// Reads a MIDI file in memory.
class MidiScoreReader {
 public:
  MidiScoreReader(const unsigned char* bytes, size_t size) : begin_(bytes), end_(bytes + size), position_(bytes) {
    reading_.file = bytes;
  }

  zq_Score* read() {
    zq_Score& score = reading_.builder.score();
    score.state = zq_ScoreOtherFormat;
    if (!unwrap() || !readHead()) return reading_.builder.finish();
    reading_.builder.reserveNotes((end_ - position_) / static_cast<long long>(fewestBytesOfNote));
    readChunks();
    if (tracks_ != tracksAnnounced_) addFinding(zq_ScoreMissingTracks, placeOfTracks_);
    score.state = isCutShort_ || tracks_ < tracksAnnounced_ ? zq_ScoreCutShort : zq_ScoreRead;
    if (score.midiFormat != largestFormat) reading_.programs.applyTo(reading_.builder, reading_.parts);
    reading_.signatures.moveTo(reading_.builder, reading_.time);
    return reading_.builder.finish();
  }

 private:
  size_t bytesLeft() const { return static_cast<size_t>(end_ - position_); }

  void addFinding(zq_ScoreFindingKind kind, const unsigned char* place) {
    reading_.builder.addFinding(kind, reading_.placeOf(place), 0);
  }

  /// Finds the MIDI data of a RIFF file. False for a RIFF file without it.
  bool unwrap() {
    constexpr size_t sizeOfRiffHead = 12;
    if (bytesLeft() < sizeOfRiffHead || !hasName(begin_, "RIFF") || !hasName(begin_ + 8, "RMID")) return true;
    for (position_ += sizeOfRiffHead; bytesLeft() >= sizeOfChunkHead;) {
      const size_t size = littleEndian32(position_ + 4);
      const bool isData = hasName(position_, "data");
      position_ += sizeOfChunkHead;
      if (isData) {
        end_ = position_ + std::min(size, bytesLeft());
        return true;
      }
      position_ += std::min(size + size % 2, bytesLeft());
    }
    return false;
  }

  /// False if it is no MIDI file, or its division is unusable. A file that ends within its head counts as truncated.
  bool readHead() {
    zq_Score& score = reading_.builder.score();
    if (bytesLeft() < 4 || !hasName(position_, "MThd")) return false;
    if (bytesLeft() < sizeOfChunkHead + bytesOfFileHead) {
      addFinding(zq_ScoreChunkCut, position_);
      score.state = zq_ScoreCutShort;
      return false;
    }
    const unsigned char* const head = position_ + sizeOfChunkHead;
    const size_t size = bigEndian(position_ + 4, 4);
    const size_t format = bigEndian(head, 2);
    if (size < bytesOfFileHead || format > largestFormat || !setDivision(bigEndian(head + 4, 2))) return false;
    score.midiFormat = static_cast<int>(format);
    placeOfTracks_ = head + 2;
    tracksAnnounced_ = static_cast<int>(bigEndian(placeOfTracks_, 2));
    position_ = head + std::min(size, bytesLeft() - sizeOfChunkHead);
    return true;
  }

  /// The division: ticks per quarter note, or, with the highest bit set, negative frames per second and ticks per frame. 29
  /// stands for the 30000/1001 frames of colour television.
  bool setDivision(size_t division) {
    reading_.builder.score().division = static_cast<short>(division);
    MidiScoreTime& time = reading_.time;
    if (division < 0x8000) {
      time.denominator = 4 * static_cast<int>(division);
    } else {
      const int frames = 256 - static_cast<int>(division >> 8), ticks = static_cast<int>(division & 0xff);
      const bool isColourTelevision = frames == 29;
      time.isInSeconds = true;
      time.perTick = isColourTelevision ? 1001 : 1;
      time.denominator = 2 * ticks * (isColourTelevision ? 30000 : frames);
    }
    if (time.denominator == 0) return false;
    time.latestTick = ScoreTime::latest * time.denominator / time.perTick;
    if (time.isInSeconds) {
      reading_.builder.addFinding(zq_ScoreSecondsAsTime, reading_.placeOf(position_) + 12, 0);
      reading_.signatures.tempi.push_back({0, usualTempo});
    }
    return true;
  }

  void readChunks() {
    while (bytesLeft() >= sizeOfChunkHead) {
      const unsigned char* const chunk = position_;
      const size_t size = bigEndian(chunk + 4, 4);
      position_ += sizeOfChunkHead;
      const bool isLongerThanFile = size > bytesLeft();
      const unsigned char* const end = position_ + std::min(size, bytesLeft());
      if (hasName(chunk, "MTrk")) {
        readTrack(chunk, end, isLongerThanFile);
        continue;
      }
      addFinding(zq_ScoreUnknownChunk, chunk);
      if (isLongerThanFile) addFinding(zq_ScoreChunkCut, chunk);
      position_ = end;
    }
    if (position_ < end_) addFinding(zq_ScoreChunkCut, position_);
  }

  void readTrack(const unsigned char* chunk, const unsigned char* end, bool isLongerThanFile) {
    const bool isPieceOfItsOwn = reading_.builder.score().midiFormat == largestFormat;
    const size_t metersBefore = reading_.signatures.meters.size(), tempiBefore = reading_.signatures.tempi.size();
    MidiScoreTrackReader track(reading_, tracks_++, offset_, !isPieceOfItsOwn);
    track.read(position_, end);
    if (isLongerThanFile && !track.isCut()) addFinding(zq_ScoreChunkCut, chunk);
    if (isLongerThanFile && !track.hasEndOfTrack()) isCutShort_ = true;
    if (track.hasEndOfTrack() && !isLongerThanFile && track.position() < end) addFinding(zq_ScoreBadEvent, track.position());
    position_ = isLongerThanFile && track.hasEndOfTrack() ? track.position() : end;
    if (!isPieceOfItsOwn) return;
    if (!track.hasMeterAtStart()) resetMeter(metersBefore, reading_.placeOf(chunk));
    if (!track.hasTempoAtStart()) resetTempo(tempiBefore);
    offset_ = track.endTick();
  }

  /// A piece without a meter is in 4/4, whatever the meter of the piece before.
  void resetMeter(size_t index, long long place) {
    auto& meters = reading_.signatures.meters;
    if (index == 0 || (meters[index - 1].numerator == 4 && meters[index - 1].denominator == 4)) return;
    meters.insert(meters.begin() + static_cast<std::ptrdiff_t>(index), {offset_ * reading_.time.perTick, place, 4, 4});
  }

  void resetTempo(size_t index) {
    auto& tempi = reading_.signatures.tempi;
    if (index == 0 || tempi[index - 1].microsecondsPerQuarter == usualTempo) return;
    tempi.insert(tempi.begin() + static_cast<std::ptrdiff_t>(index), {offset_ * reading_.time.perTick, usualTempo});
  }

  const unsigned char* const begin_;
  const unsigned char* end_;
  const unsigned char* position_;
  MidiScoreReading reading_;
  const unsigned char* placeOfTracks_ = nullptr;
  int tracksAnnounced_ = 0;
  int tracks_ = 0;
  long long offset_ = 0;  ///< of the current piece, in ticks
  bool isCutShort_ = false;
};

}  // namespace

zq_Score* createScoreFromMidiFile(const char* path) {
  const ScoreFile file = readScoreFile(path);
  if (file.isReadable) return MidiScoreReader(file.bytes.get(), file.size).read();
  ScoreBuilder builder(zq_ScoreMidi);
  builder.score().state = zq_ScoreNotFound;
  return builder.finish();
}

zq_Score* createScoreFromMidiData(const unsigned char* bytes, long long numberOfBytes) {
  constexpr unsigned char nothing = 0;
  if (bytes == nullptr || numberOfBytes < 0) return MidiScoreReader(&nothing, 0).read();
  return MidiScoreReader(bytes, static_cast<size_t>(numberOfBytes)).read();
}

}  // namespace zmatrix
