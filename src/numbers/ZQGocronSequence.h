// Sequences of gocrons, one per ocron, and the order of numbers by their gocrons. New arrays are released by the caller through
// systemFree.
#pragma once

#include <zmatrix/zq_types.h>

namespace zmatrix {

/// The gocrons of the ocrons of a sequence. Each ocron ends at `endSymbol`, the last one there or at the end of the sequence. An
/// unreadable ocron gives -1. Null, with *resultLength 0, on failure: no sequence (*status 0); a type outside 3 to 7, an item
/// that is no symbol of the type (message at level 0), no memory (*status 1). *status is 1 on success. *maximalValue gets the
/// greatest gocron. `logPath`: null, or a file that gets one line per ocron.
long long* createGoedelSequenceFromOcronSequence(int ocronType, const int* sequence, int length, int endSymbol, int* resultLength,
                                                 int* status, long long* maximalValue, const char* logPath);
/// The same with the thread's type and end symbol and without a log.
long long* createGoedelSequenceFromOcronSequenceUseGlobalPars(const int* sequence, int length, int* resultLength);

/// The gocrons of integers with the thread's type and end symbol. Numbers without an ocron are left out.
long long* createLongLongGoedelSequenceFromIntegerSequenceUseGlobalPars(const int* sequence, int length, int* resultLength);
/// The same, reduced to the low 32 bits of each gocron.
[[nodiscard]] int* createGoedelSequenceFromIntegerSequenceUseGlobalPars(const int* sequence, int length, int* resultLength);

/// One record per number, in the order given: the number, its gocron (-1 if it has none), and the rank of that gocron among all.
/// Null if there are no numbers, for a type outside 3 to 7 (message at level 0) and if memory runs out.
[[nodiscard]] naturalNumberGocronCodeTag* createGocronCodeIndices(int ocronType, const int* numbers, int count);

/// Sort records 0 to `lastIndex` in place; the sort is not stable. gocronQsortByNumber compares the low 32 bits of the numbers.
void gocronQsortByGocronCode(int lastIndex, naturalNumberGocronCodeTag* records);
void gocronQsortByNumber(int lastIndex, naturalNumberGocronCodeTag* records);

}  // namespace zmatrix
