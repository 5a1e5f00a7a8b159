#include <algorithm>

#include "Manual.h"
#include "Nearest.h"
#include "OptionTable.h"

namespace {

// Puts a backslash before each character that is in `special`.
std::string escaped(const std::string& text, const std::string& special) {
  std::string result;
  for (const char character : text) {
    if (special.find(character) != std::string::npos) result += '\\';
    result += character;
  }
  return result;
}

// In single quotes for a shell; a single quote in the text becomes '\''.
std::string quoted(const std::string& text) {
  std::string result = "'";
  for (const char character : text) result += character == '\'' ? "'\\''" : std::string(1, character);
  return result + "'";
}

std::vector<std::string> namesOfVerbs(const std::vector<VerbRow>& verbs) {
  std::vector<std::string> names;
  names.reserve(verbs.size());
  for (const VerbRow& verb : verbs) names.push_back(verb.name);
  return names;
}

bool takesFiles(const VerbRow& verb) {
  return std::any_of(verb.positionals.begin(), verb.positionals.end(), [](const OptionRow& row) { return row.takesFile; });
}

// ---- bash

std::string bashNames(const VerbRow& verb) {
  std::vector<std::string> names;
  for (const OptionRow& option : verb.options) names.insert(names.end(), option.names.begin(), option.names.end());
  return listOf(names, " ");
}

// Case branches that complete the value of the option before the cursor.
std::string bashValues(const VerbRow& verb) {
  std::string branches;
  for (const OptionRow& option : verb.options) {
    if (option.argument.empty()) continue;
    const std::string action = !option.choices.empty() ? "_zmatrix_words '" + listOf(option.choices, " ") + "'"
                               : option.takesFile      ? "_zmatrix_files"
                                                       : ":";
    branches += "        " + listOf(option.names, "|") + ") " + action + "; return ;;\n";
  }
  return branches;
}

std::string bashBranch(const VerbRow& verb) {
  const std::string label = verb.name.empty() ? "*" : verb.name;
  return "    " + label + ")\n      case \"$before\" in\n" + bashValues(verb) + "      esac\n      options='" + bashNames(verb) +
         "'\n" + (takesFiles(verb) ? "      takes_files=1\n" : "") + "      ;;\n";
}

// ---- zsh

// One spelling of an option as zsh's _arguments takes it; the spelling excludes the others once it is given.
std::string zshSpelling(const OptionRow& option, const std::string& name) {
  const std::string description = "[" + escaped(briefOf(option.description), "[]\\:") + "]";
  const std::string values = !option.choices.empty() ? "(" + listOf(option.choices, " ") + ")"
                             : option.takesFile      ? "_files"
                                                     : " ";
  const std::string value = option.argument.empty() ? "" : ":" + escaped(option.argument, ":") + ":" + values;
  const std::string others = option.isRepeatable ? "*" : "(" + listOf(option.names, " ") + ")";
  const std::string joint = option.argument.empty() ? "" : name.rfind("--", 0) == 0 ? "=" : "+";
  return others + name + joint + description + value;
}

std::string zshOption(const OptionRow& option) {
  std::string spellings;
  for (const std::string& name : option.names) spellings += " \\\n        " + quoted(zshSpelling(option, name));
  return spellings;
}

std::string zshArguments(const VerbRow& verb) {
  std::string specs;
  for (const OptionRow& option : verb.options) specs += zshOption(option);
  for (const OptionRow& row : verb.positionals) {
    specs += " \\\n        " + quoted((row.isRepeatable ? "*:" : ":") + row.names[0] + ":" + (row.takesFile ? "_files" : " "));
  }
  return specs;
}

// ---- fish

std::string fishOption(const OptionRow& option, const std::string& condition) {
  std::string line = "complete -c zmatrix -n " + quoted(condition);
  for (const std::string& name : option.names) {
    line += name.rfind("--", 0) == 0 ? " -l " + name.substr(2) : " -s " + name.substr(1);
  }
  if (!option.argument.empty()) line += option.takesFile ? " -r -F" : " -x";
  if (!option.choices.empty()) line += " -a " + quoted(listOf(option.choices, " "));
  return line + " -d \"" + escaped(briefOf(option.description), "\\\"$") + "\"\n";
}

}  // namespace

std::string bashCompletion(const CLI::App& app) {
  const std::vector<VerbRow> verbs = verbsOf(app);
  std::string text = R"(# bash completion for zmatrix, written by zmatrix --print bash

_zmatrix_words() {
  mapfile -t COMPREPLY < <(compgen -W "$1" -- "$current")
}

_zmatrix_files() {
  compopt -o filenames 2>/dev/null
  mapfile -t COMPREPLY < <(compgen -f -- "$current")
}

_zmatrix() {
  local current=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]} verb=${COMP_WORDS[1]} options takes_files=''
  # "--option=value" comes as three words
  [[ $current == "=" ]] && current=''
  [[ $before == "=" ]] && before=${COMP_WORDS[COMP_CWORD - 2]}
  [[ ${COMP_WORDS[COMP_CWORD]} == "=" ]] && before=${COMP_WORDS[COMP_CWORD - 1]}
  [[ $COMP_CWORD -eq 1 ]] && verb=''
  COMPREPLY=()
  case "$verb" in
)";
  VerbRow before = rowOf(app);
  before.name.clear();  // bashBranch writes the default branch for an empty name
  for (const VerbRow& verb : verbs) text += bashBranch(verb);
  text += bashBranch(before);
  return text +
         "  esac\n  if [[ $current == -* ]]; then\n    _zmatrix_words \"$options\"\n  elif [[ $COMP_CWORD -eq 1 ]]; then\n" +
         "    _zmatrix_words '" + listOf(namesOfVerbs(verbs), " ") +
         "'\n  elif [[ $takes_files ]]; then\n    _zmatrix_files\n  fi\n}\n\ncomplete -F _zmatrix zmatrix\n";
}

std::string zshCompletion(const CLI::App& app) {
  const std::vector<VerbRow> verbs = verbsOf(app);
  std::string text =
      "#compdef zmatrix\n# written by zmatrix --print zsh\n\n_zmatrix() {\n  local curcontext=$curcontext state line\n" +
      std::string("  local -a verbs\n  verbs=(\n");
  for (const VerbRow& verb : verbs) text += "    " + quoted(verb.name + ":" + verb.description) + "\n";
  text += "  )\n  _arguments -C" + zshArguments(rowOf(app)) +
          " \\\n        '1:verb:->verb' \\\n        '*::argument:->argument'\n  case $state in\n" +
          "    verb) _describe -t verbs verb verbs ;;\n    argument)\n      case $words[1] in\n";
  for (const VerbRow& verb : verbs) text += "      " + verb.name + ") _arguments -s" + zshArguments(verb) + " ;;\n";
  return text + "      esac\n      ;;\n  esac\n}\n\nif [[ $funcstack[1] == _zmatrix ]]; then\n  _zmatrix \"$@\"\nelse\n" +
         "  compdef _zmatrix zmatrix\nfi\n";
}

std::string fishCompletion(const CLI::App& app) {
  std::string text = "# fish completion for zmatrix, written by zmatrix --print fish\n\n";
  for (const OptionRow& option : rowOf(app).options) text += fishOption(option, "__fish_use_subcommand");
  for (const VerbRow& verb : verbsOf(app)) {
    const std::string condition = "__fish_seen_subcommand_from " + verb.name;
    text += "\ncomplete -c zmatrix -n __fish_use_subcommand -f -a " + verb.name + " -d " + quoted(verb.description) + "\n";
    if (!takesFiles(verb)) text += "complete -c zmatrix -n " + quoted(condition) + " -f\n";
    for (const OptionRow& option : verb.options) text += fishOption(option, condition);
  }
  return text;
}
