// The two tables between the DOS code page ("asci") and the ANSI code page, and the functions that print or read single-byte text
// through them. Both tables are the identity below 128, and no entry above 0 maps to 0.
#pragma once

#include <array>

namespace zmatrix {

using CharacterTable = std::array<int, 256>;

extern const CharacterTable asci2ansiTAB;
extern const CharacterTable ansi2asciTAB;

/// Converts a terminated text in place.
void ansi2asci(char* text);
void asci2ansi(char* text);

/// Reads a line from standard input, at most `size` characters, and converts it through asci2ansiTAB. A line end in first
/// position is kept; a later one is replaced by the terminator, as is the end of the input. A text that fills the buffer has no
/// terminator.
void zqGets(char* buffer, int size);

/// Prints an ANSI character through `format` as its one integer argument, converted through ansi2asciTAB. Does nothing for a
/// character above 255 and for a format that takes more than one int.
void printfANSI(const char* format, unsigned character);

/// The same through the diagnostic channel.
void dbPrintfANSI(int level, const char* format, unsigned character);

}  // namespace zmatrix
