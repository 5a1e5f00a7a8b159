// The step of all random generators of the library. User, system and successor generators differ only in their states; none is
// seeded from a clock, so that the same state gives the same series.
#pragma once

#include <cstdint>

namespace zmatrix {

constexpr long long initialRandomValue = 31459;
constexpr double largestRandomValue = 2147483647.0;  ///< a drawn value divided by this is a fraction

/// Advances the state by one step and returns it. Only its low 32 bits are used.
inline long long nextRandomValue(long long& state) noexcept {
  const uint32_t product = static_cast<uint32_t>(static_cast<uint64_t>(state)) * 214013u + 2531011u;
  state = product & 0x7fffffffu;
  return state;
}

}  // namespace zmatrix
