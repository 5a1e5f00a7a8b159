// The verbs of the command. Each adds its own subcommand with its options to the command line and, if that was chosen, runs;
// a new verb is a file of its own, a line here and a line in main.cpp.
#pragma once

#include <CLI/CLI.hpp>

/// `zmatrix continue`: learns texts and continues them.
void addContinueVerb(CLI::App& app);
/// `zmatrix check`: learns texts, tests the matrix and prints what it holds.
void addCheckVerb(CLI::App& app);
