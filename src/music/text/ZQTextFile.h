// Text files for the feeds: one value from 0 to 255 per byte, and the language of a text.
#pragma once

#include <span>

#include "frame/ZQSystemOwned.h"

namespace zmatrix {

/// The content of a file, one int per byte.
struct TextOfFile {
  bool isReadable = false;  ///< false if it can't be opened, is no regular file, or is longer than INT_MAX bytes
  SystemOwned<int> values;  ///< null if unreadable or if memory is exhausted
  int length = 0;
};

/// Reads a file, at most `maxLength` bytes of it if that is above 0.
TextOfFile textOfFile(const char* fileName, int maxLength);

/// German or English: the language whose word " ist " or " is " occurs more often before the first zero byte. Deliberately this
/// crude.
int languageOfText(std::span<const int> text);

/// The same for a file; undefined for an unreadable one.
int languageOfTextFile(const char* fileName);

}  // namespace zmatrix
