// The verbs and options of the command as rows, read from the CLI11 parser. The manual page and the completions are made of these
// rows, so they always match what the command accepts.
#pragma once

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

struct OptionRow {
  std::vector<std::string> names;  ///< "-o", "--out"; of a positional its one name
  std::string argument;            ///< the placeholder of its value; empty for a flag
  std::string description;
  std::vector<std::string> choices;  ///< the allowed values; empty if any value is allowed
  bool takesFile;
  bool isRepeatable;
};

struct VerbRow {
  std::string name;  ///< "zmatrix" for the command itself
  std::string description;
  std::string notes;                  ///< paragraphs
  std::vector<std::string> examples;  ///< command lines
  std::vector<OptionRow> options;
  std::vector<OptionRow> positionals;
};

/// The row of one verb, or of the command itself.
VerbRow rowOf(const CLI::App& app);
std::vector<VerbRow> verbsOf(const CLI::App& app);

/// The description up to its first colon or semicolon.
std::string briefOf(const std::string& description);

/// The positional's name, followed by "..." if it can be repeated.
std::string placeholderOf(const OptionRow& positional);
