#include "CopiedRuns.h"

#include <algorithm>

#include "Sentences.h"

namespace {

constexpr std::uint64_t base = 0x9E3779B97F4A7C15u;
constexpr std::size_t filterSize = std::size_t{1} << 22;

std::vector<int> withSingleBlanks(const std::vector<int>& text) {
  std::vector<int> result;
  result.reserve(text.size());
  for (const int character : text) {
    const bool isWhite = isWhiteSpace(character);
    if (!isWhite || result.empty() || result.back() != ' ') result.push_back(isWhite ? ' ' : character);
  }
  return result;
}

std::uint64_t scattered(int character) {
  std::uint64_t value = static_cast<std::uint32_t>(character) + base;
  value = (value ^ (value >> 30)) * 0xBF58476D1CE4E5B9u;
  return value ^ (value >> 27);
}

// Calls take(hash, begin) for each stretch of `length` characters, with a rolling polynomial hash.
template <class Take>
void forEachStretch(const std::vector<int>& text, std::size_t length, Take take) {
  std::uint64_t leaving = 1;  // base^length, the weight of the character that leaves the stretch
  for (std::size_t at = 0; at < length; ++at) leaving *= base;
  std::uint64_t hash = 0;
  for (std::size_t at = 0; at < text.size(); ++at) {
    hash = hash * base + scattered(text[at]);
    if (at >= length) hash -= leaving * scattered(text[at - length]);
    if (at + 1 >= length) take(hash, at + 1 - length);
  }
}

std::size_t filterIndex(std::uint64_t hash) {
  return (hash ^ (hash >> 40)) % filterSize;
}

}  // namespace

CopiedRuns::CopiedRuns(const std::vector<int>& written) : written_(withSingleBlanks(written)) {
  for (std::size_t at = 0; at < lengths.size(); ++at) {
    Stretches& stretches = stretches_[at];
    stretches.length = static_cast<std::size_t>(lengths[at]);
    stretches.filter.assign(filterSize, false);
    forEachStretch(written_, stretches.length, [&](std::uint64_t hash, std::size_t begin) {
      stretches.byHash.emplace(hash, Stretches::Found{begin, false});
      stretches.filter[filterIndex(hash)] = true;
    });
  }
}

void CopiedRuns::compareWith(const std::vector<int>& text) {
  const std::vector<int> learned = withSingleBlanks(text);
  for (Stretches& stretches : stretches_) search(stretches, learned);
}

void CopiedRuns::search(Stretches& stretches, const std::vector<int>& text) const {
  forEachStretch(text, stretches.length, [&](std::uint64_t hash, std::size_t begin) {
    if (!stretches.filter[filterIndex(hash)]) return;
    const auto found = stretches.byHash.find(hash);
    if (found == stretches.byHash.end() || found->second.isCopied) return;
    found->second.isCopied =
        std::equal(text.data() + begin, text.data() + begin + stretches.length, written_.data() + found->second.at);
  });
}

CopiedRuns::Shares CopiedRuns::shares() const {
  Shares shares{};
  for (std::size_t at = 0; at < lengths.size(); ++at) {
    std::size_t copied = 0;
    std::size_t copiedUpTo = 0;
    forEachStretch(written_, stretches_[at].length, [&](std::uint64_t hash, std::size_t begin) {
      if (!stretches_[at].byHash.at(hash).isCopied) return;
      const std::size_t end = begin + stretches_[at].length;
      copied += end - std::max(begin, copiedUpTo);
      copiedUpTo = end;
    });
    shares[at] = written_.empty() ? 0 : static_cast<double>(copied) / static_cast<double>(written_.size());
  }
  return shares;
}
