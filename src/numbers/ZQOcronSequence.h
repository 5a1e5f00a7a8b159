// Sequences of ocrons: one item a character, and an end symbol behind each ocron. A new array is the caller's to release through
// systemFree.
#pragma once

namespace zmatrix {

/// The ocrons of integers, one behind the other, each followed by `endSymbol` if that isn't 0. A number without an ocron, or
/// whose ocron doesn't evaluate to it, is left out with a message at level 0. `logPath`: null, or a file that gets a line a
/// number. Null without memory.
int* createOcronSequenceFromIntegerSequence(const int* sequence, int length, int ocronType, int* resultLength, int endSymbol,
                                            const char* logPath);
/// The same with type and end symbol of the thread and no log.
int* createOcronSequenceFromIntegerSequenceUseGlobalPars(const int* sequence, int length, int* resultLength);

/// Inside the library: the same, and `isLeftOut`, if not null, gets 1 for each number that was left out, else 0.
int* createOcronSequence(const int* sequence, int length, int ocronType, int* resultLength, int endSymbol, const char* logPath,
                         char* isLeftOut);

/// The items up to the first end symbol as a string. The end symbol is in the string and in *length. Null, with *length 0, if it
/// is not among the first 32768 items, or the first `readable`.
char* getOcronStringFromOcronIntArray(const int* items, int endSymbol, int* length);
char* getOcronStringFromOcronIntArray(const int* items, int readable, int endSymbol, int* length);

/// Reads a file of ocrons: the symbols as items, each run of white space as one `endSymbol` if that is above 0. At most
/// `maximalItems` items, 0 for all. *status: 1 done; 0 stopped at a character that is no symbol, which is the last item; -1 the
/// file can't be read; -2 no memory; -3 nothing but white space. Null for the negative ones.
int* readIntegerSequenceFromASCIOcronFile(const char* path, int maximalItems, int endSymbol, int* count, int* status);

}  // namespace zmatrix
