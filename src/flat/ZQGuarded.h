// Nothing but a result leaves a function of the boundary: whatever is thrown inside, std::bad_alloc above all, becomes the value
// by which the function says that it has failed. Inside, memory is asked for in ways that say no; this is the last line.
#pragma once

namespace zmatrix {

/// What the call gives, or `failure`.
template <class Result, class Call>
inline Result guarded(Call call, Result failure = Result()) noexcept {
  try {
    return call();
  } catch (...) {
    return failure;
  }
}

template <class Call>
inline void guarded(Call call) noexcept {
  try {
    call();
  } catch (...) {
  }
}

}  // namespace zmatrix
