// The work of a thread: learning a text, words, numbers, MIDI and kern, generating, saving and loading with matrices of its own.
#pragma once

#include <string>

namespace zmatrix {

/// Does the work of number `seed` with files in `folder`. Returns all generated items, counts, files and messages, without the
/// folder's name.
std::string workOfThread(int seed, const std::string& folder);

}  // namespace zmatrix
