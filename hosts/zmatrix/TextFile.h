// A file of text, decoded.
#pragma once

#include <optional>

#include "Inputs.h"
#include "TextEncoding.h"

/// Throws a Failure for a file that looks binary, unless `isForced`.
DecodedText readText(const InputFile& input, std::optional<Encoding> encoding, bool isForced);

/// True if a text holds nothing but white space, as the library has it: nothing to learn.
bool isBlank(const std::vector<int>& items);
