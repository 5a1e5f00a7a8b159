#include "Choice.h"

#include <algorithm>

std::size_t choose(Matrix& matrix, const std::vector<Matrix::Successor>& successors, Method method) {
  if (method == Method::middle) return successors.size() / 2;
  if (method == Method::best) {
    const auto more = [](const Matrix::Successor& one, const Matrix::Successor& other) { return one.count < other.count; };
    return static_cast<std::size_t>(std::max_element(successors.begin(), successors.end(), more) - successors.begin());
  }
  double rest = matrix.drawFraction() * static_cast<double>(sumOfCounts(successors));
  std::size_t at = 0;
  while (at + 1 < successors.size() && (rest -= successors[at].count) >= 0) ++at;
  return at;
}

long long sumOfCounts(const std::vector<Matrix::Successor>& successors) {
  long long sum = 0;
  for (const Matrix::Successor& successor : successors) sum += successor.count;
  return sum;
}
