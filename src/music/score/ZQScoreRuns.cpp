#include "music/score/ZQScoreRuns.h"

#include <algorithm>
#include <cmath>

#include "music/midi/ZQMidiTrackJudge.h"
#include "music/score/ZQScoreTempo.h"
#include "sequence/ZQPreprocessing.h"

namespace zmatrix {

namespace {

constexpr long long longestRest = 32;         // bars: each bar of a rest becomes a bar marker
constexpr long long latestInRun = 1 << 30;    // quanta, so that the sum of two fits an int
constexpr long long mostMarkers = 900000;     // of a run; the preprocessing accepts a million
constexpr size_t mostNotesOfRun = 100000000;  // so that the number of coordinates fits an int

/// The nearest step of a grid, as a number of steps; half steps are rounded up.
long long nearestStep(__int128 numerator, __int128 denominator, long long stepsPerWholeNote) {
  const __int128 doubled = 2 * numerator * stepsPerWholeNote + denominator;
  const __int128 divisor = 2 * denominator;
  return static_cast<long long>(doubled / divisor - (doubled % divisor < 0 ? 1 : 0));
}

/// A grid of 12288 / `quantization` quanta.
class Grid {
 public:
  explicit Grid(int quantization)
      : step(std::max(quantaPerWholeNote / std::max(quantization, 1), 1)), isExact_(quantaPerWholeNote % step == 0) {}

  /// The nearest multiple of the grid, in quanta.
  long long at(__int128 numerator, __int128 denominator) const {
    if (isExact_) return nearestStep(numerator, denominator, quantaPerWholeNote / step) * step;
    const long long quanta = nearestStep(numerator, denominator, quantaPerWholeNote);
    return nearestStep(quanta, step, 1) * step;
  }

  const long long step;

 private:
  const bool isExact_;  // the grid divides a whole note evenly
};

/// How far rounding to the grid moves a time, in quanta.
double moveOf(long long onGrid, __int128 numerator, __int128 denominator) {
  const __int128 difference = static_cast<__int128>(onGrid) * denominator - numerator * quantaPerWholeNote;
  return std::fabs(static_cast<double>(difference) / static_cast<double>(denominator));
}

struct TimedNote {
  long long note;
  long long start;  // quanta from the begin of the stretch, not yet divided into runs
  long long duration;
};

/// Whether the notes of a run sound one at a time, and what sounds they have.
struct TextureOfRun {
  bool hasDrums = false;
  bool hasOthers = false;
  bool hasChords = false;
  bool hasSeveralParts = false;
  bool hasSeveralSounds = false;
  int sound = 0;

  int subType() const {
    if (!hasOthers) return ZQMidiSubTypePercussion;
    if (hasSeveralParts) return ZQMidiSubTypeMultiChannel;
    return hasChords ? ZQMidiSubTypePolyphon : ZQMidiSubTypeMonophon;
  }
};

class ScorePlanner {
 public:
  ScorePlanner(const zq_Score& source, const zq_ScoreFeedSettings& feedSettings)
      : score_(source),
        settings_(feedSettings),
        onsets_(feedSettings.noteOnQuantization),
        durations_(feedSettings.durationQuantization),
        meters_(source),
        isPlanned_(static_cast<size_t>(source.numberOfNotes), false) {
    plan_.causes.assign(isPlanned_.size(), zq_ScoreLearned);
  }

  ScorePlan run() {
    leaveOut();
    int parts = 0;
    for (int part = 0; part < score_.numberOfParts; ++part) parts += notesOfPart(part).empty() ? 0 : 1;
    const bool merges = settings_.midiTrackAnalyze != ZQMidiTrackAnalyzeSingle && parts > 1;
    if (!merges || settings_.midiTrackAnalyze != ZQMidiTrackAnalyzeMerged) {
      for (int part = 0; part < score_.numberOfParts; ++part) planVoice(part, notesOfPart(part));
    }
    if (merges) planVoice(merged, notesOfAll());
    return std::move(plan_);
  }

 private:
  static constexpr int merged = -1;

  const zq_ScoreNote& noteAt(long long index) const { return score_.notes[index]; }

  void leaveOut() {
    for (size_t i = 0; i < plan_.causes.size(); ++i) {
      const zq_ScoreNote& note = score_.notes[i];
      const int sound = learnedSoundOf(note);
      const bool isPercussion = sound == drumSound || sound == ZQMatrixSoundPercussive || sound == ZQMatrixSoundEffects;
      if (settings_.channelFilter[score_.parts[note.part].channel & 15] != 0) {
        plan_.causes[i] = zq_ScoreSkippedChannel;
      } else if (settings_.leavesOutPercussion != 0 && isPercussion) {
        plan_.causes[i] = zq_ScoreSkippedPercussion;
      } else if (durationOf(note) > latestInRun) {
        plan_.causes[i] = zq_ScoreDurationOutOfRange;
      }
    }
  }

  std::vector<long long> notesOfPart(int part) const {
    std::vector<long long> notes;
    const zq_ScorePart& range = score_.parts[part];
    for (long long i = range.firstNote; i < range.firstNote + range.numberOfNotes; ++i) {
      if (plan_.causes[static_cast<size_t>(i)] == zq_ScoreLearned) notes.push_back(i);
    }
    return notes;
  }

  std::vector<long long> notesOfAll() const {
    std::vector<long long> notes;
    for (int part = 0; part < score_.numberOfParts; ++part) {
      const std::vector<long long> ofPart = notesOfPart(part);
      notes.insert(notes.end(), ofPart.begin(), ofPart.end());
    }
    std::stable_sort(notes.begin(), notes.end(),
                     [this](long long one, long long other) { return onsetOf(one) < onsetOf(other); });
    return notes;
  }

  ScoreTime onsetOf(long long note) const { return {noteAt(note).onset, noteAt(note).onsetDenominator}; }

  long long durationOf(const zq_ScoreNote& note) const {
    return std::max(durations_.at(note.duration, note.durationDenominator), durations_.step);
  }

  /// The onset relative to the begin of a stretch, as a fraction.
  struct Exact {
    __int128 numerator, denominator;
  };
  Exact exactOnset(long long note, const MeterStretch& stretch) const {
    const ScoreTime onset = onsetOf(note);
    if (stretch.shift.numerator == 0) return {onset.numerator, onset.denominator};
    return {static_cast<__int128>(onset.numerator) * stretch.shift.denominator +
                static_cast<__int128>(stretch.shift.numerator) * onset.denominator,
            static_cast<__int128>(onset.denominator) * stretch.shift.denominator};
  }

  /// Rounds a note to the grid. A note's rounding is counted once, in its first run.
  TimedNote timed(long long index, const MeterStretch& stretch) {
    const zq_ScoreNote& note = noteAt(index);
    const Exact onset = exactOnset(index, stretch);
    const TimedNote result{index, onsets_.at(onset.numerator, onset.denominator), durationOf(note)};
    if (isPlanned_[static_cast<size_t>(index)]) return result;
    isPlanned_[static_cast<size_t>(index)] = true;
    ++plan_.notesMeasured;
    const double onsetMove = moveOf(result.start, onset.numerator, onset.denominator);
    plan_.onsetsMoved += onsetMove > 0 ? 1 : 0;
    plan_.largestOnsetMove = std::max(plan_.largestOnsetMove, onsetMove);
    plan_.sumOfOnsetMoves += onsetMove;
    if (note.duration <= 0) {
      ++plan_.notesWithoutDuration;
      return result;
    }
    const double durationMove = moveOf(result.duration, note.duration, note.durationDenominator);
    plan_.durationsMoved += durationMove > 0 ? 1 : 0;
    plan_.largestDurationMove = std::max(plan_.largestDurationMove, durationMove);
    plan_.sumOfDurationMoves += durationMove;
    return result;
  }

  void planVoice(int part, const std::vector<long long>& notes) {
    if (notes.empty()) return;
    const MeterStretches& stretches = meters_.stretchesOf(part);
    std::vector<PlannedRun> runs;
    std::vector<const MeterStretch*> stretchOfRun;
    for (size_t next = 0; next < notes.size();) {
      const size_t i = ScoreMeters::indexAt(stretches, onsetOf(notes[next]));
      std::vector<TimedNote> inStretch;
      const bool isLast = i + 1 == stretches.size();
      for (; next < notes.size() && (isLast || onsetOf(notes[next]) < stretches[i + 1].begin); ++next) {
        inStretch.push_back(timed(notes[next], stretches[i]));
      }
      std::sort(inStretch.begin(), inStretch.end(),
                [this](const TimedNote& one, const TimedNote& other) { return orderOf(one) < orderOf(other); });
      addRuns(part, stretches[i], inStretch, runs);
      stretchOfRun.resize(runs.size(), &stretches[i]);
    }
    joinSingleNotes(runs, stretchOfRun);
    for (PlannedRun& run : runs) {
      if (run.count == 0) continue;  // its note is learned with the next run
      judge(run);
      const bool isOfOnePart = part == merged && settings_.midiTrackAnalyze != ZQMidiTrackAnalyzeMerged && !hasSeveralParts(run);
      if (!isOfOnePart) plan_.runs.push_back(run);  // else it is the same as the run of that part
    }
  }

  /// Notes that begin at the same time are ordered by pitch, so that equal chords give equal sequences.
  struct Order {
    long long start;
    int pitch, sound;
    long long note;
    auto operator<=>(const Order&) const = default;
  };
  Order orderOf(const TimedNote& timed) const {
    const zq_ScoreNote& note = noteAt(timed.note);
    return {timed.start, note.pitch, learnedSoundOf(note), timed.note};
  }

  void addRuns(int part, const MeterStretch& stretch, const std::vector<TimedNote>& notes, std::vector<PlannedRun>& runs) {
    const long long bar = stretch.barLengthInQuanta();
    long long base = 0, markers = 0, previous = 0;
    bool isNew = true;
    for (const TimedNote& note : notes) {
      const long long barsPassed = isNew ? 0 : (note.start - previous) / bar;
      if (barsPassed > longestRest) {
        base += (barsPassed - longestRest) * bar;
        ++plan_.shortenedRests;
      }
      markers += barsPassed > 0 ? std::min(barsPassed, longestRest) + 1 : 0;
      previous = note.start;
      if (isNew || note.start - base > latestInRun || markers > mostMarkers || runs.back().count == mostNotesOfRun) {
        if (!isNew || note.start > latestInRun) base = note.start / bar * bar;
        markers = 0;
        isNew = false;
        runs.push_back(newRun(part, stretch, note.note));
      }
      plan_.notes.push_back({note.note, static_cast<int>(note.start - base), static_cast<int>(note.duration)});
      ++runs.back().count;
    }
  }

  PlannedRun newRun(int part, const MeterStretch& stretch, long long firstNote) const {
    PlannedRun run;
    run.first = plan_.notes.size();
    run.reported.onset = noteAt(firstNote).onset;
    run.reported.onsetDenominator = noteAt(firstNote).onsetDenominator;
    run.reported.part = part;
    run.reported.numerator = stretch.bars.numerator;
    run.reported.denominator = stretch.bars.denominator;
    run.reported.writtenNumerator = stretch.numerator;
    run.reported.writtenDenominator = stretch.denominator;
    run.reported.hasAssumedMeter = stretch.isAssumed ? 1 : 0;
    run.reported.matrixID = -1;
    if (stretch.bars.numerator == 0) run.reported.cause = zq_ScoreMeterOutOfRange;
    return run;
  }

  /// A run of one note has no step to learn: the note before it is put in front. A single first note is put in front of the
  /// second run and learned there.
  void joinSingleNotes(std::vector<PlannedRun>& runs, const std::vector<const MeterStretch*>& stretchOfRun) {
    for (size_t i = 1; i < runs.size(); ++i) {
      const PlannedRun& before = runs[i - 1];
      const bool joinsFirst = i == 1 && before.count == 1 && before.reported.cause == zq_ScoreLearned;
      if (runs[i].reported.cause != zq_ScoreLearned || (runs[i].count > 1 && !joinsFirst)) continue;
      lead(runs[i], plan_.notes[before.first + before.count - 1], *stretchOfRun[i]);
      if (!joinsFirst) continue;
      runs[i].learnsLeading = true;
      runs[0].count = 0;
    }
    for (PlannedRun& run : runs) {
      if (run.count == 1 && !run.hasLeading() && run.reported.cause == zq_ScoreLearned) run.reported.cause = zq_ScoreAlone;
    }
  }

  /// Puts a note in front of a run, at its distance in the score; rests beyond the longest one are shortened by whole bars. The
  /// run is moved by whole bars so that no time is negative.
  void lead(PlannedRun& run, const NoteOnGrid& note, const MeterStretch& stretch) {
    NoteOnGrid* const first = &plan_.notes[run.first];
    const Exact lead = exactOnset(note.note, stretch), start = exactOnset(first->note, stretch);
    const long long bar = stretch.barLengthInQuanta();
    long long distance =
        std::max(onsets_.at(start.numerator, start.denominator) - onsets_.at(lead.numerator, lead.denominator), 0LL);
    if (distance / bar > longestRest) distance = longestRest * bar + distance % bar;
    const long long missing = distance - first->start;
    const long long moved = missing > 0 ? (missing + bar - 1) / bar * bar : 0;
    for (size_t i = 0; i < run.count; ++i) first[i].start += static_cast<int>(moved);
    run.leading = {note.note, static_cast<int>(first->start - distance), note.duration};
  }

  bool hasSeveralParts(const PlannedRun& run) const {
    const int part = noteAt(plan_.notes[run.first].note).part;
    if (run.learnsLeading && noteAt(run.leading.note).part != part) return true;
    for (size_t i = run.first; i < run.first + run.count; ++i) {
      if (noteAt(plan_.notes[i].note).part != part) return true;
    }
    return false;
  }

  TextureOfRun textureOf(const PlannedRun& run) const {
    TextureOfRun texture;
    const NoteOnGrid* const notes = &plan_.notes[run.first];
    texture.sound = learnedSoundOf(noteAt(notes->note));
    const auto add = [&](const NoteOnGrid& note) {
      const int sound = learnedSoundOf(noteAt(note.note));
      (sound == drumSound ? texture.hasDrums : texture.hasOthers) = true;
      texture.hasSeveralSounds = texture.hasSeveralSounds || sound != texture.sound;
    };
    for (size_t i = 0; i < run.count; ++i) {
      add(notes[i]);
      texture.hasChords = texture.hasChords || (i > 0 && notes[i].start == notes[i - 1].start);
    }
    if (run.learnsLeading) add(run.leading);
    texture.hasSeveralParts = hasSeveralParts(run);
    return texture;
  }

  /// Drums need the sound of each note, as their pitch selects an instrument; notes of a single other sound don't.
  int preProcessingFor(const TextureOfRun& texture) const {
    if (texture.hasDrums) return ZQPreProcessingTypeMidiGMQuadruple_NDMTS;
    const bool isQuadruple = settings_.preProcessingType == ZQPreProcessingTypeMidiGMQuadruple_NDMTS;
    return isQuadruple && !texture.hasSeveralSounds ? ZQPreProcessingTypeMidiTriple_NDMT : settings_.preProcessingType;
  }

  void judge(PlannedRun& run) const {
    const TextureOfRun texture = textureOf(run);
    run.reported.notes = static_cast<long long>(run.count) + (run.learnsLeading ? 1 : 0);
    run.reported.subType = texture.subType();
    run.reported.soundID = texture.hasSeveralSounds ? 0 : texture.sound;
    run.reported.preProcessingType = preProcessingFor(texture);
    const zq_ScoreNote& last = noteAt(plan_.notes[run.first + run.count - 1].note);
    const ScoreTime end = sumOf({last.onset, last.onsetDenominator}, {last.duration, last.durationDenominator}).time;
    run.reported.quartersPerMinute = tempoBetween(score_, {run.reported.onset, run.reported.onsetDenominator}, end);
  }

  const zq_Score& score_;
  const zq_ScoreFeedSettings& settings_;
  const Grid onsets_, durations_;
  const ScoreMeters meters_;
  std::vector<bool> isPlanned_;
  ScorePlan plan_;
};

}  // namespace

int learnedSoundOf(const zq_ScoreNote& note) {
  if ((note.flags & zq_ScorePercussion) != 0) return drumSound;
  return note.sound <= ZQMatrixSoundEffects ? note.sound : 0;
}

bool isMusicSetting(const zq_ScoreFeedSettings& settings) {
  const int type = settings.preProcessingType;
  return (type == 1 || coordinatesOfMidiType(type) != 0) && settings.noteOnQuantization > 0 && settings.durationQuantization > 0;
}

ScorePlan planScore(const zq_Score& score, const zq_ScoreFeedSettings& settings) {
  return ScorePlanner(score, settings).run();
}

std::vector<int> ScorePlan::sequenceOf(const zq_Score& score, const PlannedRun& run) const {
  const int coordinates = coordinatesOfNote(run.reported.preProcessingType);
  std::vector<int> sequence;
  sequence.reserve((run.count + 1) * static_cast<size_t>(coordinates));
  const auto add = [&](const NoteOnGrid& timed) {
    const zq_ScoreNote& note = score.notes[timed.note];
    sequence.push_back(note.pitch);
    sequence.push_back(timed.start);
    if (coordinates >= 3) sequence.push_back(timed.duration);
    if (coordinates >= 4) sequence.push_back(learnedSoundOf(note));
  };
  if (run.hasLeading()) add(run.leading);
  for (size_t i = run.first; i < run.first + run.count; ++i) add(notes[i]);
  return sequence;
}

}  // namespace zmatrix
