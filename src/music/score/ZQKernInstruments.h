// The instruments that kern files name, by the codes that are registered for *I tokens.
#pragma once

#include <string_view>

namespace zmatrix {

/// The program of General MIDI, 0 to 127, that comes nearest to an instrument; -1 for a code that isn't known. `code` is what
/// stands behind *I, for instance "violn"; a number at its end tells players of one instrument apart and doesn't count.
int programOfKernInstrument(std::string_view code);

/// The same for a class of instruments, what stands behind *IC: only for classes that have a sound of their own.
int programOfKernInstrumentClass(std::string_view code);

}  // namespace zmatrix
