// Choosing one of several successors as the library does, for sequences that the command puts together itself.
#pragma once

#include <cstddef>
#include <vector>

#include "Matrix.h"

/// The index of the one that `method` says; there must be one. A random choice draws from the generator of the selected
/// sub-matrix.
std::size_t choose(Matrix& matrix, const std::vector<Matrix::Successor>& successors, Method method);

/// The sum of their counts.
long long sumOfCounts(const std::vector<Matrix::Successor>& successors);
