// Times of a kern reading: quanta in an int, 12288 to a whole note. A file can drive them anywhere, so sums wrap around.
#pragma once

namespace zmatrix {

constexpr int quarterInQuanta = 3072;

inline int sumOfTimes(int first, int second) {
  return static_cast<int>(static_cast<unsigned>(first) + static_cast<unsigned>(second));
}

inline int differenceOfTimes(int first, int second) {
  return static_cast<int>(static_cast<unsigned>(first) - static_cast<unsigned>(second));
}

}  // namespace zmatrix
