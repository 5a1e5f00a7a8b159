// The verbs of the command. Each adds its own subcommand with its options to the command line and, if that was chosen, runs;
// a new verb is a file of its own, a line here and a line in main.cpp.
#pragma once

#include <CLI/CLI.hpp>

/// `zmatrix continue`: learns texts, music or numbers and continues them.
void addContinueVerb(CLI::App& app);
/// `zmatrix learn`: learns them into a model file.
void addLearnVerb(CLI::App& app);
/// `zmatrix generate`: continues a start with a model file.
void addGenerateVerb(CLI::App& app);
/// `zmatrix info`: tells what a model file holds.
void addInfoVerb(CLI::App& app);
/// `zmatrix check`: learns files or loads a model, tests the matrix and prints what it holds.
void addCheckVerb(CLI::App& app);
/// `zmatrix inspect`: tells what MIDI and kern files give and what of them is lost.
void addInspectVerb(CLI::App& app);
/// `zmatrix convert`: turns a kern score into a MIDI file.
void addConvertVerb(CLI::App& app);
/// `zmatrix numbers`: prints factors, ocrons and gocrons of numbers.
void addNumbersVerb(CLI::App& app);
