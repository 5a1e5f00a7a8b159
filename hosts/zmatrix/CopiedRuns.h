// How much of a written text stands in other texts word for word, in runs of some length: the measure of quoting.
#pragma once

#include <array>
#include <cstdint>
#include <unordered_map>
#include <vector>

class CopiedRuns {
 public:
  static constexpr std::array<int, 3> lengths = {25, 50, 100};  ///< characters
  using Shares = std::array<double, lengths.size()>;            ///< 0 to 1, for runs of at least each length

  /// White space counts as one blank, however much and of what kind it is.
  explicit CopiedRuns(const std::vector<int>& written);
  /// Marks what of the written text stands in this one.
  void compareWith(const std::vector<int>& text);
  /// The share of the written characters that lie within a run found in one of the texts.
  Shares shares() const;

 private:
  /// All stretches of one length of the written text.
  struct Stretches {
    std::size_t length;
    struct Found {
      std::size_t at;  ///< where the written text has it first
      bool isCopied;
    };
    std::unordered_map<std::uint64_t, Found> byHash;
    std::vector<bool> filter;  ///< false at the low bits of a hash that no stretch has
  };
  void search(Stretches& stretches, const std::vector<int>& text) const;

  std::vector<int> written_;
  std::array<Stretches, lengths.size()> stretches_;
};
