#include "music/score/ZQScoreBuilder.h"

#include <algorithm>
#include <deque>
#include <memory>
#include <string>
#include <vector>

namespace zmatrix {

namespace {

constexpr size_t mostFindings = 10000;
constexpr size_t longestToken = 60;

template <class Entry>
ScoreTime onsetOf(const Entry& entry) {
  return {entry.onset, entry.onsetDenominator};
}

template <class Entry>
bool isEarlier(const Entry& one, const Entry& other) {
  if (one.onsetDenominator == other.onsetDenominator) return one.onset < other.onset;
  return onsetOf(one) < onsetOf(other);
}

template <class Entry>
void sortByOnset(std::vector<Entry>& entries) {
  if (!std::is_sorted(entries.begin(), entries.end(), isEarlier<Entry>)) {
    std::stable_sort(entries.begin(), entries.end(), isEarlier<Entry>);
  }
}

}  // namespace

/// The score with its storage. Hosts see the plain structure at its begin.
struct ScoreBuilder::OwnedScore : zq_Score {
  OwnedScore() : zq_Score() {}

  const char* keep(std::string_view text) { return text.empty() ? "" : texts_.emplace_back(text).c_str(); }

  std::vector<zq_ScoreNote> notes_;
  std::vector<zq_ScorePart> parts_;
  std::vector<zq_ScoreMeter> meters_;
  std::vector<zq_ScoreKey> keys_;
  std::vector<zq_ScoreTempo> tempi_;
  std::vector<zq_ScoreBarLine> barLines_;
  std::vector<zq_ScoreFinding> findings_;
  std::deque<std::string> texts_;
};

ScoreBuilder::ScoreBuilder(zq_ScoreFormat format) : owned(new OwnedScore) {
  owned->format = format;
}

ScoreBuilder::~ScoreBuilder() {
  delete owned;
}

zq_Score& ScoreBuilder::score() {
  return *owned;
}

void ScoreBuilder::reserveNotes(long long count) {
  owned->notes_.reserve(static_cast<size_t>(count));
}

long long ScoreBuilder::addNote(const zq_ScoreNote& note) {
  owned->notes_.push_back(note);
  return static_cast<long long>(owned->notes_.size()) - 1;
}

zq_ScoreNote& ScoreBuilder::noteAt(long long index) {
  return owned->notes_[static_cast<size_t>(index)];
}

long long ScoreBuilder::numberOfNotes() const {
  return static_cast<long long>(owned->notes_.size());
}

int ScoreBuilder::addPart(int track, int channel) {
  owned->parts_.push_back({0, 0, track, channel, ""});
  return static_cast<int>(owned->parts_.size()) - 1;
}

void ScoreBuilder::setNameOfPart(int part, std::string_view name) {
  owned->parts_[static_cast<size_t>(part)].name = owned->keep(name);
}

void ScoreBuilder::setChannelOfPart(int part, int channel) {
  owned->parts_[static_cast<size_t>(part)].channel = channel;
}

void ScoreBuilder::addMeter(const ScoreTime& onset, long long place, int part, int numerator, int denominator) {
  owned->meters_.push_back({onset.numerator, place, onset.denominator, part, numerator, denominator});
}

void ScoreBuilder::addKey(const ScoreTime& onset, int part, int fifths, bool isMinor) {
  owned->keys_.push_back({onset.numerator, onset.denominator, part, fifths, isMinor ? 1 : 0});
}

void ScoreBuilder::addTempo(const ScoreTime& onset, double quartersPerMinute) {
  owned->tempi_.push_back({onset.numerator, onset.denominator, 0, quartersPerMinute});
}

void ScoreBuilder::addBarLine(const ScoreTime& onset, long long place) {
  owned->barLines_.push_back({onset.numerator, place, onset.denominator, 0});
}

void ScoreBuilder::addFinding(zq_ScoreFindingKind kind, long long place, int column, std::string_view token) {
  ++owned->findingCounts[kind];
  if (owned->findings_.size() >= mostFindings) return;
  owned->findings_.push_back({place, kind, column, owned->keep(token.substr(0, longestToken))});
}

/// Notes are distributed to their parts by counting. Most readers deliver the notes of a part by onset, so that few parts need
/// sorting.
void ScoreBuilder::sortNotes() {
  std::vector<zq_ScoreNote>& notes = owned->notes_;
  for (const zq_ScoreNote& note : notes) ++owned->parts_[static_cast<size_t>(note.part)].numberOfNotes;
  long long first = 0;
  for (zq_ScorePart& part : owned->parts_) {
    part.firstNote = first;
    first += part.numberOfNotes;
  }
  const auto isOfEarlierPart = [](const zq_ScoreNote& one, const zq_ScoreNote& other) { return one.part < other.part; };
  if (!std::is_sorted(notes.begin(), notes.end(), isOfEarlierPart)) {
    std::vector<long long> next(owned->parts_.size());
    for (size_t part = 0; part < next.size(); ++part) next[part] = owned->parts_[part].firstNote;
    std::vector<zq_ScoreNote> sorted(notes.size());
    for (const zq_ScoreNote& note : notes) sorted[static_cast<size_t>(next[static_cast<size_t>(note.part)]++)] = note;
    notes.swap(sorted);
  }
  for (const zq_ScorePart& part : owned->parts_) {
    const auto begin = notes.begin() + part.firstNote, end = begin + part.numberOfNotes;
    if (!std::is_sorted(begin, end, isEarlier<zq_ScoreNote>)) std::stable_sort(begin, end, isEarlier<zq_ScoreNote>);
  }
}

/// Drops parts without notes, with their meters and keys: these say nothing about other parts.
void ScoreBuilder::dropEmptyParts() {
  constexpr int dropped = -2;
  std::vector<int> newIndex(owned->parts_.size(), dropped);
  int kept = 0;
  for (size_t part = 0; part < newIndex.size(); ++part) {
    if (owned->parts_[part].numberOfNotes > 0) newIndex[part] = kept++;
  }
  if (static_cast<size_t>(kept) == newIndex.size()) return;
  const auto indexOf = [&](int part) { return part < 0 ? -1 : newIndex[static_cast<size_t>(part)]; };
  for (zq_ScoreNote& note : owned->notes_) note.part = indexOf(note.part);
  for (zq_ScoreMeter& meter : owned->meters_) meter.part = indexOf(meter.part);
  for (zq_ScoreKey& key : owned->keys_) key.part = indexOf(key.part);
  std::erase_if(owned->meters_, [](const zq_ScoreMeter& meter) { return meter.part == dropped; });
  std::erase_if(owned->keys_, [](const zq_ScoreKey& key) { return key.part == dropped; });
  std::erase_if(owned->parts_, [](const zq_ScorePart& part) { return part.numberOfNotes == 0; });
}

zq_Score* ScoreBuilder::finish() {
  sortNotes();
  dropEmptyParts();
  sortByOnset(owned->meters_);
  std::stable_sort(owned->meters_.begin(), owned->meters_.end(),
                   [](const zq_ScoreMeter& one, const zq_ScoreMeter& other) { return one.part < other.part; });
  sortByOnset(owned->keys_);
  sortByOnset(owned->tempi_);
  sortByOnset(owned->barLines_);
  const auto publish = [](auto& entries, auto* number, auto* array) {
    *number = static_cast<std::remove_pointer_t<decltype(number)>>(entries.size());
    *array = entries.data();
  };
  publish(owned->notes_, &owned->numberOfNotes, &owned->notes);
  publish(owned->parts_, &owned->numberOfParts, &owned->parts);
  publish(owned->meters_, &owned->numberOfMeters, &owned->meters);
  publish(owned->keys_, &owned->numberOfKeys, &owned->keys);
  publish(owned->tempi_, &owned->numberOfTempi, &owned->tempi);
  publish(owned->barLines_, &owned->numberOfBarLines, &owned->barLines);
  publish(owned->findings_, &owned->numberOfFindings, &owned->findings);
  zq_Score* const score = owned;
  owned = nullptr;
  return score;
}

void deleteScore(zq_Score* score) {
  delete static_cast<ScoreBuilder::OwnedScore*>(score);
}

}  // namespace zmatrix
