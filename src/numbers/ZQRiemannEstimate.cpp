#include "numbers/ZQRiemannEstimate.h"

#include <array>
#include <cmath>
#include <limits>

namespace zmatrix {

namespace {

constexpr int mostTerms = 98;
constexpr double smallestTerm = 1e-12;
constexpr int lastListedZeta = 43;

/// The Riemann zeta function at 0, 1, 2 and so on. Behind the listed values the difference to 1 is halved from each value to the
/// next.
constexpr auto zeta = [] {
  std::array<double, 101> values = {
      -0.5,
      std::numeric_limits<double>::infinity(),
      1.6449340668482264,
      1.2020569031595942,
      1.0823232337111381,
      1.03692775514337,
      1.0173430619844492,
      1.008349277381923,
      1.0040773561979444,
      1.0020083928260821,
      1.000994575127818,
      1.0004941886041194,
      1.000246086553308,
      1.0001227133475785,
      1.0000612481350588,
      1.000030588236307,
      1.0000152822594086,
      1.0000076371976379,
      1.000003817293265,
      1.0000019082127165,
      1.0000009539620338,
      1.0000004769329869,
      1.0000002384505027,
      1.000000119219926,
      1.000000059608189,
      1.0000000298035034,
      1.0000000149015549,
      1.0000000074507118,
      1.000000003725334,
      1.0000000018626598,
      1.0000000009313275,
      1.0000000004656628,
      1.000000000232831,
      1.0000000001164155,
      1.0000000000582077,
      1.0000000000291038,
      1.000000000014552,
      1.000000000007276,
      1.000000000003638,
      1.000000000001819,
      1.0000000000009095,
      1.0000000000004547,
      1.0000000000002274,
      1.0000000000001137,
  };
  for (size_t i = lastListedZeta + 1; i < values.size(); i++) values[i] = (values[i - 1] + 1) * 0.5;
  return values;
}();

}  // namespace

double riemann_r(double x) {
  const double logarithm = std::log(x);
  double sum = 1, power = 1;  // power: the k-th power of the logarithm, divided by k factorial
  for (int k = 1; k <= mostTerms; k++) {
    power *= logarithm / k;
    const double term = power / (k * zeta[static_cast<size_t>(k) + 1]);
    if (smallestTerm > term) break;
    sum += term;
  }
  return sum;
}

}  // namespace zmatrix
