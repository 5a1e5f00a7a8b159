#include "numbers/ZQOcronEvaluator.h"

#include <climits>
#include <cmath>
#include <cstring>
#include <string_view>

#include "frame/ZQSentence.h"
#include "frame/ZQSystemOwned.h"
#include "numbers/ZQExactLogarithm.h"
#include "numbers/ZQOcronBuffers.h"
#include "numbers/ZQOcronParameters.h"
#include "numbers/ZQSharedPrimes.h"

namespace zmatrix {

namespace {

/// Products and powers above this, compared as doubles, are not computed. It is 2^63: what is exactly 2^63 passes, and wraps.
constexpr double largestValue = 9.223372036854776e18;

bool overflows(double value) {
  return value > largestValue;
}

/// What an evaluator returns where. A 0 stands for what can't happen in its type.
struct OcronCodes {
  int duringEvaluation, primesTooSmall, valueOfPrime, productOperands, productOverflow, powerOperands, powerOverflow;
  int repetitionOperands, repetitionPrimes, top, onReturn;
};

/// What tells the evaluators of the stack machine apart. The names are those of the messages, which don't agree within a type.
struct OcronDialect {
  const char* name;          ///< as the checks before the evaluation name it
  const char* operatorName;  ///< as operators, top and end name it
  const char* primeName;     ///< as a value below 1 under P names it
  std::string_view symbols;
  bool fillsIn;    ///< a missing trailing operand is 2, and what is left at the end is multiplied
  char powerSign;  ///< between the operands of a power that overflows
  OcronCodes codes;
};

constexpr OcronDialect dialect3 = {
    "ocron3ToLongLong", "ocron3ToLongLong", "ocron3ToLongLongt", "*P2", true, '^', {-5, -6, -7, 0, -9, 0, 0, 0, 0, -10, -11}};
constexpr OcronDialect dialect4 = {
    "ocron4ToLongLong", "ocron4ToLongLong", "ocron4ToLongLong", "*P2^", true, '^', {-5, -6, -7, 0, -9, 0, -11, 0, 0, -12, -13}};
constexpr OcronDialect dialect5 = {
    "ocron5ToLongLong", "ocron5ToInt", "ocron5ToInt", "*P2^Q", false, '*', {-5, -6, -7, -10, -11, -12, -13, -8, -9, -14, -15}};
constexpr OcronDialect logarithmicDialect = {"ocron4ToLogLongLong",
                                             "ocron4ToLogLongLong",
                                             "ocron4ToLogLongLong",
                                             "*P2^",
                                             true,
                                             '^',
                                             {-5, -6, -7, 0, -9, 0, -11, 0, 0, -12, -13}};

// --- the stack machine

constexpr int done = 1;

class OcronMachine {
 public:
  using OfTwoValues = ZQSentence<long long, long long>;

  OcronMachine(const OcronDialect& aDialect, int* stackDepth) : dialect(aDialect), stackDepth_(stackDepth) {}

  const OcronDialect& dialect;

  int count() const { return count_; }
  /// The newest value, 0 if there is none.
  long long top() const { return valueAt(0); }

  /// Runs one symbol: 1, or the code of what was reported.
  int step(char symbol) {
    switch (symbol) {
      case '2':
        return pushTwo();
      case 'P':
        return applyPrime();
      case '*':
        return multiply();
      case '^':
        return raise();
      case 'Q':
        return repeatPrime();
      default:
        return done;
    }
  }

  /// Multiplies what is left, the newest values first.
  int multiplyRest() {
    while (count_ > 1) {
      const int result = multiplyTop();
      if (result != done) return result;
    }
    return done;
  }

 protected:
  long long valueAt(int depth) const { return count_ > depth ? values_[count_ - 1 - depth] : 0; }
  /// The value below the newest.
  long long below() const { return valueAt(1); }

  int pushTwo() {
    push(2);
    if (count_ > *stackDepth_) *stackDepth_ = count_;
    return done;
  }

  /// Two operands there, or filled in with 2: the newest one last.
  bool hasOperands() {
    while (dialect.fillsIn && count_ < 2) push(2);
    return count_ >= 2;
  }

  /// The two newest values become one.
  void combine(long long value) {
    count_--;
    values_[count_ - 1] = value;
  }

  int applyPrime() {
    if (dialect.fillsIn && count_ == 0) pushTwo();
    long long value = top();
    const int result = replaceByPrime(&value, dialect.codes.primesTooSmall);
    if (result == done) values_[count_ - 1] = value;
    return result;
  }

  int multiply() { return hasOperands() ? multiplyTop() : failOperands('*', dialect.codes.productOperands); }

  int multiplyTop() {
    if (overflows(static_cast<double>(below()) * static_cast<double>(top())))
      return failBinary("long long overflow '*' %lld * %lld", dialect.codes.productOverflow);
    combine(wrappedProduct(below(), top()));
    return done;
  }

  int raise() {
    if (!hasOperands()) return failOperands('^', dialect.codes.powerOperands);
    if (overflows(std::pow(static_cast<double>(below()), static_cast<double>(top())))) {
      const bool namesPower = dialect.powerSign == '^';
      return failBinary(
          namesPower ? OfTwoValues("long long overflow '^' %lld ^ %lld") : OfTwoValues("long long overflow '^' %lld * %lld"),
          dialect.codes.powerOverflow);
    }
    combine(powerByProducts(below(), top()));
    return done;
  }

  /// The value below the top goes through P as often as the top says; it grows each time, and soon leaves the table.
  int repeatPrime() {
    if (count_ < 2) return failOperands('*', dialect.codes.repetitionOperands);  // the sign that the message has always named
    long long value = below();
    for (long long times = top(); times > 0; times--) {
      const int result = replaceByPrime(&value, dialect.codes.repetitionPrimes);
      if (result != done) return result;
    }
    combine(value);
    return done;
  }

  /// Reports a failure of the two newest values.
  int failBinary(const OfTwoValues& format, int code) const {
    if (!ZQDebugChannel::shows(2)) return code;
    char text[256];
    printInto(text, sizeof text, format, below(), top());
    dbPrintf(2, "%s: %s\n", dialect.operatorName, text);
    return code;
  }

 private:
  void push(int value) {
    if (count_ >= mostOcronStackValues)
      dbPrintf(2, "pushOnOcronStack: max stack Ptr exceeded!\n");
    else
      values_[count_++] = value;
  }

  int replaceByPrime(long long* value, int codeIfTooSmall) const {
    if (*value >= table_.count()) {
      dbPrintf(2, "%s: number of preInitialized primes (%d) too small for %lld! \n", dialect.operatorName, table_.count(),
               *value);
      return codeIfTooSmall;
    }
    if (*value < 1) {
      dbPrintf(2, "%s: illegal ocron stack value %lld! \n", dialect.primeName, *value);
      return dialect.codes.valueOfPrime;
    }
    *value = table_.primes()[*value - 1];
    return done;
  }

  int failOperands(char symbol, int code) const {
    dbPrintf(2, "%s: illegal ocronStackPtr for operator '%c' %d\n", dialect.operatorName, symbol, count_);
    return code;
  }

  int* stackDepth_;
  const PrimeTable<int>& table_ = SharedPrimes<int>::table();  // held by whoever evaluates
  int count_ = 0;
  long long values_[ocronStackSize];  // the newest is the last
};

// --- the same with logarithms

/// Where an operation would overflow the newest value becomes its logarithm, and stays one until a 2 is pushed. What it is
/// combined with is taken as it stands.
class LogarithmicOcronMachine : public OcronMachine {
 public:
  LogarithmicOcronMachine(int* stackDepth, int* logBase)
      : OcronMachine(logarithmicDialect, stackDepth), logBase_(logBase), base_(SharedPrimes<int>::table().primes()[0]) {}

  int step(char symbol) {
    switch (symbol) {
      case '2':
        mode_ = 0;
        return pushTwo();
      case 'P':
        return mode_ == 0 ? applyPrime() : failPrime();
      case '*':
        hasOperands();
        return mode_ == 0 ? multiplyValues() : multiplyLogarithm();
      case '^':
        hasOperands();
        return mode_ == 0 ? raiseValues() : raiseLogarithm();
      default:
        return done;
    }
  }

 private:
  static constexpr OfTwoValues otherBaseAtProduct =
      "long long overflow (logarithmic representation not possible, different base values) '*' %lld * %lld";
  static constexpr int noPrimeOfLogarithm = -13, noLogarithm = -14, logarithmOverflow = -15;

  int multiplyValues() {
    if (!overflows(static_cast<double>(below()) * static_cast<double>(top()))) return multiply();
    const long long logarithm = longLogFromProductWithBase(below(), top(), base_);
    if (logarithm == 0)
      return failBinary("long long overflow (lo logarithm found)'*' %lld * %lld", dialect.codes.productOverflow);
    if (!takeBase()) return failBinary(otherBaseAtProduct, dialect.codes.productOverflow);
    combine(logarithm);
    return done;
  }

  int multiplyLogarithm() {
    if (*logBase_ != mode_) return failBinary(otherBaseAtProduct, dialect.codes.productOverflow);
    const long long logarithm = longLogFromValueWithBase(top(), *logBase_);
    if (logarithm == 0) return failBinary(otherBaseAtProduct, noLogarithm);
    if (overflows(static_cast<double>(below()) + static_cast<double>(logarithm)))
      return failBinary(
          "long long multiplication Pow overflow (logarithmic representation not possible, different base values) '*' %lld * "
          "%lld",
          logarithmOverflow);
    combine(wrappedSum(below(), logarithm));
    return done;
  }

  int raiseValues() {
    if (!overflows(std::pow(static_cast<double>(below()), static_cast<double>(top())))) return raise();
    const long long logarithm = longLogFromPowerWithBase(below(), top(), base_);
    if (logarithm == 0) return failBinary("long long overflow '^' (no logarithm found) %lld ^ %lld", dialect.codes.powerOverflow);
    if (!takeBase())
      return failBinary("long long pow overflow (logarithmic representation not possible, different base values) '*' %lld * %lld",
                        dialect.codes.powerOverflow);
    combine(logarithm);
    return done;
  }

  int raiseLogarithm() {
    if (*logBase_ != mode_)
      return failBinary("long long Pow overflow (logarithmic representation not possible, different base values) '*' %lld * %lld",
                        dialect.codes.powerOverflow);
    if (overflows(static_cast<double>(below()) * static_cast<double>(top())))
      return failBinary(
          "long long logarithmic Pow overflow (logarithmic representation not possible, different base values) '*' %lld * %lld",
          logarithmOverflow);
    combine(wrappedProduct(below(), top()));
    return done;
  }

  static int failPrime() {
    dbPrintf(2, "ocron4ToLogLongLong: cannot apply P-Operator to logarithmic value...\n");
    return noPrimeOfLogarithm;
  }

  /// The newest value is going to be a logarithm. False if there was one to another base.
  bool takeBase() {
    if (*logBase_ == 0) *logBase_ = base_;
    mode_ = base_;
    return *logBase_ == base_;
  }

  int* logBase_;
  int base_;
  int mode_ = 0;  ///< the base of the logarithm that the newest value is, 0 if it is none
};

// --- a run

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

// --- what is checked before

constexpr int noLength = -1, noString = -2, wrongLength = -3, noPrimes = -4, illegalCharacter = -4;

/// 1, or a code.
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

/// Ends the string at its first end symbol. 1, or a code.
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

// --- virtual ocrons

/// The string with 2s before and ^s behind it: 2 to the power of what it stands for, or 2 to the power of that. Null without
/// memory.
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

/// Evaluates the string as an exponent: the value, and in *logBase the base if it is a logarithm; below 1 if there is none.
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
