// The manual page and the completions of shells, written from the table of options.
#pragma once

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

/// The manual page, in the man macros of roff.
std::string manualPage(const CLI::App& app, const std::string& version);

/// What a shell reads to complete the command's verbs, options, and values that are one of a list.
std::string bashCompletion(const CLI::App& app);
std::string zshCompletion(const CLI::App& app);
std::string fishCompletion(const CLI::App& app);

/// Adds `--print man|bash|zsh|fish`, which prints one of them.
void addPrintOption(CLI::App& app, const std::string& version);
