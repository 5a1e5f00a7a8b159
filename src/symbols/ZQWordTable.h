// The words of a preprocessed text, each once, and the text as their sequence.
#pragma once

#include <span>
#include <vector>

namespace zmatrix {

struct WordTable {
  struct Word {
    std::span<const int> letters;
    int count;
  };
  static constexpr int lineFeed = -1;  ///< in the sequence, for one or several line ends between two words
  static constexpr int leftOut = -2;   ///< and for a word that is too long

  std::vector<Word> words;    ///< in the order in which they first occur
  std::vector<int> sequence;  ///< indices of `words`
  int numberLeftOut = 0;
};

/// A word is what stands between white characters. Words of more than `mostLetters` are left out. The letters lie in `text`.
/// Throws std::bad_alloc.
WordTable wordsOfText(std::span<const int> text, int mostLetters);

}  // namespace zmatrix
