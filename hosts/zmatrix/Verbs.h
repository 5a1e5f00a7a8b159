// The verbs of the command. Each adds its own subcommand with its options to the command line and, if that was chosen, runs;
// a new verb is a file of its own, a line here and a line in main.cpp.
#pragma once

#include <CLI/CLI.hpp>

/// `zmatrix continue`: learns texts and continues them.
void addContinueVerb(CLI::App& app);
/// `zmatrix learn`: learns texts into a model file.
void addLearnVerb(CLI::App& app);
/// `zmatrix generate`: continues a start with a model file.
void addGenerateVerb(CLI::App& app);
/// `zmatrix info`: tells what a model file holds.
void addInfoVerb(CLI::App& app);
/// `zmatrix check`: learns texts or loads a model, tests the matrix and prints what it holds.
void addCheckVerb(CLI::App& app);
