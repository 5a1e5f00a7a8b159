// Choosing one of several successors by the same three methods as the library.
#pragma once

#include <cstddef>
#include <vector>

#include "Matrix.h"

/// The index of the chosen successor; the list must not be empty. A random choice draws from the generator of the selected
/// sub-matrix.
std::size_t choose(Matrix& matrix, const std::vector<Matrix::Successor>& successors, Method method);

long long sumOfCounts(const std::vector<Matrix::Successor>& successors);
