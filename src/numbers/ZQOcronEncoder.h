// Encoding: an integer becomes an ocron, a postfix program that computes its prime factors and, recursively, the ranks of those
// primes, so that numbers of similar structure get similar strings.
//
// intToOcron3 to intToOcron7 append to `buffer`, a heap block of *capacity + 1 bytes that holds a text of *length characters; a
// null `buffer` starts a new one. They return the buffer, which may have moved, or null if memory runs out, where the buffer is
// released. With a null `buffer` a number without an ocron (types 3 to 5 and 7: below 2; type 6: below 1) gives null. A negative
// number leaves the buffer unchanged. If the 32-bit table of primes doesn't reach the factors, the text is incomplete.
#pragma once

namespace zmatrix {

/// Each prime factor separately: 12 is 2P2*2*.
char* intToOcron3(char* buffer, int* length, int* capacity, int number);
/// Powers of primes: 12 is 2P22^*.
char* intToOcron4(char* buffer, int* length, int* capacity, int number);
/// As type 4, with each run of k P in the whole buffer replaced by the ocron of k and a Q: 11 is 22PQ.
char* intToOcron5(char* buffer, int* length, int* capacity, int number);
/// The path from 1 to the number over primes (P) and non-primes (*): 4 is *P*.
char* intToOcron6(char* buffer, int* length, int* capacity, int number);
/// The same as type 4.
char* intToOcron7(char* buffer, int* length, int* capacity, int number);
/// The same as type 5.
char* intToOcron_X(char* buffer, int* length, int* capacity, int number);

/// A new string of any type, for type 6 without the leading character that stands for 1. Null for a type outside 3 to 7, a number
/// without an ocron or no memory. *compareNumber gets the value that the string evaluates to, -1 for 2147483648 and more;
/// *stackDepth gets the greatest stack depth of that evaluation.
char* intToOcron(int ocronType, int* length, int* capacity, int number, int* compareNumber, int* stackDepth);

}  // namespace zmatrix
