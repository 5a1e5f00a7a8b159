#include "music/score/ZQKernScoreTies.h"

#include <algorithm>

namespace zmatrix {

bool KernScoreTies::IsBefore::operator()(const KernTie& one, const KernTie& other) const {
  if (one.part != other.part) return one.part < other.part;
  if (one.pitch != other.pitch) return one.pitch < other.pitch;
  return one.end < other.end;
}

long long KernScoreTies::take(const KernTie& tie, int spine) {
  constexpr int mostLookedAt = 16;  // so that a chord of one pitch many times over can't slow the reading down
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

std::vector<long long> KernScoreTies::rest() const {
  std::vector<long long> notes;
  for (const auto& [tie, held] : held_) notes.push_back(held.note);
  std::sort(notes.begin(), notes.end());
  return notes;
}

}  // namespace zmatrix
