// The bits of a marker of an item of a text, by which learning assigns symbols to words.
#pragma once

namespace zmatrix {

constexpr int beginsWord = 1;
constexpr int endsWord = 2;

}  // namespace zmatrix
