// No exception leaves a C function: one that is thrown inside, such as std::bad_alloc, becomes the function's result for a
// failure. Most allocations inside the library don't throw but return null.
#pragma once

/// The result of the call, or `failure` if it throws.
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
