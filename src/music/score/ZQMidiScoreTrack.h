// Reads one track of a MIDI file into a score.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <vector>

#include "music/score/ZQMidiScorePrograms.h"
#include "music/score/ZQScoreBuilder.h"

namespace zmatrix {

/// Converts the ticks of a file to fractions of a whole note: `tick * perTick / denominator`.
struct MidiScoreTime {
  long long perTick = 1;
  int denominator = 4;
  long long latestTick = 0;
  bool isInSeconds = false;
};

/// Meters, keys and tempi of all tracks, in the order of the file. Their onsets have the unit of the notes' onsets.
struct MidiScoreSignatures {
  struct Meter {
    long long onset, place;
    int numerator, denominator;
  };
  struct Key {
    long long onset;
    int fifths, isMinor;
  };
  struct Tempo {
    long long onset;
    int microsecondsPerQuarter;
  };
  std::vector<Meter> meters;
  std::vector<Key> keys;
  std::vector<Tempo> tempi;

  /// Adds them to the builder by time. Equal entries of several tracks are added once.
  void moveTo(ScoreBuilder& builder, const MidiScoreTime& time);
};

/// The sounding notes of a track: a first-in first-out queue per channel and key. The queues are linked through the duration
/// field, which is set when a note ends.
class MidiHeldNotes {
 public:
  static constexpr int numberOfKeys = 16 * 128;
  static constexpr long long none = -1;

  MidiHeldNotes() { first_.fill(none); }

  long long count() const { return count_; }
  void hold(ScoreBuilder& builder, size_t key, long long note) {
    if (first_[key] == none) {
      first_[key] = note;
    } else {
      builder.noteAt(last_[key]).duration = note;
    }
    last_[key] = note;
    ++count_;
  }
  /// Removes the note that began first from the queue and returns it; null if there is none.
  [[nodiscard]] zq_ScoreNote* release(ScoreBuilder& builder, size_t key) {
    if (first_[key] == none) return nullptr;
    zq_ScoreNote& note = builder.noteAt(first_[key]);
    first_[key] = note.duration;
    --count_;
    return &note;
  }

 private:
  std::array<long long, numberOfKeys> first_;
  std::array<long long, numberOfKeys> last_;
  long long count_ = 0;
};

/// The state that the tracks of a file share while they are read.
struct MidiScoreReading {
  const unsigned char* file = nullptr;  ///< its first byte; places are offsets from it
  ScoreBuilder builder{zq_ScoreMidi};
  MidiScoreTime time;
  MidiScoreSignatures signatures;
  MidiProgramChanges programs;
  MidiHeldNotes held;
  std::vector<zq_ScorePart> parts;  ///< by their index in the builder

  long long placeOf(const unsigned char* byte) const { return byte - file; }
};

/// Reads the events of a track chunk.
class MidiScoreTrackReader {
 public:
  /// Times begin at `offset` ticks. `sharesPrograms`: program changes apply to other tracks too.
  MidiScoreTrackReader(MidiScoreReading& reading, int track, long long offset, bool sharesPrograms);

  /// Reads the events from `begin` to the end of the track, or to `end`.
  void read(const unsigned char* begin, const unsigned char* end);

  const unsigned char* position() const { return position_; }
  /// In ticks from the start of the score.
  long long endTick() const { return tick_; }
  bool hasEndOfTrack() const { return state_ == State::ended; }
  bool isCut() const { return state_ == State::cut; }
  bool hasMeterAtStart() const { return hasMeterAtStart_; }
  bool hasTempoAtStart() const { return hasTempoAtStart_; }

 private:
  enum class State { reading, ended, cut, outOfRange };
  struct Channel {
    int part = -1;
    unsigned char program = 0;
    unsigned char sound = 0;
    std::string name;
  };

  long long onset() const { return tick_ * reading_.time.perTick; }
  void addFinding(zq_ScoreFindingKind kind, long long place);
  void cut();
  [[nodiscard]] bool readQuantity(unsigned long long& value);
  void readDelta();
  void readEvent();
  void passOverData();
  void readChannelEvent();
  void readNote(unsigned char key, unsigned char velocity, long long place);
  void beginNote(unsigned char key, unsigned char velocity, long long place);
  void endNote(unsigned char key, long long place);
  void changeProgram(unsigned char program);
  void readSystemEvent(unsigned char status);
  [[nodiscard]] bool readLength(size_t& length);
  void readMetaEvent();
  void takeMetaEvent(unsigned char type, const unsigned char* data, size_t length);
  void takeTempo(const unsigned char* data);
  void takeMeter(const unsigned char* data);
  void takeKey(const unsigned char* data);
  void takeName(unsigned char type, std::string_view text);
  void endHeldNotes();
  void nameParts();

  MidiScoreReading& reading_;
  const int track_;
  const long long offset_;
  const bool sharesPrograms_;
  const unsigned char* position_ = nullptr;
  const unsigned char* end_ = nullptr;
  const unsigned char* event_ = nullptr;  ///< the current event
  State state_ = State::reading;
  long long tick_;
  unsigned char status_ = 0;  ///< the last status of a channel event; 0 for none
  int namedChannel_ = -1;     ///< the channel that name events apply to, or -1
  bool hasMeterAtStart_ = false;
  bool hasTempoAtStart_ = false;
  std::array<Channel, 16> channels_;
  std::string trackName_, instrumentName_;
};

}  // namespace zmatrix
