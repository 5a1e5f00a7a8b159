// What a marker says of an item of a text: the bits by which the phrases that are words get their symbols.
#pragma once

namespace zmatrix {

constexpr int beginsWord = 1;
constexpr int endsWord = 2;

}  // namespace zmatrix
