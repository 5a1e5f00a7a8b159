// The command's messages: lines on stderr that begin with "zmatrix: ". The verbosity is set once for the process.
#pragma once

#include <string>

enum class Verbosity { quiet, usual, verbose };

void setVerbosity(Verbosity verbosity);
bool isVerbose();

/// Prints "zmatrix: TEXT" at any verbosity; for errors.
void say(const std::string& text);
/// Prints a line unless --quiet is set.
void note(const std::string& text);
/// A note that begins with "warning: ".
void warn(const std::string& text);
