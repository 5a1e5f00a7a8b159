// Standard input and pipes can be read only once, but the command detects the kind of a file before the library opens it by path.
// Such inputs are copied to a file in memory.
#pragma once

#include <cstdint>
#include <string>

/// A path that can be opened repeatedly. For a file, a folder and a missing file it is the argument itself. "-" is standard
/// input. A pipe, device or socket is read to its end at the first call. Throws a Failure if reading fails, or for more than
/// `limit` bytes.
std::string reopenable(const std::string& argument, std::uintmax_t limit = UINTMAX_MAX);

/// The argument for messages: "standard input" for "-".
std::string nameOfArgument(const std::string& argument);
