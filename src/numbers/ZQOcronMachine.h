// The stack machine that runs an ocron symbol by symbol, and what the types of ocrons differ in: operators, operands filled in,
// the words of messages and the codes of failures.
#pragma once

#include <cmath>
#include <cstdio>
#include <string_view>

#include "frame/ZQDebugChannel.h"
#include "numbers/ZQExactLogarithm.h"
#include "numbers/ZQOcronBuffers.h"
#include "numbers/ZQOcronParameters.h"
#include "numbers/ZQPrimeTable.h"

namespace zmatrix {

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

inline constexpr OcronDialect dialect3 = {
    "ocron3ToLongLong", "ocron3ToLongLong", "ocron3ToLongLongt", "*P2", true, '^', {-5, -6, -7, 0, -9, 0, 0, 0, 0, -10, -11}};
inline constexpr OcronDialect dialect4 = {
    "ocron4ToLongLong", "ocron4ToLongLong", "ocron4ToLongLong", "*P2^", true, '^', {-5, -6, -7, 0, -9, 0, -11, 0, 0, -12, -13}};
inline constexpr OcronDialect dialect5 = {
    "ocron5ToLongLong", "ocron5ToInt", "ocron5ToInt", "*P2^Q", false, '*', {-5, -6, -7, -10, -11, -12, -13, -8, -9, -14, -15}};
inline constexpr OcronDialect logarithmicDialect = {"ocron4ToLogLongLong",
                                                    "ocron4ToLogLongLong",
                                                    "ocron4ToLogLongLong",
                                                    "*P2^",
                                                    true,
                                                    '^',
                                                    {-5, -6, -7, 0, -9, 0, -11, 0, 0, -12, -13}};

class OcronMachine {
 public:
  static constexpr int done = 1;  ///< what a step gives that has nothing to report

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
  /// Products and powers above 2^63, compared as doubles, are not computed. What is exactly 2^63 passes, and wraps.
  static bool overflows(double value) { return value > 9.223372036854776e18; }

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
      return failBinary(namesPower ? "long long overflow '^' %lld ^ %lld" : "long long overflow '^' %lld * %lld",
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
  [[gnu::format(printf, 2, 0)]] int failBinary(const char* format, int code) const {
    if (!ZQDebugChannel::shows(2)) return code;
    char text[256];
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
    snprintf(text, sizeof text, format, below(), top());
#pragma GCC diagnostic pop
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
    const PrimeTable<int>& table = PrimeTable<int>::ofProcess();
    if (*value >= table.count()) {
      dbPrintf(2, "%s: number of preInitialized primes (%d) too small for %lld! \n", dialect.operatorName, table.count(), *value);
      return codeIfTooSmall;
    }
    if (*value < 1) {
      dbPrintf(2, "%s: illegal ocron stack value %lld! \n", dialect.primeName, *value);
      return dialect.codes.valueOfPrime;
    }
    *value = table.primes()[*value - 1];
    return done;
  }

  int failOperands(char symbol, int code) const {
    dbPrintf(2, "%s: illegal ocronStackPtr for operator '%c' %d\n", dialect.operatorName, symbol, count_);
    return code;
  }

  int* stackDepth_;
  int count_ = 0;
  long long values_[ocronStackSize];  // the newest is the last
};

}  // namespace zmatrix
