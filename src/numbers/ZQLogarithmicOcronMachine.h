// The stack machine that continues with logarithms where a value would overflow.
#pragma once

#include "numbers/ZQOcronMachine.h"

namespace zmatrix {

/// Where an operation would overflow, the top becomes the logarithm of the result, and stays a logarithm until a 2 is pushed. The
/// other operand is used as it is.
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

  /// Records that the top becomes a logarithm. False if there already was one to another base.
  [[nodiscard]] bool takeBase() {
    if (*logBase_ == 0) *logBase_ = base_;
    mode_ = base_;
    return *logBase_ == base_;
  }

  int* logBase_;
  int base_;
  int mode_ = 0;  ///< the base of the logarithm at the top, 0 if the top is none
};

}  // namespace zmatrix
