// Standard input and pipes, which can be read once: what comes is kept in memory, so that a kind can be told by the content first
// and the library can open it by a path after that.
#pragma once

#include <cstdint>
#include <string>

/// The path under which the bytes of an argument can be opened as often as need be. That is the argument itself for a file, a
/// folder and what can't be read at all. "-" is standard input. A pipe, a device or a socket is read to its end now, once in a
/// process. Throws a Failure if reading fails, or for more than `limit` bytes.
std::string reopenable(const std::string& argument, std::uintmax_t limit = UINTMAX_MAX);

/// An argument as messages name it.
std::string nameOfArgument(const std::string& argument);
