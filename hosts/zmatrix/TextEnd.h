// Ends a generated text after N sentences or lines, if --sentences or --lines is given. Both are always counted.
#pragma once

#include <optional>
#include <vector>

#include "Sentences.h"

class TextEnd {
 public:
  TextEnd(std::optional<long long> sentences, std::optional<long long> lines)
      : sentencesWanted_(sentences), linesWanted_(lines) {}

  /// Reads the start. Only its last sentence counts, if it is unfinished.
  void startWith(const std::vector<int>& start);
  /// Returns the characters of a piece that belong to the text. With --sentences white space is held back until the next
  /// character, since the text may end before it.
  std::vector<int> take(const std::vector<int>& piece);
  bool isReached() const;
  /// The share of the wanted sentences or lines, from 0 to 1.
  double progress() const;
  long long sentences() const { return sentences_; }
  long long lines() const { return lines_; }

 private:
  void takeLineEnd(std::vector<int>& taken);
  void takeCharacter(int character, std::vector<int>& taken);

  std::optional<long long> sentencesWanted_;
  std::optional<long long> linesWanted_;
  SentenceReader reader_;
  std::vector<int> waiting_;  ///< white space that is held back
  bool isInSentence_ = false;
  long long sentences_ = 0;
  long long lines_ = 0;
};
