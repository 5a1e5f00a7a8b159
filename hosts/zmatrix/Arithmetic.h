// The number functions of the process that the arithmetic codings need: primes, ocrons, gocrons.
#pragma once

#include <optional>
#include <string>
#include <vector>

/// The symbol behind each ocron of a sequence.
constexpr int ocronEnd = 10;

/// Makes a table of primes that reaches as far as a coding needs it for these numbers, and sets the process's ocrons to a type (0
/// leaves them). Throws a Failure if there is no memory for it.
void prepareArithmetic(int preprocessing, int ocronType, const std::vector<int>& numbers);

/// Sets the process's ocrons to a type, with the usual digits.
void setOcronType(int ocronType);

struct PrimePower {
  int prime;
  int power;
};
/// By ascending prime; none for numbers below 2.
std::vector<PrimePower> factorsOf(int number);

/// The ocron of a number, if it has one of this type.
std::optional<std::string> ocronOf(int ocronType, int number);
/// The number that an ocron spells, if it spells one of 32 bits.
std::optional<int> valueOfOcron(int ocronType, const std::string& ocron);
/// The ocron read as one number, none if it has none or one beyond 64 bits.
std::optional<long long> gocronOf(int ocronType, int number);

/// The number that a gocron stands for, if it stands for one of 32 bits.
std::optional<int> valueOfGocron(int ocronType, long long gocron);

/// What a coding other than an ocron makes of a number, of 64 bits, and what number it stands for again. None where it has none.
std::optional<long long> encode(int preprocessing, int ocronType, int number);
std::optional<int> decode(int preprocessing, int ocronType, int stored);
