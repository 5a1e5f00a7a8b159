// Sequences of gocrons, one number an ocron, and the order of numbers by their gocrons. A new array is the caller's to release
// through systemFree.
#pragma once

#include <zmatrix/zq_types.h>

namespace zmatrix {

/// The gocrons of the ocrons of a sequence, each ended by `endSymbol`, the last one by that or the end; -1 for an ocron that
/// can't be read. Null, with *resultLength 0: no sequence (*status 0), a type outside 3 to 7, an item that is no symbol of the
/// type (message at level 0), no memory; *status is 1 then and on success. *maximalValue gets the greatest gocron. `logPath`:
/// null, or a file that gets a line an ocron.
long long* createGoedelSequenceFromOcronSequence(int ocronType, const int* sequence, int length, int endSymbol, int* resultLength,
                                                 int* status, long long* maximalValue, const char* logPath);
/// The same with type and end symbol of the thread and no log.
long long* createGoedelSequenceFromOcronSequenceUseGlobalPars(const int* sequence, int length, int* resultLength);

/// The gocrons of integers with type and end symbol of the thread. Numbers without an ocron are left out.
long long* createLongLongGoedelSequenceFromIntegerSequenceUseGlobalPars(const int* sequence, int length, int* resultLength);
/// The low 32 bits of each.
int* createGoedelSequenceFromIntegerSequenceUseGlobalPars(const int* sequence, int length, int* resultLength);

/// A record a number, in the order given: the number, its gocron, or -1 if it has none, and the place of that among all. Null for
/// no numbers, a type outside 3 to 7 (message at level 0) or no memory.
naturalNumberGocronCodeTag* createGocronCodeIndices(int ocronType, const int* numbers, int count);

/// Sort records 0 to `lastIndex` in place; equal ones change places. By number the low 32 bits are compared.
void gocronQsortByGocronCode(int lastIndex, naturalNumberGocronCodeTag* records);
void gocronQsortByNumber(int lastIndex, naturalNumberGocronCodeTag* records);

}  // namespace zmatrix
