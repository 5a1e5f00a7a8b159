// Where a text is cut into phrases: at the ends of sentences and at blank lines. Pure functions over one value a character.
#pragma once

#include <span>

namespace zmatrix {

/// A half-open range of indices of a text.
struct TextPhrase {
  int start;
  int end;
};

/// The phrase that begins at the first value from `position` on that is not white: values below 33 and 160 are. It is empty at
/// the end of the text, and otherwise ends behind `position`.
TextPhrase nextTextPhrase(std::span<const int> text, int position);

}  // namespace zmatrix
