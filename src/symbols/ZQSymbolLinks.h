// What hosts need beyond the update's own links between a level of symbols and the level below: links of all symbols set anew,
// and a phrase for every symbol.
#pragma once

class ZQMatrix;

namespace zmatrix {

/// Sets the link of every symbol of every level to where its phrase lies now; a symbol without a phrase loses its link. One scan
/// of the block. The number of symbols that lead to a phrase.
int refreshSymbolLinks(ZQMatrix* matrix);

/// The phrase of a symbol of the current sub-matrix, coordinate by coordinate; also one whose path goes through the highest slot.
/// A new array of `*length` integers that the caller frees; null, with length 0, if the symbol has none or memory has run out.
[[nodiscard]] int* createPhraseOfSymbol(ZQMatrix* matrix, int symbol, int* length);

}  // namespace zmatrix
