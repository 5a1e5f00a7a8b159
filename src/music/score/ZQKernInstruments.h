// The instruments of kern files, by the codes that are registered for *I tokens.
#pragma once

#include <string_view>

namespace zmatrix {

/// The program of General MIDI, 0 to 127, that is closest to an instrument; -1 for an unknown code. `code` is the text behind *I,
/// for instance "violn"; a number at its end numbers players of one instrument and is ignored.
int programOfKernInstrument(std::string_view code);

/// The same for a class of instruments, the text behind *IC; only for classes with a sound of their own.
int programOfKernInstrumentClass(std::string_view code);

}  // namespace zmatrix
