#include "numbers/ZQOcronEvaluator.h"

#include <climits>
#include <cmath>
#include <cstring>
#include <string_view>

#include "frame/ZQSentence.h"
#include "frame/ZQSystemOwned.h"
#include "numbers/ZQLogarithmicOcronMachine.h"
#include "numbers/ZQOcronMachine.h"
#include "numbers/ZQOcronParameters.h"
#include "numbers/ZQSharedPrimes.h"

namespace zmatrix {

namespace {

constexpr int done = OcronMachine::done;

// --- evaluation

template <class Machine>
long long run(Machine& machine, const char* ocron, int length) {
  const OcronDialect& dialect = machine.dialect;
  for (int i = 0; i < length; i++) {
    if (i > 0 && machine.count() < 1) {
      dbPrintf(2, "%s: illegal ocronStackPtr during evaluation : %d\n", dialect.name, machine.count());
      return dialect.codes.duringEvaluation;
    }
    const int result = machine.step(ocron[i]);
    if (result != done) return result;
    if (machine.top() < 1) {
      dbPrintf(2, "%s: illegal value for ocronStack[0] : %d\n", dialect.operatorName, static_cast<int>(machine.top()));
      return dialect.codes.top;
    }
  }
  const int result = dialect.fillsIn ? machine.multiplyRest() : done;
  if (result != done) return result;
  if (machine.count() == 1) return machine.top();
  dbPrintf(2, "%s: illegal ocronStackPtr on return : %d\n", dialect.operatorName, machine.count());
  return dialect.codes.onReturn;
}

// --- checks before the evaluation

constexpr int noLength = -1, noString = -2, wrongLength = -3, noPrimes = -4, illegalCharacter = -4;

/// Returns 1, or a code.
int checkString(const char* name, const char* ocron, int length) {
  if (length < 1) return noLength;
  if (ocron == nullptr) return noString;
  const size_t trueLength = strlen(ocron);
  if (trueLength == static_cast<size_t>(length)) return done;
  dbPrintf(0, "%s: strlen(ocronString) %d != lengthOfOcron: %d\n", name, static_cast<int>(trueLength), length);
  return wrongLength;
}

int checkPrimes(const char* name) {
  if (SharedPrimes<int>::table().exists()) return done;
  dbPrintf(0, "%s: primeNumbers not initialized! \n", name);
  return noPrimes;
}

char endSymbolOfThread() {
  return static_cast<char>(getGlobalGocronParameters()->ocronEndSymbol);
}

int checkSymbol(const char* name, std::string_view symbols, char symbol) {
  if (symbols.find(symbol) != std::string_view::npos) return done;
  dbPrintf(0, "%s: illegal char found in virtual ocron: %c\n", name, symbol);
  return illegalCharacter;
}

/// Ends the string at its first end symbol. Returns 1, or a code.
int cutAtEndSymbol(const char* name, std::string_view symbols, char* ocron, int* length) {
  const char endSymbol = endSymbolOfThread();
  for (int i = 0; i < *length; i++) {
    if (ocron[i] == endSymbol) {
      ocron[i] = 0;
      *length = i;
      break;
    }
    const int result = checkSymbol(name, symbols, ocron[i]);
    if (result != done) return result;
  }
  return done;
}

long long evaluate(const OcronDialect& dialect, char* ocron, int length, int* stackDepth) {
  const PrimesHeld held;
  *stackDepth = 0;
  int result = checkString(dialect.name, ocron, length);
  if (result == done) result = checkPrimes(dialect.name);
  if (result == done) result = cutAtEndSymbol(dialect.name, dialect.symbols, ocron, &length);
  if (result != done) return result;
  OcronMachine machine(dialect, stackDepth);
  return run(machine, ocron, length);
}

// --- strings as exponents

/// The string with `times` 2s before it and `times` ^s behind it: 2 to the power of its value, or with two of each 2 to the power
/// of that. Null if memory runs out.
SystemOwned<char> asExponent(const char* ocron, int length, int times) {
  SystemOwned<char> text(systemMallocArray<char>(length + 2LL * times + 1));
  if (text == nullptr) return text;
  char* end = text.get();
  end = static_cast<char*>(memset(end, '2', static_cast<size_t>(times))) + times;
  end = static_cast<char*>(memcpy(end, ocron, static_cast<size_t>(length))) + length;
  end = static_cast<char*>(memset(end, '^', static_cast<size_t>(times))) + times;
  *end = 0;
  return text;
}

/// Evaluates 2 to the power of the string: returns the value, or its logarithm with the base in *logBase; below 1 on failure.
long long evaluateAsExponent(const char* ocron, int length, int times, int* stackDepth, int* logBase) {
  if (length > INT_MAX - 2 * times) return 0;
  const SystemOwned<char> text = asExponent(ocron, length, times);
  if (text == nullptr) return 0;
  const int wholeLength = length + 2 * times;
  const long long value = ocron4ToLongLong(text.get(), wholeLength, stackDepth);
  if (value > 0) {
    *logBase = 0;
    return value;
  }
  return ocron4ToLogLongLong(text.get(), wholeLength, stackDepth, logBase);
}

}  // namespace

long long ocron3ToLongLong(char* ocron, int length, int* stackDepth) {
  return evaluate(dialect3, ocron, length, stackDepth);
}

long long ocron4ToLongLong(char* ocron, int length, int* stackDepth) {
  return evaluate(dialect4, ocron, length, stackDepth);
}

long long ocron5ToLongLong(char* ocron, int length, int* stackDepth) {
  return evaluate(dialect5, ocron, length, stackDepth);
}

long long ocron4ToLogLongLong(char* ocron, int length, int* stackDepth, int* logBase) {
  const PrimesHeld held;
  *stackDepth = 0;
  int result = checkString(logarithmicDialect.name, ocron, length);
  if (result == done) result = checkPrimes(logarithmicDialect.name);
  if (result != done) return result;
  LogarithmicOcronMachine machine(stackDepth, logBase);
  return run(machine, ocron, length);
}

long long ocron6ToLongLong(char* ocron, int length, int* stackDepth) {
  static constexpr const char* name = "ocron6ToInt";
  const PrimesHeld held;
  *stackDepth = 0;
  int result = checkString(name, ocron, length);
  if (result == done) result = checkPrimes(name);
  const char endSymbol = endSymbolOfThread();
  for (int i = 0; result == done && i < length; i++)
    if (ocron[i] != endSymbol) result = checkSymbol("ocron6ToLongLong", "P*", ocron[i]);
  if (result != done) return result;

  const PrimeTable<int>& table = SharedPrimes<int>::table();
  int value = 1;
  for (int i = 0; i < length && value >= 0; i++) {
    if (ocron[i] == 'P')
      value = table.nthPrime(value);
    else if (ocron[i] == '*')
      value = table.nthNotPrime(value);
  }
  return value;
}

long long ocron7ToLongLong(char* ocron, int length, int* stackDepth, int* logBase) {
  static constexpr const char* name = "ocron7ToLongLong";
  const PrimesHeld held;
  *logBase = *stackDepth = 0;
  int result = checkString(name, ocron, length);
  if (result == done) result = cutAtEndSymbol(name, dialect4.symbols, ocron, &length);
  if (result != done) return result;
  const long long plain = ocron4ToLongLong(ocron, length, stackDepth);
  if (plain > 0) return plain;

  const double two = std::log(2.0);
  const long long once = evaluateAsExponent(ocron, length, 1, stackDepth, logBase);
  if (once > 0) return *logBase != 0 ? once : nearWholeNumber(std::log(static_cast<double>(once)) / two);
  const long long twice = evaluateAsExponent(ocron, length, 2, stackDepth, logBase);
  if (twice <= 0) {
    *logBase = 0;
    return 0;
  }
  const double logarithm = std::log(static_cast<double>(twice));
  return nearWholeNumber(*logBase != 0 ? logarithm / std::log(*logBase) : std::log(logarithm / two) / two);
}

long long ocronToLongLong(int ocronType, char* ocron, int length, int* stackDepth) {
  int logBase = 0;
  switch (ocronType) {
    case 3:
      return ocron3ToLongLong(ocron, length, stackDepth);
    case 4:
      return ocron4ToLongLong(ocron, length, stackDepth);
    case 5:
      return ocron5ToLongLong(ocron, length, stackDepth);
    case 6:
      return ocron6ToLongLong(ocron, length, stackDepth);
    case 7:
      return ocron7ToLongLong(ocron, length, stackDepth, &logBase);
    default:
      return -1;
  }
}

int ocronToint(int ocronType, char* ocron, int length, int* stackDepth) {
  const long long value = ocronToLongLong(ocronType, ocron, length, stackDepth);
  return value > INT_MAX ? -1 : static_cast<int>(value);
}

// clang-format off
int ocron3ToInt(char* ocron, int length, int* stackDepth) { return static_cast<int>(ocron3ToLongLong(ocron, length, stackDepth)); }
int ocron4ToInt(char* ocron, int length, int* stackDepth) { return static_cast<int>(ocron4ToLongLong(ocron, length, stackDepth)); }
int ocron5ToInt(char* ocron, int length, int* stackDepth) { return static_cast<int>(ocron5ToLongLong(ocron, length, stackDepth)); }
int ocron6ToInt(char* ocron, int length, int* stackDepth) { return static_cast<int>(ocron6ToLongLong(ocron, length, stackDepth)); }
int ocron7ToInt(char* ocron, int length, int* stackDepth, int* logBase) { return static_cast<int>(ocron7ToLongLong(ocron, length, stackDepth, logBase)); }
// clang-format on

}  // namespace zmatrix
