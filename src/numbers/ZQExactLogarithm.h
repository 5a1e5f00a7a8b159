// Logarithms that are whole numbers.
#pragma once

namespace zmatrix {

/// The whole number within 1e-9 of `number`, else 0. NaN and negative numbers give 0.
long long nearWholeNumber(double number);

/// The logarithm of `value` if it is a power of `base`, else 0.
long long longLogFromValueWithBase(long long value, int base);
/// The sum of the logarithms of `a` and `b` if both are powers of `base`, else 0.
long long longLogFromProductWithBase(long long a, long long b, int base);
/// The logarithm of `a` times `exponent`, in its low 64 bits, if `a` is a power of `base`, else 0.
long long longLogFromPowerWithBase(long long a, long long exponent, int base);

/// The absolute value; the most negative number is returned unchanged.
long long longLongAbs(long long value);

/// Arithmetic of 64 bits that wraps around.
constexpr long long wrappedProduct(long long a, long long b) {
  return static_cast<long long>(static_cast<unsigned long long>(a) * static_cast<unsigned long long>(b));
}
constexpr long long wrappedSum(long long a, long long b) {
  return static_cast<long long>(static_cast<unsigned long long>(a) + static_cast<unsigned long long>(b));
}

/// `base` multiplied with itself; -1 as soon as a product is negative, so that a result of exactly 2^63 gives -1.
long long powerByProducts(long long base, long long exponent);

}  // namespace zmatrix
