// The library's number functions that the arithmetic codings use: primes, ocrons, gocrons. Their parameters are those of the
// calling thread, their tables of primes those of the process.
#pragma once

#include <optional>
#include <string>
#include <vector>

/// The symbol that ends each ocron of a sequence.
constexpr int ocronEnd = 10;

/// Makes the table of primes that a coding needs for these numbers, and sets the ocron type unless it is 0. Throws a Failure if
/// memory runs out.
void prepareArithmetic(int preprocessing, int ocronType, const std::vector<int>& numbers);

/// Sets the ocron type, with the default digits of gocrons.
void setOcronType(int ocronType);

struct PrimePower {
  int prime;
  int power;
};
/// The prime factors, ascending; empty for numbers below 2.
std::vector<PrimePower> factorsOf(int number);

/// The ocron of a number; null if it has none of this type.
std::optional<std::string> ocronOf(int ocronType, int number);
/// The value of an ocron; null if it isn't between 1 and 2147483647.
std::optional<int> valueOfOcron(int ocronType, const std::string& ocron);
/// The gocron of a number; null if it has no ocron, or if the gocron doesn't fit 64 bits.
std::optional<long long> gocronOf(int ocronType, int number);
/// The value of a gocron; null if it isn't between 1 and 2147483647.
std::optional<int> valueOfGocron(int ocronType, long long gocron);

/// The code of a number in any arithmetic coding but the ocrons, and the number of a code. Null if there is none.
std::optional<long long> encode(int preprocessing, int ocronType, int number);
std::optional<int> decode(int preprocessing, int ocronType, int stored);
