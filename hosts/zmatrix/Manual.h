// The manual page and the shell completions, made from the rows of OptionTable.
#pragma once

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

/// The manual page, in the man macros of roff.
std::string manualPage(const CLI::App& app, const std::string& version);

/// Scripts that complete verbs, options, values from a list, and file names.
std::string bashCompletion(const CLI::App& app);
std::string zshCompletion(const CLI::App& app);
std::string fishCompletion(const CLI::App& app);

/// Adds the option `--print man|bash|zsh|fish`.
void addPrintOption(CLI::App& app, const std::string& version);
