#include "numbers/ZQExactLogarithm.h"

#include <cmath>

namespace zmatrix {

namespace {

constexpr double tolerance = 1e-9;

/// True if `value` is exactly a power of `base`; *logarithm gets the exponent.
bool exactLogarithm(long long value, int base, long long* logarithm) {
  *logarithm = longLogFromValueWithBase(value, base);
  return powerByProducts(base, *logarithm) == value;
}

}  // namespace

long long nearWholeNumber(double number) {
  if (!(std::fabs(number) < 1e15)) return 0;  // far above any logarithm of 64 bits
  const auto whole = static_cast<long long>(number + 0.1);
  return std::fabs(number - static_cast<double>(whole)) < tolerance ? whole : 0;
}

long long longLogFromValueWithBase(long long value, int base) {
  return nearWholeNumber(std::log(static_cast<double>(value)) / std::log(static_cast<double>(base)));
}

long long longLogFromProductWithBase(long long a, long long b, int base) {
  long long logarithmOfA = 0, logarithmOfB = 0;
  const bool areExact = exactLogarithm(a, base, &logarithmOfA) && exactLogarithm(b, base, &logarithmOfB);
  return areExact ? logarithmOfA + logarithmOfB : 0;
}

long long longLogFromPowerWithBase(long long a, long long exponent, int base) {
  long long logarithm = 0;
  return exactLogarithm(a, base, &logarithm) ? wrappedProduct(logarithm, exponent) : 0;
}

long long longLongAbs(long long value) {
  return value < 0 ? static_cast<long long>(0ULL - static_cast<unsigned long long>(value)) : value;
}

long long powerByProducts(long long base, long long exponent) {
  if (base == 1) return 1;
  long long power = 1;
  for (long long i = 0; i < exponent; i++) {
    power = wrappedProduct(power, base);
    if (power < 0) return -1;
    if (power == 0) return 0;  // all further products are 0
  }
  return power;
}

}  // namespace zmatrix
