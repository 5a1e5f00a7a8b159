#include "SentenceStarts.h"

namespace {
constexpr std::size_t mostKept = 20000;  // beginnings in the cache
}

const std::optional<std::vector<Matrix::Successor>>& SentenceStarts::after(const std::vector<int>& beginning) {
  const auto known = known_.find(beginning);
  if (known != known_.end()) return known->second;
  if (known_.size() >= mostKept) known_.clear();
  std::optional<std::vector<Matrix::Successor>>& starts = known_[beginning];
  // A phrase must have room for the letter before the beginning and the one after it.
  const bool isKnown = beginning.empty() || beginning.size() + 2 <= phraseLimit_;
  if (isKnown) starts = matrix_.sentenceStarts(beginning);
  return starts;
}
