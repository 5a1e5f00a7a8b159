#include "music/score/ZQScoreMidiWriter.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdio>
#include <new>
#include <string>
#include <tuple>
#include <vector>

#include "file/ZQSafeFile.h"
#include "music/score/ZQMidiTrackBytes.h"
#include "music/score/ZQScoreCheck.h"
#include "music/score/ZQScoreMidiTracks.h"
#include "music/score/ZQScoreTicks.h"

namespace zmatrix {

namespace {

constexpr unsigned char metaTempo = 0x51, metaMeter = 0x58, metaKey = 0x59;
constexpr int largestNumerator = 255;
constexpr int mostSharps = 7;
constexpr double microsecondsPerMinute = 60e6;
constexpr double longestQuarter = 0xffffff;
constexpr char clocksPerClick = 24, thirtySecondsPerQuarter = 8;
constexpr size_t usualBytesOfNote = 8;
constexpr size_t usualBytesOfTrack = 64;

/// The track of tempi, meters and keys.
class SignatureTrack {
 public:
  SignatureTrack(const zq_Score& score, ScoreTicks& ticks) : ticks_(ticks) {
    for (int i = 0; i < score.numberOfTempi; ++i) addTempo(score.tempi[i]);
    addThose(score.meters, score.numberOfMeters, &SignatureTrack::bytesOfMeter, metaMeter);
    addThose(score.keys, score.numberOfKeys, &SignatureTrack::bytesOfKey, metaKey);
  }

  void write(MidiTrackBytes& bytes) {
    std::stable_sort(events_.begin(), events_.end(), [](const Event& one, const Event& other) { return one.tick < other.tick; });
    bytes.beginTrack();
    for (const Event& event : events_) {
      bytes.moveTo(event.tick);
      bytes.putMetaEvent(event.type, event.data);
    }
    bytes.endTrack();
  }

  long long signaturesLeftOut() const { return signaturesLeftOut_; }
  long long tempiChanged() const { return tempiChanged_; }

 private:
  struct Event {
    long long tick;
    unsigned char type;
    std::string data;  // empty if MIDI can't represent the entry

    friend bool operator<(const Event& one, const Event& other) {
      return std::tie(one.tick, one.type, one.data) < std::tie(other.tick, other.type, other.data);
    }
  };

  void addTempo(const zq_ScoreTempo& tempo) {
    const double exact = std::round(microsecondsPerMinute / tempo.quartersPerMinute);
    const double possible = std::clamp(exact, 1.0, longestQuarter);
    if (possible != exact) ++tempiChanged_;
    const auto microseconds = static_cast<unsigned>(possible);
    const char data[] = {static_cast<char>(microseconds >> 16), static_cast<char>(microseconds >> 8),
                         static_cast<char>(microseconds)};
    events_.push_back({ticks_.tickOf(tempo.onset, tempo.onsetDenominator), metaTempo, {data, sizeof data}});
  }

  static std::string bytesOfMeter(const zq_ScoreMeter& meter) {
    const auto denominator = static_cast<unsigned>(meter.denominator);
    if (meter.numerator > largestNumerator || !std::has_single_bit(denominator)) return {};
    return {static_cast<char>(meter.numerator), static_cast<char>(std::countr_zero(denominator)), clocksPerClick,
            thirtySecondsPerQuarter};
  }

  static std::string bytesOfKey(const zq_ScoreKey& key) {
    if (key.fifths < -mostSharps || key.fifths > mostSharps) return {};
    return {static_cast<char>(key.fifths), static_cast<char>(key.isMinor != 0)};
  }

  /// A meter or key applies to a whole MIDI file: those of the whole score are used, or, without any, those of the first part
  /// that has some. Different ones of other parts are left out.
  template <class Signature>
  void addThose(const Signature* signatures, int number, std::string (*bytesOf)(const Signature&), unsigned char type) {
    if (number == 0) return;
    const auto isOfAll = [](const Signature& signature) { return signature.part == -1; };
    const int part = std::any_of(signatures, signatures + number, isOfAll) ? -1 : signatures[0].part;
    std::vector<Event> taken, others;
    for (int i = 0; i < number; ++i) {
      const bool isTaken = signatures[i].part == part;
      ScoreTicks uncounted = ticks_;
      const long long tick = (isTaken ? ticks_ : uncounted).tickOf(signatures[i].onset, signatures[i].onsetDenominator);
      (isTaken ? taken : others).push_back({tick, type, bytesOf(signatures[i])});
    }
    for (const Event& event : taken) {
      if (!event.data.empty()) events_.push_back(event);
    }
    std::sort(taken.begin(), taken.end());
    const auto isLeftOut = [&](const Event& event) {
      return event.data.empty() || !std::binary_search(taken.begin(), taken.end(), event);
    };
    signaturesLeftOut_ +=
        std::count_if(taken.begin(), taken.end(), isLeftOut) + std::count_if(others.begin(), others.end(), isLeftOut);
  }

  ScoreTicks& ticks_;
  std::vector<Event> events_;
  long long signaturesLeftOut_ = 0;
  long long tempiChanged_ = 0;
};

MidiTrackBytes bytesOf(const zq_Score& score, zq_ScoreWriting& writing) {
  ScoreTicks ticks(score);
  MidiTrackBytes bytes(static_cast<size_t>(score.numberOfNotes) * usualBytesOfNote +
                       static_cast<size_t>(score.numberOfParts) * usualBytesOfTrack);
  SignatureTrack signatures(score, ticks);
  signatures.write(bytes);
  ScoreMidiTracks tracks(score, ticks, bytes);
  tracks.write();
  bytes.finish(ticks.division());
  writing.state = bytes.isPossible() ? zq_ScoreWritten : zq_ScoreTooLarge;
  writing.division = ticks.division();
  writing.tracks = bytes.numberOfTracks();
  writing.extraTracks = tracks.extraTracks();
  writing.notes = score.numberOfNotes;
  writing.timesMoved = ticks.timesMoved();
  writing.largestMove = ticks.largestMove();
  writing.signaturesLeftOut = signatures.signaturesLeftOut();
  writing.tempiChanged = signatures.tempiChanged();
  return bytes;
}

bool store(const MidiTrackBytes& bytes, const char* path) {
  ZQSafeFile file;
  return path != nullptr && file.open(path) && fwrite(bytes.bytes(), 1, bytes.size(), file.getStream()) == bytes.size() &&
         file.commit();
}

/// Makes the file of a score and passes its bytes to `take`; returns the result.
template <class Taker>
int writeScore(const zq_Score* score, zq_ScoreWriting* writing, Taker take) {
  zq_ScoreWriting result{};
  try {
    if (isScoreValid(score, &result.refusedNote)) {
      MidiTrackBytes bytes = bytesOf(*score, result);
      if (result.state == zq_ScoreWritten && !take(bytes)) result.state = zq_ScoreNotStored;
    }
  } catch (const std::bad_alloc&) {
    result.state = zq_ScoreNoMemoryToWrite;
  }
  if (writing != nullptr) *writing = result;
  return result.state;
}

}  // namespace

int writeScoreToMidiFile(const zq_Score* score, const char* path, zq_ScoreWriting* writing) {
  return writeScore(score, writing, [path](const MidiTrackBytes& bytes) { return store(bytes, path); });
}

unsigned char* createMidiDataOfScore(const zq_Score* score, long long* numberOfBytes, zq_ScoreWriting* writing) {
  unsigned char* data = nullptr;
  long long size = 0;
  writeScore(score, writing, [&](MidiTrackBytes& bytes) {
    size = static_cast<long long>(bytes.size());
    data = bytes.release();
    return true;
  });
  if (numberOfBytes != nullptr) *numberOfBytes = size;
  return data;
}

}  // namespace zmatrix
