// Cuts a text into phrases, at the ends of sentences and at blank lines. The functions are pure and take one value per character.
#pragma once

#include <span>

namespace zmatrix {

/// A half-open range of indices of a text.
struct TextPhrase {
  int start;
  int end;
};

/// The phrase that begins at the first non-white value from `position` on; values below 33 and 160 are white. At the end of the
/// text it is empty; otherwise it ends behind `position`.
TextPhrase nextTextPhrase(std::span<const int> text, int position);

}  // namespace zmatrix
