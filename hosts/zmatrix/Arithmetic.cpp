#include "Arithmetic.h"

#include <zmatrix/zq.h>

#include <algorithm>
#include <climits>
#include <cmath>

#include "Failure.h"

namespace {

constexpr double leastTable = 1000000;
constexpr double largestTable = INT_MAX;

double reachOfTable = 0;

void makeTable(double reach) {
  reach = std::clamp(reach, leastTable, largestTable);
  if (reach <= reachOfTable) return;
  int count = 0;
  if (zq_initPrimes(0, static_cast<unsigned>(reach), &count) == nullptr) {
    throw Failure{ExitCode::limit, "no memory for a table of the primes up to " + std::to_string(static_cast<long long>(reach))};
  }
  reachOfTable = reach;
}

// An upper bound of the prime with this index, and so of the non-prime with this index.
double reachOfIndex(double index) {
  return index < 6 ? 15 : index * (std::log(index) + std::log(std::log(index)));
}

double largestOf(const std::vector<int>& numbers) {
  double largest = 0;
  for (const int number : numbers) largest = std::max(largest, std::fabs(number));
  return largest;
}

// A table of `leastTable` reaches beyond the square root of every 32-bit number, which is enough to find all factors.
double largestFactorOf(const std::vector<int>& numbers) {
  makeTable(leastTable);
  double largest = 0;
  for (const int number : numbers) {
    const std::vector<PrimePower> factors = factorsOf(number);
    if (!factors.empty()) largest = std::max<double>(largest, factors.back().prime);
  }
  return largest;
}

// How far the table has to reach for a coding. Ocrons of types 3, 4, 5 and 7 contain the indexes of prime factors; those of type
// 6 that of the number itself.
double reachFor(int preprocessing, const std::vector<int>& numbers) {
  switch (preprocessing) {
    case ZQPreProcessingTypeOcron:
    case ZQPreProcessingTypeGocron:
    case ZQPreProcessingTypeVirtualOcron:
    case ZQPreProcessingTypeVirtualGocron:
      return largestFactorOf(numbers);
    case ZQPreProcessingTypeGocronValue:
      return leastTable;  // larger values don't fit the matrix anyway
    case ZQPreProcessingTypeNthPrime:
    case ZQPreProcessingTypeNthNotPrime:
      return reachOfIndex(largestOf(numbers));
    default:
      return largestOf(numbers);
  }
}

template <class Value>
std::optional<Value> ifPositive(Value value) {
  if (value < 1) return std::nullopt;
  return value;
}

std::optional<int> asInt(long long value) {
  if (value < 1 || value > INT_MAX) return std::nullopt;
  return static_cast<int>(value);
}

// If the number lies beyond the table, makes a larger table and looks again.
template <class Look>
int inTable(double reach, Look look) {
  const int found = look();
  if (found >= 0 || reach <= reachOfTable || reach > largestTable) return found;
  makeTable(reach);
  return look();
}

}  // namespace

void prepareArithmetic(int preprocessing, int ocronType, const std::vector<int>& numbers) {
  makeTable(1.25 * reachFor(preprocessing, numbers));  // a continuation may go somewhat beyond the series
  if (ocronType != 0) setOcronType(ocronType);
}

void setOcronType(int ocronType) {
  zq_setGlobalGocronParametersToDefaults();
  gocronParametersTag parameters = *zq_getGlobalGocronParameters();
  parameters.ocronType = ocronType;
  parameters.ocronEndSymbol = ocronEnd;
  zq_setGlobalGocronParameters(&parameters);
}

std::vector<PrimePower> factorsOf(int number) {
  std::vector<PrimePower> factors;
  int count = 0;
  int sigma = 0;
  const tagPrimeFact* found = number < 2 ? nullptr : zq_getPrimeFactors(number, &count, &sigma, 0);
  for (int at = 1; found != nullptr && at <= count; ++at) factors.push_back({found[at].prime, found[at].power});
  return factors;
}

std::optional<std::string> ocronOf(int ocronType, int number) {
  int length = 0;
  int capacity = 0;
  int value = 0;
  int depth = 0;
  char* ocron = number < 1 ? nullptr : zq_intToOcron(ocronType, &length, &capacity, number, &value, &depth);
  std::optional<std::string> result;
  if (ocron != nullptr && value == number) result = ocron;
  s_Free(ocron);
  return result;
}

std::optional<int> valueOfOcron(int ocronType, const std::string& ocron) {
  std::string copy = ocron;
  int depth = 0;
  return asInt(zq_ocronToLongLong(ocronType, copy.data(), static_cast<int>(copy.size()), &depth));
}

std::optional<long long> gocronOf(int ocronType, int number) {
  // gocrons of type 7 have no digit for *
  const std::optional<std::string> ocron = ocronOf(ocronType, number);
  if (!ocron || (ocronType == 7 && ocron->find('*') != std::string::npos)) return std::nullopt;
  const long long gocron = zq_intToGocron(ocronType, number);
  if (gocron < 0) return std::nullopt;
  return gocron;
}

std::optional<int> valueOfGocron(int ocronType, long long gocron) {
  return asInt(zq_gocronToLongLong(ocronType, gocron));
}

std::optional<long long> encode(int preprocessing, int ocronType, int number) {
  switch (preprocessing) {
    case ZQPreProcessingTypeGocronValue:
      return ifPositive(zq_gocronToLongLong(ocronType, number));
    case ZQPreProcessingTypePrimePi:
      return ifPositive<long long>(zq_primePi(number));
    case ZQPreProcessingTypeNthPrime:
      return ifPositive<long long>(zq_nthPrime(number));
    case ZQPreProcessingTypeNotPrimePi:
      return ifPositive<long long>(zq_notPrimePi(number));
    case ZQPreProcessingTypeNthNotPrime:
      return ifPositive<long long>(zq_nthNotPrime(number));
    default:
      return gocronOf(ocronType, number);
  }
}

std::optional<int> decode(int preprocessing, int ocronType, int stored) {
  switch (preprocessing) {
    case ZQPreProcessingTypeGocronValue:
      return asInt(zq_intToGocron(ocronType, stored));
    case ZQPreProcessingTypePrimePi:
      return asInt(inTable(reachOfIndex(stored), [=] { return zq_nthPrime(stored); }));
    case ZQPreProcessingTypeNthPrime:
      return asInt(zq_primePi(stored));
    case ZQPreProcessingTypeNotPrimePi:
      return asInt(inTable(reachOfIndex(stored), [=] { return zq_nthNotPrime(stored); }));
    case ZQPreProcessingTypeNthNotPrime:
      return asInt(zq_notPrimePi(stored));
    default:
      return valueOfGocron(ocronType, stored);
  }
}
