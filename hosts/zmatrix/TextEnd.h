// Where a text that is being written ends: with its Nth sentence or line, if that was asked for. Counts both in any case.
#pragma once

#include <optional>
#include <vector>

#include "Sentences.h"

class TextEnd {
 public:
  TextEnd(std::optional<long long> sentences, std::optional<long long> lines)
      : sentencesWanted_(sentences), linesWanted_(lines) {}

  /// What stands already. Its last sentence counts if it is unfinished.
  void startWith(const std::vector<int>& start);
  /// Returns what of a piece belongs to the text. White space behind a sentence that may be the last waits for the next piece.
  std::vector<int> take(const std::vector<int>& piece);
  bool isReached() const;
  /// 0 to 1.
  double progress() const;
  long long sentences() const { return sentences_; }
  long long lines() const { return lines_; }

 private:
  void takeLineEnd(std::vector<int>& taken);
  void takeCharacter(int character, std::vector<int>& taken);

  std::optional<long long> sentencesWanted_;
  std::optional<long long> linesWanted_;
  SentenceReader reader_;
  std::vector<int> waiting_;  ///< white space
  bool isInSentence_ = false;
  long long sentences_ = 0;
  long long lines_ = 0;
};
