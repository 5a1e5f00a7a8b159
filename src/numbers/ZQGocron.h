// Gocrons: an ocron read as one number, each symbol a digit. Digits and base are taken from the thread's parameters; a base of 0
// selects the base of the type. A weight or a sum that wraps to a negative number is a failure; one that wraps to a positive
// number is not detected.
#pragma once

#include <zmatrix/zq_types.h>

namespace zmatrix {

/// The gocron of an ocron; -1 for a type outside 3 to 7, a length of 0, a character that is no symbol, and a detected overflow; 0
/// for a negative length.
long long ocronToGocron(int ocronType, const char* ocron, int length);
/// The ocron of a gocron, a new string for systemFree, with `?` for a digit without a symbol; null for a negative gocron, a type
/// outside 3 to 7, a base below 2 or no memory.
char* gocronToOcron(int ocronType, long long gocron, int* length);
/// Depends on the length only: 2 to the power of `length` - 1, less 1; 1 for "2"; -1 as above.
long long ocronToGocron1(int ocronType, const char* ocron, int length);
/// One gocron per symbol: the sum of the weights of its places; all -1 on failure, all 0 for types 5 and 6.
lQuaternionTag ocronToLQGocron(int ocronType, const char* ocron, int length);

/// The gocron of a number's ocron, or -1.
long long intToLongLongGocron(int ocronType, int number);
long long intToGocron(int ocronType, int number);
/// The number of a gocron's ocron, or a code below 1; -1 too for 2147483647 and more.
int gocronToInt(int ocronType, long long gocron);
long long gocronToLongLong(int ocronType, long long gocron);

/// Replaces the text by that of the gocron one higher. Returns 1, or -1 on failure. The text may grow to 64 bytes with its
/// terminator; `capacity` must be 1 or more and is not checked against that.
int incrementOcron(int ocronType, char* ocron, int capacity, int* length);

}  // namespace zmatrix
