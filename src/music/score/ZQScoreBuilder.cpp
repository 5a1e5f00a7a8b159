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

  const char* keep(std::string_view text) { return text.empty() ? "" : ownedTexts.emplace_back(text).c_str(); }

  std::vector<zq_ScoreNote> ownedNotes;
  std::vector<zq_ScorePart> ownedParts;
  std::vector<zq_ScoreMeter> ownedMeters;
  std::vector<zq_ScoreKey> ownedKeys;
  std::vector<zq_ScoreTempo> ownedTempi;
  std::vector<zq_ScoreBarLine> ownedBarLines;
  std::vector<zq_ScoreFinding> ownedFindings;
  std::deque<std::string> ownedTexts;
};

ScoreBuilder::ScoreBuilder(zq_ScoreFormat format) : owned_(new OwnedScore) {
  owned_->format = format;
}

ScoreBuilder::~ScoreBuilder() {
  delete owned_;
}

zq_Score& ScoreBuilder::score() {
  return *owned_;
}

void ScoreBuilder::reserveNotes(long long count) {
  owned_->ownedNotes.reserve(static_cast<size_t>(count));
}

long long ScoreBuilder::addNote(const zq_ScoreNote& note) {
  owned_->ownedNotes.push_back(note);
  return static_cast<long long>(owned_->ownedNotes.size()) - 1;
}

zq_ScoreNote& ScoreBuilder::noteAt(long long index) {
  return owned_->ownedNotes[static_cast<size_t>(index)];
}

long long ScoreBuilder::numberOfNotes() const {
  return static_cast<long long>(owned_->ownedNotes.size());
}

int ScoreBuilder::addPart(int track, int channel) {
  owned_->ownedParts.push_back({0, 0, track, channel, ""});
  return static_cast<int>(owned_->ownedParts.size()) - 1;
}

void ScoreBuilder::setNameOfPart(int part, std::string_view name) {
  owned_->ownedParts[static_cast<size_t>(part)].name = owned_->keep(name);
}

void ScoreBuilder::setChannelOfPart(int part, int channel) {
  owned_->ownedParts[static_cast<size_t>(part)].channel = channel;
}

void ScoreBuilder::addMeter(const ScoreTime& onset, long long place, int part, int numerator, int denominator) {
  owned_->ownedMeters.push_back({onset.numerator, place, onset.denominator, part, numerator, denominator});
}

void ScoreBuilder::addKey(const ScoreTime& onset, int part, int fifths, bool isMinor) {
  owned_->ownedKeys.push_back({onset.numerator, onset.denominator, part, fifths, isMinor ? 1 : 0});
}

void ScoreBuilder::addTempo(const ScoreTime& onset, double quartersPerMinute) {
  owned_->ownedTempi.push_back({onset.numerator, onset.denominator, 0, quartersPerMinute});
}

void ScoreBuilder::addBarLine(const ScoreTime& onset, long long place) {
  owned_->ownedBarLines.push_back({onset.numerator, place, onset.denominator, 0});
}

void ScoreBuilder::addFinding(zq_ScoreFindingKind kind, long long place, int column, std::string_view token) {
  ++owned_->findingCounts[kind];
  if (owned_->ownedFindings.size() >= mostFindings) return;
  owned_->ownedFindings.push_back({place, kind, column, owned_->keep(token.substr(0, longestToken))});
}

/// Notes are distributed to their parts by counting. Most readers deliver the notes of a part by onset, so that few parts need
/// sorting.
void ScoreBuilder::sortNotes() {
  std::vector<zq_ScoreNote>& notes = owned_->ownedNotes;
  for (const zq_ScoreNote& note : notes) ++owned_->ownedParts[static_cast<size_t>(note.part)].numberOfNotes;
  long long first = 0;
  for (zq_ScorePart& part : owned_->ownedParts) {
    part.firstNote = first;
    first += part.numberOfNotes;
  }
  const auto isOfEarlierPart = [](const zq_ScoreNote& one, const zq_ScoreNote& other) { return one.part < other.part; };
  if (!std::is_sorted(notes.begin(), notes.end(), isOfEarlierPart)) {
    std::vector<long long> next(owned_->ownedParts.size());
    for (size_t part = 0; part < next.size(); ++part) next[part] = owned_->ownedParts[part].firstNote;
    std::vector<zq_ScoreNote> sorted(notes.size());
    for (const zq_ScoreNote& note : notes) sorted[static_cast<size_t>(next[static_cast<size_t>(note.part)]++)] = note;
    notes.swap(sorted);
  }
  for (const zq_ScorePart& part : owned_->ownedParts) {
    const auto begin = notes.begin() + part.firstNote, end = begin + part.numberOfNotes;
    if (!std::is_sorted(begin, end, isEarlier<zq_ScoreNote>)) std::stable_sort(begin, end, isEarlier<zq_ScoreNote>);
  }
}

/// Drops parts without notes, with their meters and keys: these say nothing about other parts.
void ScoreBuilder::dropEmptyParts() {
  constexpr int dropped = -2;
  std::vector<int> newIndex(owned_->ownedParts.size(), dropped);
  int kept = 0;
  for (size_t part = 0; part < newIndex.size(); ++part) {
    if (owned_->ownedParts[part].numberOfNotes > 0) newIndex[part] = kept++;
  }
  if (static_cast<size_t>(kept) == newIndex.size()) return;
  const auto indexOf = [&](int part) { return part < 0 ? -1 : newIndex[static_cast<size_t>(part)]; };
  for (zq_ScoreNote& note : owned_->ownedNotes) note.part = indexOf(note.part);
  for (zq_ScoreMeter& meter : owned_->ownedMeters) meter.part = indexOf(meter.part);
  for (zq_ScoreKey& key : owned_->ownedKeys) key.part = indexOf(key.part);
  std::erase_if(owned_->ownedMeters, [](const zq_ScoreMeter& meter) { return meter.part == dropped; });
  std::erase_if(owned_->ownedKeys, [](const zq_ScoreKey& key) { return key.part == dropped; });
  std::erase_if(owned_->ownedParts, [](const zq_ScorePart& part) { return part.numberOfNotes == 0; });
}

zq_Score* ScoreBuilder::finish() {
  sortNotes();
  dropEmptyParts();
  sortByOnset(owned_->ownedMeters);
  std::stable_sort(owned_->ownedMeters.begin(), owned_->ownedMeters.end(),
                   [](const zq_ScoreMeter& one, const zq_ScoreMeter& other) { return one.part < other.part; });
  sortByOnset(owned_->ownedKeys);
  sortByOnset(owned_->ownedTempi);
  sortByOnset(owned_->ownedBarLines);
  const auto publish = [](auto& entries, auto* number, auto* array) {
    *number = static_cast<std::remove_pointer_t<decltype(number)>>(entries.size());
    *array = entries.data();
  };
  publish(owned_->ownedNotes, &owned_->numberOfNotes, &owned_->notes);
  publish(owned_->ownedParts, &owned_->numberOfParts, &owned_->parts);
  publish(owned_->ownedMeters, &owned_->numberOfMeters, &owned_->meters);
  publish(owned_->ownedKeys, &owned_->numberOfKeys, &owned_->keys);
  publish(owned_->ownedTempi, &owned_->numberOfTempi, &owned_->tempi);
  publish(owned_->ownedBarLines, &owned_->numberOfBarLines, &owned_->barLines);
  publish(owned_->ownedFindings, &owned_->numberOfFindings, &owned_->findings);
  zq_Score* const score = owned_;
  owned_ = nullptr;
  return score;
}

void deleteScore(zq_Score* score) {
  delete static_cast<ScoreBuilder::OwnedScore*>(score);
}

}  // namespace zmatrix
