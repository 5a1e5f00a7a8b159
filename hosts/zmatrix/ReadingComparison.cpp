#include "ReadingComparison.h"

#include <zmatrix/zmatrix.h>

#include <algorithm>
#include <array>
#include <limits>

#include "KernConversion.h"
#include "ScratchFile.h"

namespace {

constexpr int pitches = 128;
constexpr double quantaOfWhole = 12288;
constexpr double sameTime = 8;  // quanta; allows for rounding, far below the shortest note

using OnsetsOfPitches = std::array<std::vector<double>, pitches>;

OnsetsOfPitches onsetsOf(const zq_Score& score) {
  OnsetsOfPitches onsets;
  for (long long at = 0; at < score.numberOfNotes; ++at) {
    const zq_ScoreNote& note = score.notes[at];
    const double whole = static_cast<double>(note.onset) / note.onsetDenominator;
    onsets[note.pitch & (pitches - 1)].push_back(whole * quantaOfWhole);
  }
  for (std::vector<double>& list : onsets) std::sort(list.begin(), list.end());
  return onsets;
}

// How many notes of `one`, moved by `moved` quanta, have a note of the same pitch at the same time in `other`.
long long numberInBoth(const OnsetsOfPitches& one, const OnsetsOfPitches& other, double moved) {
  long long both = 0;
  for (std::size_t pitch = 0; pitch < one.size(); ++pitch) {
    auto theirs = other[pitch].begin();
    for (const double unmoved : one[pitch]) {
      const double onset = unmoved + moved;
      while (theirs != other[pitch].end() && *theirs < onset - sameTime) ++theirs;
      if (theirs == other[pitch].end()) break;
      if (*theirs > onset + sameTime) continue;
      ++both;
      ++theirs;
    }
  }
  return both;
}

double firstOf(const OnsetsOfPitches& onsets) {
  double first = std::numeric_limits<double>::max();
  for (const std::vector<double>& list : onsets) first = list.empty() ? first : std::min(first, list.front());
  return first;
}

// The notes that the classic conversion of a kern score puts at their exact time. The conversion may move the whole piece to a
// bar line, which doesn't count as a difference.
long long notesInPlace(const InputFile& input, const zq_Score& score) {
  const ScratchFile file;
  if (!convertClassically(input.path, file.path()) || file.bytes().empty()) return 0;
  const Score classic = readScore(file.path(), Kind::midi, 0);
  if (classic->numberOfNotes == 0 || score.numberOfNotes == 0) return 0;
  const OnsetsOfPitches ours = onsetsOf(score), theirs = onsetsOf(*classic);
  return numberInBoth(ours, theirs, firstOf(theirs) - firstOf(ours));
}

}  // namespace

Json comparisonOf(const InputFile& input, const zq_Score& score, const zq_ScoreFeedReport& plan, const MusicReport& classic) {
  const bool isRead = classic.refusal.empty();
  const long long read = isRead ? classic.notesRead : 0;
  Json lines = Json::array();
  lines.push_back({{"reading", "exact"},
                   {"notes_read", score.numberOfNotes},
                   {"at_another_time", 0},
                   {"notes_learned", plan.notesLearned},
                   {"not_learned", score.numberOfNotes - plan.notesLearned}});
  Json line = {
      {"reading", "classic"}, {"notes_read", read}, {"at_another_time", Json()}, {"notes_learned", classic.notesLearned}};
  if (input.kind == Kind::kern && isRead) {
    line["at_another_time"] = std::max(read - notesInPlace(input, score), 0LL);
  }
  line["not_learned"] = std::max(score.numberOfNotes - classic.notesLearned, 0LL);
  lines.push_back(line);
  return lines;
}
