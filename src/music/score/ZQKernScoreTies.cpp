#include "music/score/ZQKernScoreTies.h"

#include <algorithm>

namespace zmatrix {

bool KernScoreTies::IsBefore::operator()(const KernTie& one, const KernTie& other) const {
  if (one.pitch != other.pitch) return one.pitch < other.pitch;
  if (one.end != other.end) return one.end < other.end;
  return one.part < other.part;
}

long long KernScoreTies::take(const KernTie& tie, int spine) {
  constexpr int mostLookedAt = 16;  // bounds the search in a chord that repeats one pitch many times
  const auto first = held_.lower_bound(tie);
  if (first == held_.end() || IsBefore()(tie, first->first)) return -1;
  auto found = first, other = first;
  for (int i = 0; i < mostLookedAt && other != held_.end() && !IsBefore()(tie, other->first); i++, ++other) {
    if (other->second.spine != spine) continue;
    found = other;
    break;
  }
  const long long note = found->second.note;
  held_.erase(found);
  return note;
}

long long KernScoreTies::takeOfAnyPart(const KernTie& tie) {
  const auto first = held_.lower_bound({tie.pitch, tie.end, 0});
  if (first == held_.end() || first->first.pitch != tie.pitch || first->first.end != tie.end) return -1;
  const long long note = first->second.note;
  held_.erase(first);
  return note;
}

std::vector<long long> KernScoreTies::rest() const {
  std::vector<long long> notes;
  for (const auto& [tie, held] : held_) notes.push_back(held.note);
  std::sort(notes.begin(), notes.end());
  return notes;
}

}  // namespace zmatrix
