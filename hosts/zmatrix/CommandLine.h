// From the arguments of the process to a verb that runs, or to a sentence that says what is wrong with them.
#pragma once

#include <CLI/CLI.hpp>

/// Lets the verb that the arguments name run, or prints the help or version that they ask for. Throws a Failure for arguments
/// that don't fit, and whatever the verb throws.
void runCommandLine(CLI::App& app, int argumentCount, const char* const* arguments);
