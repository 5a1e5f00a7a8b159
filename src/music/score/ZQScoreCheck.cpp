#include "music/score/ZQScoreCheck.h"

#include <cmath>

#include "music/score/ZQScoreTime.h"

namespace zmatrix {

namespace {

constexpr int largestDataByte = 127;
constexpr int largestChannel = 15;

bool isTimeValid(long long numerator, int denominator) {
  return numerator >= 0 && denominator > 0 && denominator <= ScoreTime::largestDenominator &&
         numerator <= ScoreTime::latest * denominator;
}

template <class Entry>
bool isOnsetValid(const Entry& entry) {
  return isTimeValid(entry.onset, entry.onsetDenominator);
}

bool isNoteValid(const zq_ScoreNote& note, int part) {
  return note.part == part && isOnsetValid(note) && isTimeValid(note.duration, note.durationDenominator) &&
         note.pitch <= largestDataByte && note.velocity > 0 && note.velocity <= largestDataByte &&
         note.program <= largestDataByte;
}

bool isBehind(const zq_ScoreNote& note, const zq_ScoreNote& other) {
  if (note.onsetDenominator == other.onsetDenominator) return note.onset > other.onset;
  return ScoreTime{note.onset, note.onsetDenominator} > ScoreTime{other.onset, other.onsetDenominator};
}

template <class Entry>
bool isThere(const Entry* entries, long long number) {
  return number == 0 || (number > 0 && entries != nullptr);
}

/// True if every entry of an array has a valid onset and passes the test.
template <class Entry, class Test>
bool areValid(const Entry* entries, long long number, Test test) {
  if (!isThere(entries, number)) return false;
  for (long long i = 0; i < number; ++i) {
    if (!isOnsetValid(entries[i]) || !test(entries[i])) return false;
  }
  return true;
}

/// The index of the first invalid note of a part, or -1.
long long firstWrongNote(const zq_Score& score, int part) {
  const long long first = score.parts[part].firstNote, end = first + score.parts[part].numberOfNotes;
  for (long long i = first; i < end; ++i) {
    if (!isNoteValid(score.notes[i], part) || (i > first && isBehind(score.notes[i - 1], score.notes[i]))) return i;
  }
  return -1;
}

bool arePartsValid(const zq_Score& score, long long* refusedNote) {
  long long next = 0;
  for (int i = 0; i < score.numberOfParts; ++i) {
    const zq_ScorePart& part = score.parts[i];
    if (part.channel < 0 || part.channel > largestChannel || part.firstNote != next || part.numberOfNotes < 0 ||
        part.numberOfNotes > score.numberOfNotes - next) {
      return false;
    }
    next += part.numberOfNotes;
    *refusedNote = firstWrongNote(score, i);
    if (*refusedNote >= 0) return false;
  }
  return next == score.numberOfNotes;
}

}  // namespace

bool isScoreValid(const zq_Score* score, long long* refusedNote) {
  *refusedNote = -1;
  if (score == nullptr || !isThere(score->notes, score->numberOfNotes) || !isThere(score->parts, score->numberOfParts))
    return false;
  const auto hasPart = [&](const auto& entry) { return entry.part >= -1 && entry.part < score->numberOfParts; };
  return areValid(score->meters, score->numberOfMeters,
                  [&](const zq_ScoreMeter& meter) { return hasPart(meter) && meter.numerator > 0 && meter.denominator > 0; }) &&
         areValid(score->keys, score->numberOfKeys, hasPart) &&
         areValid(
             score->tempi, score->numberOfTempi,
             [](const zq_ScoreTempo& tempo) { return std::isfinite(tempo.quartersPerMinute) && tempo.quartersPerMinute > 0; }) &&
         arePartsValid(*score, refusedNote);
}

}  // namespace zmatrix
