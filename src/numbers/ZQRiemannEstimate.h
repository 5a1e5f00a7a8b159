// Riemann's estimate of the number of primes, by the series of Gram: J. P. Gram, "Undersoegelser angaaende maengden af primtal
// under en given graense", 1884.
#pragma once

namespace zmatrix {

/// Riemann's R(x), close to the number of primes up to `x`: 1 for an `x` of 1 or less.
double riemann_r(double x);

}  // namespace zmatrix
