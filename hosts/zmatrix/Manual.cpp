#include "Manual.h"

#include <sstream>

#include "OptionChecks.h"
#include "OptionTable.h"
#include "Options.h"

namespace {

// Escapes text for roff: "-" and "\" are printed as they are, and no line is taken for a request.
std::string escaped(const std::string& text) {
  std::string roff;
  for (const char character : text) {
    const bool beginsLine = roff.empty() || roff.back() == '\n';
    if (beginsLine && (character == '.' || character == '\'')) roff += "\\&";
    if (character == '\\') {
      roff += "\\e";
    } else if (character == '-') {
      roff += "\\-";
    } else {
      roff += character;
    }
  }
  return roff;
}

std::string paragraphs(const std::string& notes) {
  std::string roff;
  std::istringstream stream(notes);
  for (std::string line; std::getline(stream, line);) {
    if (!line.empty()) roff += escaped(line) + "\n";
  }
  return roff.empty() ? "" : ".PP\n" + roff;
}

std::string optionEntry(const OptionRow& option) {
  std::string names;
  for (const std::string& name : option.names) names += (names.empty() ? "" : ", ") + ("\\fB" + escaped(name) + "\\fR");
  const std::string argument = option.argument.empty() ? "" : " \\fI" + escaped(option.argument) + "\\fR";
  return ".TP\n" + names + argument + "\n" + escaped(option.description) + "\n";
}

std::string positionalEntry(const OptionRow& positional) {
  return ".TP\n\\fI" + placeholderOf(positional) + "\\fR\n" + escaped(positional.description) + "\n";
}

std::string entriesOf(const VerbRow& verb) {
  std::string entries;
  for (const OptionRow& positional : verb.positionals) entries += positionalEntry(positional);
  for (const OptionRow& option : verb.options) entries += optionEntry(option);
  return entries;
}

std::string examplesOf(const VerbRow& verb) {
  if (verb.examples.empty()) return "";
  std::string roff = ".PP\nExamples:\n.PP\n.RS 4\n.nf\n";
  for (const std::string& example : verb.examples) roff += escaped(example) + "\n";
  return roff + ".fi\n.RE\n";
}

std::string usageOf(const VerbRow& verb) {
  std::string usage = "zmatrix " + verb.name;
  for (const OptionRow& positional : verb.positionals) usage += " " + placeholderOf(positional);
  return usage + " [OPTION]...";
}

std::string sectionOf(const VerbRow& verb) {
  return ".SS " + verb.name + "\n.B " + escaped(usageOf(verb)) + "\n.PP\n" + escaped(verb.description) + ".\n" +
         paragraphs(verb.notes) + entriesOf(verb) + examplesOf(verb);
}

}  // namespace

std::string manualPage(const CLI::App& app, const std::string& version) {
  const VerbRow command = rowOf(app);
  std::string roff = ".\\\" Written by zmatrix --print man.\n.TH ZMATRIX 1 \"\" \"" + escaped(version) +
                     "\" \"User Commands\"\n.SH NAME\nzmatrix \\- learn sequences and continue them\n.SH SYNOPSIS\n";
  for (const VerbRow& verb : verbsOf(app)) roff += ".B " + escaped(usageOf(verb)) + "\n.br\n";
  roff += ".SH DESCRIPTION\n" + escaped(command.description) + "\n.SH OPTIONS\n" + entriesOf(command) + ".SH VERBS\n";
  for (const VerbRow& verb : verbsOf(app)) roff += sectionOf(verb);
  roff += ".SH EXIT STATUS\n" + escaped(exitCodes) + "\n.SH ENVIRONMENT\n.TP\n\\fBNO_COLOR\\fR, \\fBTERM\\fR\n" +
          "No progress line is drawn where NO_COLOR is set or TERM is dumb.\n";
  return roff;
}

// CallForVersion is how CLI11 ends a parse with text to print; --version ends in the same way.
void addPrintOption(CLI::App& app, const std::string& version) {
  const auto print = [&app, version](const std::string& what) {
    std::string text = what == "man"    ? manualPage(app, version)
                       : what == "bash" ? bashCompletion(app)
                       : what == "zsh"  ? zshCompletion(app)
                                        : fishCompletion(app);
    text.pop_back();  // CLI11 prints a line end after it
    throw CLI::CallForVersion(text, 0);
  };
  app.add_option_function<std::string>("--print", print, "Print the manual page, or the completions for a shell, and exit")
      ->check(oneOf({"man", "bash", "zsh", "fish"}))
      ->option_text("man|bash|zsh|fish");
}
