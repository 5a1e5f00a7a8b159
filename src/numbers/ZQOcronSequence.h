// Sequences of ocrons: one item per character, and an end symbol behind each ocron. New arrays are released by the caller through
// systemFree.
#pragma once

namespace zmatrix {

/// The ocrons of integers, one behind the other, each followed by `endSymbol` if that isn't 0. A number without an ocron, or
/// whose ocron doesn't evaluate to it, is left out with a message at level 0. `logPath`: null, or a file that gets one line per
/// number. Null if memory runs out.
[[nodiscard]] int* createOcronSequenceFromIntegerSequence(const int* sequence, int length, int ocronType, int* resultLength,
                                                          int endSymbol, const char* logPath);
/// The same with the thread's type and end symbol and without a log.
[[nodiscard]] int* createOcronSequenceFromIntegerSequenceUseGlobalPars(const int* sequence, int length, int* resultLength);

/// Inside the library: the same; `isLeftOut`, if not null, gets 1 for each number that was left out, else 0.
[[nodiscard]] int* createOcronSequence(const int* sequence, int length, int ocronType, int* resultLength, int endSymbol,
                                       const char* logPath, char* isLeftOut);

/// The items up to the first end symbol as a string, which includes the end symbol, as *length does. Null, with *length 0, if
/// there is no end symbol among the first 32768 items, or the first `readable`.
char* getOcronStringFromOcronIntArray(const int* items, int endSymbol, int* length);
char* getOcronStringFromOcronIntArray(const int* items, int readable, int endSymbol, int* length);

/// Reads a file of ocrons: each symbol becomes an item, each run of white space one `endSymbol` if that is above 0. Reads at most
/// `maximalItems` items, all for 0. *status: 1 done; 0 stopped at a character that is no symbol, which becomes the last item; -1
/// the file can't be read; -2 no memory; -3 nothing but white space. Null for the negative ones.
int* readIntegerSequenceFromASCIOcronFile(const char* path, int maximalItems, int endSymbol, int* count, int* status);

}  // namespace zmatrix
