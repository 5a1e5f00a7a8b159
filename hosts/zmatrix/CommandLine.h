// Parsing the arguments of the process, and the error messages for wrong ones.
#pragma once

#include <CLI/CLI.hpp>

/// Runs the verb that the arguments name, or prints help or version if they ask for it. Throws a Failure for wrong arguments, and
/// whatever the verb throws.
void runCommandLine(CLI::App& app, int argumentCount, const char* const* arguments);
