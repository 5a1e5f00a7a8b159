// Measures which share of a generated text is copied from other texts, in runs of at least 25, 50 and 100 characters.
#pragma once

#include <array>
#include <cstdint>
#include <unordered_map>
#include <vector>

class CopiedRuns {
 public:
  static constexpr std::array<int, 3> lengths = {25, 50, 100};  ///< characters
  using Shares = std::array<double, lengths.size()>;            ///< 0 to 1, for runs of at least each length

  /// Any run of white space counts as one blank.
  explicit CopiedRuns(const std::vector<int>& written);
  /// Marks the stretches of the written text that occur in this one.
  void compareWith(const std::vector<int>& text);
  /// The share of the written characters that lie within a marked stretch.
  Shares shares() const;

 private:
  /// All stretches of one length of the written text.
  struct Stretches {
    std::size_t length;
    struct Found {
      std::size_t at;  ///< its first place in the written text
      bool isCopied;
    };
    std::unordered_map<std::uint64_t, Found> byHash;
    std::vector<bool> filter;  ///< by a smaller hash; false if no stretch has it
  };
  void search(Stretches& stretches, const std::vector<int>& text) const;

  std::vector<int> written_;
  std::array<Stretches, lengths.size()> stretches_;
};
