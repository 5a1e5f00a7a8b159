// The verbs and options of the command as rows, read from the parser that has them: what the manual and the completions are made
// of, so that they can't differ from what the command takes.
#pragma once

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

struct OptionRow {
  std::vector<std::string> names;  ///< "-o", "--out"; of a positional its one name
  std::string argument;            ///< what its value is called; empty for a flag
  std::string description;
  std::vector<std::string> choices;  ///< all that the value may be; empty if it isn't one of a list
  bool takesFile;
  bool isRepeatable;
};

struct VerbRow {
  std::string name;  ///< empty for what stands before a verb
  std::string description;
  std::string notes;                  ///< paragraphs
  std::vector<std::string> examples;  ///< command lines
  std::vector<OptionRow> options;
  std::vector<OptionRow> positionals;
};

/// The row of one verb, or of what stands before it.
VerbRow rowOf(const CLI::App& app);
std::vector<VerbRow> verbsOf(const CLI::App& app);

/// The description without what follows a colon or semicolon: one line for a list.
std::string briefOf(const std::string& description);

/// "INPUT..." for one that takes several.
std::string placeholderOf(const OptionRow& positional);
