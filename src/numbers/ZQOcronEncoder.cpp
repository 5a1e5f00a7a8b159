#include "numbers/ZQOcronEncoder.h"

#include <algorithm>
#include <cstring>

#include "frame/ZQDebugChannel.h"
#include "numbers/ZQNumberTheory.h"
#include "numbers/ZQOcronBuffers.h"
#include "numbers/ZQOcronEvaluator.h"
#include "numbers/ZQOcronParameters.h"
#include "numbers/ZQPrimes.h"
#include "numbers/ZQSharedPrimes.h"

namespace zmatrix {

namespace {

/// The text that an encoder appends to. Its buffer is null after an allocation failed.
struct OcronText {
  char* buffer;
  int* length;
  int* capacity;

  void add(char symbol) { buffer = addOcronItem(buffer, length, capacity, symbol); }
  void add(const char* text, int count) { buffer = addOcronString(buffer, length, capacity, text, count); }
  bool isEmpty() const { return *length == 0; }

  /// Allocates the first block for a null buffer. False if there is no memory.
  bool provide() {
    if (buffer != nullptr) return true;
    *length = 0;
    *capacity = firstOcronCapacity;
    buffer = systemMallocArray<char>(*capacity + 1);
    if (buffer != nullptr) buffer[0] = 0;
    return buffer != nullptr;
  }
};

/// Type 3 writes a power of a prime as repeated factors, type 4 as one power.
enum class Powers { repeated, raised };

/// Appends the factors of a number from the greatest to the smallest. `isFirst`: there is no value before them to multiply with.
/// A number below 2, or one that the table of primes can't factor, adds nothing.
void appendFactors(OcronText& text, int number, Powers powers, bool isFirst);

/// Appends the ocron of the prime's rank and a P. A rank is smaller than its prime, so that the recursion ends.
void appendPrime(OcronText& text, int prime, Powers powers) {
  if (prime == 2) {
    text.add('2');
    return;
  }
  appendFactors(text, primePi(prime), powers, true);
  text.add('P');
}

void appendFactors(OcronText& text, int number, Powers powers, bool isFirst) {
  PrimeFactors found;
  if (number < 2 || !factorise(number, &found)) return;
  for (int i = found.count - 1; i >= 0; i--) {
    const tagPrimeFact& factor = found.factors[i];
    for (int n = powers == Powers::repeated ? factor.power : 1; n > 0; n--) {
      appendPrime(text, factor.prime, powers);
      if (powers == Powers::raised && factor.power >= 2) {
        appendFactors(text, factor.power, powers, true);
        text.add('^');
      }
      if (!isFirst) text.add('*');
      isFirst = false;
    }
  }
}

char* encodeFactors(char* buffer, int* length, int* capacity, int number, Powers powers) {
  if (number < 0 || (buffer == nullptr && number < 2)) return buffer;
  const PrimesHeld held;
  OcronText text{buffer, length, capacity};
  if (text.provide()) appendFactors(text, number, powers, text.isEmpty());
  return text.buffer;
}

int lengthOfRun(const char* text) {
  return static_cast<int>(strspn(text, "P"));
}

/// Rewrites each run of two or more P, in a new buffer that replaces the old one.
char* withRepetitions(char* buffer, int* length, int* capacity) {
  if (strstr(buffer, "PP") == nullptr) return buffer;
  int newLength = 0, newCapacity = 0;
  OcronText text{nullptr, &newLength, &newCapacity};
  if (text.provide()) {
    for (const char* from = buffer; *from != 0;) {
      const int run = lengthOfRun(from);
      if (run >= 2) {
        appendFactors(text, run, Powers::raised, true);
        text.add('Q');
      } else {
        text.add(*from);
      }
      from += std::max(run, 1);
    }
  }
  systemFree(buffer);
  *length = newLength;
  *capacity = newCapacity;
  return text.buffer;
}

using Encoder = char* (*)(char*, int*, int*, int);
constexpr Encoder encoders[] = {intToOcron3, intToOcron4, intToOcron5, intToOcron6, intToOcron7};

constexpr int primeType = 6;

}  // namespace

char* intToOcron3(char* buffer, int* length, int* capacity, int number) {
  return encodeFactors(buffer, length, capacity, number, Powers::repeated);
}

char* intToOcron4(char* buffer, int* length, int* capacity, int number) {
  return encodeFactors(buffer, length, capacity, number, Powers::raised);
}

char* intToOcron5(char* buffer, int* length, int* capacity, int number) {
  if (number < 0) return buffer;
  buffer = intToOcron4(buffer, length, capacity, number);
  return buffer != nullptr ? withRepetitions(buffer, length, capacity) : nullptr;
}

char* intToOcron6(char* buffer, int* length, int* capacity, int number) {
  if (number < 0 || (buffer == nullptr && number < 1)) return buffer;
  const PrimesHeld held;
  OcronText text{buffer, length, capacity};
  if (!text.provide()) return nullptr;
  const int begin = *length;
  // From the number down to 1, so that the symbols are found from last to first. A table that doesn't begin with 2 could give a
  // cycle.
  for (int next = 0; number > 1 && text.buffer != nullptr; number = next) {
    const int prime = isPrime(number);
    if (prime < 0) {
      dbPrintf(0, "err intToOcron6(): isPrime() failed with negative value\n");
      break;
    }
    next = prime == 1 ? primePi(number) : notPrimePi(number);
    if (next >= number) break;
    text.add(prime == 1 ? 'P' : '*');
  }
  if (number == 1 && begin == 0) text.add('*');
  if (text.buffer != nullptr) std::reverse(text.buffer + begin, text.buffer + *length);
  return text.buffer;
}

char* intToOcron7(char* buffer, int* length, int* capacity, int number) {
  return intToOcron4(buffer, length, capacity, number);
}

char* intToOcron_X(char* buffer, int* length, int* capacity, int number) {
  return intToOcron5(buffer, length, capacity, number);
}

char* intToOcron(int ocronType, int* length, int* capacity, int number, int* compareNumber, int* stackDepth) {
  *length = *capacity = 0;
  if (getGlobalGocronParameters()->ocronAlgorithm != 0) {
    dbPrintf(0, "err intToOcron(): sorry, currently only ocron algorithm 0 (recursive) is implemented\n");
    return nullptr;
  }
  if (!isOcronType(ocronType)) return nullptr;
  const PrimesHeld held;
  char* ocron = encoders[ocronType - lowestOcronType](nullptr, length, capacity, number);
  if (ocron == nullptr) *length = 0;
  if (ocronType == primeType && *length >= 2) memmove(ocron, ocron + 1, static_cast<size_t>((*length)--));
  const long long value = ocronToLongLong(ocronType, ocron, *length, stackDepth);
  *compareNumber = value < 2147483648LL ? static_cast<int>(value) : -1;
  return ocron;
}

}  // namespace zmatrix
