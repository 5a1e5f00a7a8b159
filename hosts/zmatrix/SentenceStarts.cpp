#include "SentenceStarts.h"

#include <algorithm>

namespace {
constexpr std::size_t mostKept = 20000;  // beginnings
}

const std::optional<std::vector<Matrix::Successor>>& SentenceStarts::after(const std::vector<int>& beginning) {
  const auto known = known_.find(beginning);
  if (known != known_.end()) return known->second;
  if (known_.size() >= mostKept) known_.clear();
  return known_[beginning] = beginning.empty() ? std::optional(firstLetters()) : count(beginning);
}

std::vector<Matrix::Successor> SentenceStarts::firstLetters() const {
  std::vector<Matrix::Successor> letters;
  for (const Matrix::Successor& letter : matrix_.successorsOf({})) {
    if (letter.starts > 0) letters.push_back({letter.item, letter.starts, letter.starts});
  }
  return letters;
}

std::optional<std::vector<Matrix::Successor>> SentenceStarts::count(const std::vector<int>& beginning) {
  if (beginning.size() + 2 > phraseLimit_) return std::nullopt;  // what stands before it is not known together with what follows
  if (letters_.empty()) letters_ = matrix_.successorsOf({});
  std::vector<Matrix::Successor> starts = matrix_.successorsOf(beginning);
  std::vector<int> within(1);
  within.insert(within.end(), beginning.begin(), beginning.end());
  for (const Matrix::Successor& before : letters_) {
    within[0] = before.item;
    for (const Matrix::Successor& follower : matrix_.successorsOf(within)) {
      const auto start = std::find_if(starts.begin(), starts.end(),
                                      [&](const Matrix::Successor& candidate) { return candidate.item == follower.item; });
      if (start == starts.end() || (start->count -= follower.count) < 0) return std::nullopt;
    }
  }
  starts.erase(std::remove_if(starts.begin(), starts.end(), [](const Matrix::Successor& start) { return start.count == 0; }),
               starts.end());
  return starts;
}
