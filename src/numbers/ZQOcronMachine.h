// The stack machine that runs an ocron symbol by symbol, and the dialects in which the types of ocrons differ: operators,
// operands that are filled in, the words of messages and the codes of failures.
#pragma once

#include <cmath>
#include <string_view>

#include "frame/ZQSentence.h"
#include "numbers/ZQExactLogarithm.h"
#include "numbers/ZQOcronBuffers.h"
#include "numbers/ZQOcronParameters.h"
#include "numbers/ZQSharedPrimes.h"

namespace zmatrix {

/// Products and powers above this, compared as doubles, are not computed. It is 2^63: a value of exactly 2^63 is computed, and
/// wraps.
inline constexpr double largestValue = 9.223372036854776e18;

inline bool overflows(double value) {
  return value > largestValue;
}

/// The result code of each failure. 0 stands for a failure that can't occur in this type.
struct OcronCodes {
  int duringEvaluation, primesTooSmall, valueOfPrime, productOperands, productOverflow, powerOperands, powerOverflow;
  int repetitionOperands, repetitionPrimes, top, onReturn;
};

/// The parameters of one evaluator of the stack machine. The names are those that its messages use; they differ within a type.
struct OcronDialect {
  const char* name;          ///< in messages of the checks before the evaluation
  const char* operatorName;  ///< in messages of operators, top and end
  const char* primeName;     ///< in the message of a value below 1 under P
  std::string_view symbols;
  bool fillsIn;    ///< a missing trailing operand is 2, and values left at the end are multiplied
  char powerSign;  ///< the sign that the message of an overflowing power shows
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
  static constexpr int done = 1;  ///< the result of a step that reports nothing

  using OfTwoValues = ZQSentence<long long, long long>;

  OcronMachine(const OcronDialect& ocronDialect, int* stackDepth) : dialect(ocronDialect), stackDepth_(stackDepth) {}

  const OcronDialect& dialect;

  int count() const { return count_; }
  /// The top of the stack, 0 if it is empty.
  long long top() const { return valueAt(0); }

  /// Executes one symbol. Returns 1, or the code of the reported failure.
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

  /// Multiplies all values on the stack, from the top down.
  int multiplyRest() {
    while (count_ > 1) {
      const int result = multiplyTop();
      if (result != done) return result;
    }
    return done;
  }

 protected:
  long long valueAt(int depth) const { return count_ > depth ? values_[count_ - 1 - depth] : 0; }
  /// The value below the top.
  long long below() const { return valueAt(1); }

  int pushTwo() {
    push(2);
    if (count_ > *stackDepth_) *stackDepth_ = count_;
    return done;
  }

  /// True if there are two operands; where the dialect allows it, missing ones are filled in with 2.
  bool hasOperands() {
    while (dialect.fillsIn && count_ < 2) push(2);
    return count_ >= 2;
  }

  /// Replaces the two top values by one.
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

  /// Applies P to the value below the top as often as the top says. The value grows each time, so that it soon exceeds the table.
  int repeatPrime() {
    if (count_ < 2) return failOperands('*', dialect.codes.repetitionOperands);  // the sign that this message uses
    long long value = below();
    for (long long times = top(); times > 0; times--) {
      const int result = replaceByPrime(&value, dialect.codes.repetitionPrimes);
      if (result != done) return result;
    }
    combine(value);
    return done;
  }

  /// Reports a failure of an operator with the two top values.
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
  const PrimeTable<int>& table_ = SharedPrimes<int>::table();  // kept in place by the PrimesHeld of the caller
  int count_ = 0;
  long long values_[ocronStackSize];  // the top is the last
};

}  // namespace zmatrix
