// The verbs of the command. Each function adds a subcommand with its options and its callback. A new verb takes a file of its
// own, a line here, one in main.cpp and one in CMakeLists.txt.
#pragma once

#include <CLI/CLI.hpp>

/// `zmatrix continue`: learns texts, music or numbers and continues them.
void addContinueVerb(CLI::App& app);
/// `zmatrix learn`: learns files into a model file.
void addLearnVerb(CLI::App& app);
/// `zmatrix generate`: continues a start with a model file.
void addGenerateVerb(CLI::App& app);
/// `zmatrix info`: prints what a model file holds.
void addInfoVerb(CLI::App& app);
/// `zmatrix check`: learns files or loads a model, tests the matrix and prints what it holds.
void addCheckVerb(CLI::App& app);
/// `zmatrix inspect`: reports what is read from MIDI and kern files and what is lost.
void addInspectVerb(CLI::App& app);
/// `zmatrix convert`: converts a kern score to a MIDI file.
void addConvertVerb(CLI::App& app);
/// `zmatrix numbers`: prints factors, ocrons and gocrons of numbers.
void addNumbersVerb(CLI::App& app);
