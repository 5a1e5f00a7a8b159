// Operations on the links from symbols to their phrases, which learning sets only for the symbols of its own text: refreshing all
// links, and expanding any symbol.
#pragma once

class ZQMatrix;

namespace zmatrix {

/// Sets the link of every symbol of every level to the present position of its phrase; a symbol without a phrase loses its link.
/// Scans the block once. Returns the number of symbols with a phrase.
int refreshSymbolLinks(ZQMatrix* matrix);

/// The phrase of a symbol of the current sub-matrix, also if its path contains the highest slot in use. Returns a new array of
/// `*length` integers that the caller frees; null, with length 0, if the symbol has no phrase or memory has run out.
int* createPhraseOfSymbol(ZQMatrix* matrix, int symbol, int* length);

}  // namespace zmatrix
