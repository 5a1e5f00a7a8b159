// Reading and decoding a file of text.
#pragma once

#include <optional>

#include "Inputs.h"
#include "TextEncoding.h"

/// Throws a Failure if the file can't be read, or if it looks binary unless `isForced`.
DecodedText readText(const InputFile& input, std::optional<Encoding> encoding, bool isForced);

/// True if a text has nothing but white space, so that the library learns nothing.
bool isBlank(const std::vector<int>& items);
