#include "numbers/ZQGocron.h"

#include <climits>
#include <cstring>

#include "frame/ZQDebugChannel.h"
#include "frame/ZQSystemOwned.h"
#include "numbers/ZQExactLogarithm.h"
#include "numbers/ZQOcronEncoder.h"
#include "numbers/ZQOcronEvaluator.h"
#include "numbers/ZQOcronParameters.h"

namespace zmatrix {

namespace {

constexpr long long failure = -1;
constexpr char unknownDigit = '?';
constexpr int mostDigits = 63;

int numberBase(int ocronType) {
  const int base = getGlobalGocronParameters()->gocronNumberBase;
  return base != 0 ? base : ocronAlphabet(ocronType).numberBase;
}

/// The digit of a symbol. False for a character that is no symbol of any type.
bool digitOf(const gocronParametersTag* parameters, char symbol, int* digit) {
  switch (symbol) {
    case '*':
      *digit = parameters->gocronASTERISKValue;
      return true;
    case 'P':
      *digit = parameters->gocronPValue;
      return true;
    case '2':
      *digit = parameters->gocronTWOValue;
      return true;
    case '^':
      *digit = parameters->gocronPOWValue;
      return true;
    case 'Q':
      *digit = parameters->gocronQValue;
      return true;
    default:
      return false;
  }
}

/// The symbol that is written for a digit, 0 if there is none. In type 7 `^` has the digit of `*`.
char symbolOfDigit(int ocronType, long long digit) {
  const gocronParametersTag* parameters = getGlobalGocronParameters();
  for (const char symbol : ocronAlphabet(ocronType).digitSymbols) {
    int value = 0;
    digitOf(parameters, ocronType == 7 && symbol == '^' ? '*' : symbol, &value);
    if (value == digit) return symbol;
  }
  return 0;
}

/// Calls `take` with each symbol and its weight, from the last symbol down to `first`. False if a weight is negative or `take`
/// returns false.
template <class Take>
bool walkDigits(const char* ocron, int length, int first, long long base, Take take) {
  long long weight = 1;
  for (int i = length - 1; i >= first; i--) {
    if (!take(ocron[i], weight)) return false;
    weight = wrappedProduct(weight, base);
    if (weight < 0) return false;
  }
  return true;
}

/// The sums of the weights of each symbol; the first symbol of the ocron is not counted. takeFrom returns false on failure.
struct SymbolSums {
  long long two = 0, asterisk = 0, prime = 0, power = 0, repetition = 0;

  bool takeFrom(const char* ocron, int length) {
    return walkDigits(ocron, length, 1, 2, [this](char symbol, long long weight) {
      long long* sum = sumOf(symbol);
      if (sum == nullptr) return false;
      *sum = wrappedSum(*sum, weight);
      return *sum >= 0;
    });
  }

 private:
  long long* sumOf(char symbol) {
    switch (symbol) {
      case '2':
        return &two;
      case '*':
        return &asterisk;
      case 'P':
        return &prime;
      case '^':
        return &power;
      case 'Q':
        return &repetition;
      default:
        return nullptr;
    }
  }
};

bool isTwoAlone(const char* ocron, int length) {
  return length == 1 && ocron[0] == '2';
}

}  // namespace

long long ocronToGocron(int ocronType, const char* ocron, int length) {
  if (!isOcronType(ocronType) || length == 0) return failure;
  if (length < 0) return 0;
  if (ocron == nullptr) return failure;
  long long sum = 0;
  const gocronParametersTag* parameters = getGlobalGocronParameters();
  const bool isRead = walkDigits(ocron, length, 0, numberBase(ocronType), [&sum, parameters](char symbol, long long weight) {
    int digit = 0;
    if (!digitOf(parameters, symbol, &digit)) return false;
    sum = wrappedSum(sum, wrappedProduct(digit, weight));
    return sum >= 0;
  });
  return isRead ? sum : failure;
}

char* gocronToOcron(int ocronType, long long gocron, int* length) {
  *length = 0;
  if (gocron < 0 || !isOcronType(ocronType)) return nullptr;
  const int base = numberBase(ocronType);
  if (base < 2) return nullptr;
  auto* ocron = systemMallocArray<char>(mostDigits + 1);
  if (ocron == nullptr) return nullptr;
  long long place = 1;
  while (place <= gocron / base) place *= base;
  int written = 0;
  for (; place >= 1; place /= base) {
    const long long digit = gocron / place;
    gocron -= digit * place;
    char symbol = symbolOfDigit(ocronType, digit);
    if (symbol == 0 && ocronType != 6) symbol = unknownDigit;
    if (symbol != 0) ocron[written++] = symbol;
  }
  ocron[written] = 0;
  *length = written;
  return ocron;
}

long long ocronToGocron1(int ocronType, const char* ocron, int length) {
  if (!isOcronType(ocronType)) return failure;
  if (ocron == nullptr || length < 1) return 0;
  if (isTwoAlone(ocron, length)) return 1;
  SymbolSums sums;
  if (!sums.takeFrom(ocron, length)) return failure;
  const long long sum =
      wrappedSum(wrappedSum(sums.two, sums.asterisk), wrappedSum(wrappedSum(sums.prime, sums.power), sums.repetition));
  return sum < 0 ? failure : sum;
}

lQuaternionTag ocronToLQGocron(int ocronType, const char* ocron, int length) {
  if (!isOcronType(ocronType) || ocronType == 5 || ocronType == 6 || ocron == nullptr || length < 1) return {};
  if (isTwoAlone(ocron, length)) return {1, 0, 0, 0};
  SymbolSums sums;
  if (!sums.takeFrom(ocron, length) || memchr(ocron + 1, 'Q', static_cast<size_t>(length - 1)) != nullptr)
    return {failure, failure, failure, failure};
  return {sums.two / 2, sums.asterisk, sums.prime, sums.power};
}

long long intToLongLongGocron(int ocronType, int number) {
  int length = 0, capacity = 0, compareNumber = 0, stackDepth = 0;
  const SystemOwned<char> ocron(intToOcron(ocronType, &length, &capacity, number, &compareNumber, &stackDepth));
  return ocron != nullptr ? ocronToGocron(ocronType, ocron.get(), length) : failure;
}

long long intToGocron(int ocronType, int number) {
  return intToLongLongGocron(ocronType, number);
}

long long gocronToLongLong(int ocronType, long long gocron) {
  int length = 0, stackDepth = 0;
  const SystemOwned<char> ocron(gocronToOcron(ocronType, gocron, &length));
  return ocron != nullptr ? ocronToLongLong(ocronType, ocron.get(), length, &stackDepth) : failure;
}

int gocronToInt(int ocronType, long long gocron) {
  const long long number = gocronToLongLong(ocronType, gocron);
  return number >= INT_MAX ? -1 : static_cast<int>(number);
}

int incrementOcron(int ocronType, char* ocron, int capacity, int* length) {
  if (ocron == nullptr || capacity < 1) return -1;
  if (*length == 0) {
    const char symbol = isOcronType(ocronType) ? symbolOfDigit(ocronType, 0) : '\0';
    if (symbol == 0) {
      dbPrintf(0, "error from increment ocron: no ocron char has value 0!\n");
      return -1;
    }
    ocron[0] = symbol;
    ocron[1] = 0;
    *length = 1;
    return 1;
  }
  // An unreadable ocron counts as -1, so that the next one is that of 0.
  const long long gocron = ocronToGocron(ocronType, ocron, *length);
  const SystemOwned<char> next(gocronToOcron(ocronType, wrappedSum(gocron, 1), length));
  if (next == nullptr || *length == 0) return -1;
  memcpy(ocron, next.get(), static_cast<size_t>(*length) + 1);
  return 1;
}

}  // namespace zmatrix
