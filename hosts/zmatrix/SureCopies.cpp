#include "SureCopies.h"

#include <algorithm>

namespace {
constexpr std::size_t longestPhrase = 1024;
}

void SureCopies::follow(int lengthOfContext, int item, int characters) {
  const std::size_t length = std::min(static_cast<std::size_t>(std::max(lengthOfContext, 0)), items_.size());
  const bool goesOn = isOnlyWayOn(length, item);
  if (items_.size() >= 2 * longestPhrase) items_.erase(items_.begin(), items_.end() - longestPhrase);
  items_.push_back(item);
  copied_.push_back(characters);
  charactersOfCopy_ += characters;
  while (!goesOn && copied_.size() > length + 1) {
    charactersOfCopy_ -= copied_.front();
    copied_.pop_front();
  }
  written_ += characters;
  for (std::size_t at = 0; at < covered_.size(); ++at) {
    if (charactersOfCopy_ < CopiedRuns::lengths[at]) continue;
    covered_[at].characters += written_ - std::max(covered_[at].upTo, written_ - charactersOfCopy_);
    covered_[at].upTo = written_;
  }
}

// True if the item follows every occurrence of the context, so that none ends a sequence.
bool SureCopies::isOnlyWayOn(std::size_t lengthOfContext, int item) {
  if (lengthOfContext == 0) return false;
  const std::vector<int> context(items_.end() - static_cast<std::ptrdiff_t>(lengthOfContext), items_.end());
  const std::vector<Matrix::Successor> successors = matrix_.successorsOf(context);
  if (successors.size() != 1 || successors[0].item != item) return false;
  for (const Matrix::Successor& sibling : matrix_.successorsOf({context.begin(), context.end() - 1})) {
    if (sibling.item == context.back()) return sibling.count == successors[0].count;
  }
  return false;
}

void SureCopies::breakOff() {
  items_.clear();
  copied_.clear();
  charactersOfCopy_ = 0;
  ++written_;  // the line feed
}

CopiedRuns::Shares SureCopies::shares() const {
  CopiedRuns::Shares shares{};
  for (std::size_t at = 0; at < shares.size() && written_ > 0; ++at) {
    shares[at] = static_cast<double>(covered_[at].characters) / static_cast<double>(written_);
  }
  return shares;
}
