#include "OptionTable.h"

#include <algorithm>
#include <sstream>

namespace {

std::vector<std::string> piecesOf(const std::string& text, char separator) {
  std::vector<std::string> pieces;
  std::istringstream stream(text);
  for (std::string piece; std::getline(stream, piece, separator);) pieces.push_back(piece);
  return pieces;
}

// The description of a validator made by oneOf ends with its names: "TEXT:best|middle|random".
std::vector<std::string> choicesOf(const CLI::Option& option) {
  const std::string type = option.get_type_name();
  const std::size_t colon = type.rfind(':');
  if (colon == std::string::npos || type.find('|', colon) == std::string::npos) return {};
  return piecesOf(type.substr(colon + 1), '|');
}

bool isNameOfFile(const std::string& placeholder) {
  static const char* const names[] = {"FILE", "INPUT", "MIDI", "MODEL", "SCORE"};
  return std::find(std::begin(names), std::end(names), placeholder) != std::end(names);
}

std::vector<std::string> namesOf(const CLI::Option& option) {
  std::vector<std::string> names;
  for (const std::string& name : option.get_snames()) names.push_back("-" + name);
  for (const std::string& name : option.get_lnames()) names.push_back("--" + name);
  return names;
}

OptionRow optionRowOf(const CLI::Option& option) {
  const bool isFlag = option.get_items_expected_max() == 0;
  const std::string argument = isFlag ? "" : option.get_option_text();
  return {namesOf(option),          argument,
          option.get_description(), choicesOf(option),
          isNameOfFile(argument),   option.get_items_expected_max() > 1};
}

OptionRow positionalRowOf(const CLI::Option& option) {
  OptionRow row = optionRowOf(option);
  row.names = {option.get_name(true)};
  row.argument = row.names[0];
  row.takesFile = isNameOfFile(row.argument);
  return row;
}

}  // namespace

VerbRow rowOf(const CLI::App& app) {
  VerbRow row{app.get_name(), app.get_description(), "", {}, {}, {}};
  for (const CLI::Option* option : app.get_options()) {
    if (option->nonpositional()) row.options.push_back(optionRowOf(*option));
    if (option->get_positional()) row.positionals.push_back(positionalRowOf(*option));
  }
  // A footer has paragraphs, then "Examples:" with one indented line per example, then the exit codes.
  bool isBehindExamples = false;
  for (const std::string& line : piecesOf(app.get_footer(), '\n')) {
    isBehindExamples = isBehindExamples || line.rfind("Example", 0) == 0;
    if (!isBehindExamples) row.notes += line + "\n";
    if (isBehindExamples && line.rfind("  ", 0) == 0) row.examples.push_back(line.substr(2));
  }
  return row;
}

std::vector<VerbRow> verbsOf(const CLI::App& app) {
  std::vector<VerbRow> verbs;
  for (const CLI::App* verb : app.get_subcommands(nullptr)) verbs.push_back(rowOf(*verb));
  return verbs;
}

std::string briefOf(const std::string& description) {
  return description.substr(0, description.find_first_of(":;"));
}

std::string placeholderOf(const OptionRow& positional) {
  return positional.names[0] + (positional.isRepeatable ? "..." : "");
}
