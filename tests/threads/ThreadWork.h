// What a host does in a thread: it learns a text, words, numbers, MIDI and kern, generates, saves and loads, each with matrices
// of its own, and writes down what it got.
#pragma once

#include <string>

namespace zmatrix {

/// Does the work number `seed` with files in `folder`. The result holds all items, counts and files that came out, and the
/// messages, without the folder's name.
std::string workOfThread(int seed, const std::string& folder);

}  // namespace zmatrix
