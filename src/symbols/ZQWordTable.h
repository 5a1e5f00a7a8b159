// The different words of a preprocessed text, and the text as a sequence of words.
#pragma once

#include <span>
#include <vector>

namespace zmatrix {

struct WordTable {
  struct Word {
    std::span<const int> letters;
    int count;
  };
  static constexpr int lineFeed = -1;  ///< in `sequence`: one or more line ends between two words
  static constexpr int leftOut = -2;   ///< in `sequence`: a word that is too long

  std::vector<Word> words;    ///< in the order of their first occurrence
  std::vector<int> sequence;  ///< indices into `words`, lineFeed or leftOut
  int numberLeftOut = 0;
};

/// Splits a text at white characters. Words of more than `mostLetters` are left out. The spans of letters point into `text`.
/// Throws std::bad_alloc.
WordTable wordsOfText(std::span<const int> text, int mostLetters);

}  // namespace zmatrix
