// Encoding: an integer becomes an ocron, the postfix program that spells its prime factors and, in turn, the ranks of those
// primes, so that numbers of a like structure get like strings.
//
// intToOcron3 to intToOcron7 append to `buffer`, a heap block of *capacity + 1 bytes with a text of *length characters, or begin
// a new one for null. They return the buffer, which may have moved, or null without memory, where the buffer is released; for
// null, a number without an ocron gives null (types 3 to 5 and 7: below 2; type 6: below 1). A negative number leaves the buffer
// as it is. The 32-bit table of primes must reach the factors; where it doesn't the text is incomplete.
#pragma once

namespace zmatrix {

/// Each prime factor for itself: 12 is 2P2*2*.
char* intToOcron3(char* buffer, int* length, int* capacity, int number);
/// Powers of primes: 12 is 2P22^*.
char* intToOcron4(char* buffer, int* length, int* capacity, int number);
/// As type 4, and a run of k P in the whole buffer becomes the ocron of k and a Q: 11 is 22PQ.
char* intToOcron5(char* buffer, int* length, int* capacity, int number);
/// The path from 1 to the number over primes (P) and numbers that are none (*): 4 is *P*.
char* intToOcron6(char* buffer, int* length, int* capacity, int number);
/// The same as type 4.
char* intToOcron7(char* buffer, int* length, int* capacity, int number);
/// The same as type 5.
char* intToOcron_X(char* buffer, int* length, int* capacity, int number);

/// A new string of any type, for type 6 without the leading character that stands for 1, or null for a type outside 3 to 7, a
/// number without an ocron or no memory. *compareNumber gets what evaluation of the string gives, -1 for 2147483648 and more;
/// *stackDepth how deep the stack was then.
char* intToOcron(int ocronType, int* length, int* capacity, int number, int* compareNumber, int* stackDepth);

}  // namespace zmatrix
