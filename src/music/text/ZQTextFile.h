// Text files as the feeds take them: one value from 0 to 255 a byte, and the language that they seem to be in.
#pragma once

#include <span>

#include "frame/ZQSystemOwned.h"

namespace zmatrix {

/// The bytes of a file, each in an int.
struct TextOfFile {
  bool isReadable = false;  ///< false for what can't be opened, is no regular file, or has more bytes than an int counts
  SystemOwned<int> values;  ///< null if unreadable or if memory is exhausted
  int length = 0;
};

/// Reads a file, at most `maxLength` bytes of it if that is above 0.
TextOfFile textOfFile(const char* fileName, int maxLength);

/// German or English by which of " ist " and " is " comes more often in a text, which ends at its first zero. The rule is as
/// crude as that on purpose.
int languageOfText(std::span<const int> text);

/// The same of a file; undefined for an unreadable one.
int languageOfTextFile(const char* fileName);

}  // namespace zmatrix
