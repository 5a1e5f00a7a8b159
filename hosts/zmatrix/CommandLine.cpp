#include "CommandLine.h"

#include <algorithm>
#include <sstream>
#include <string>
#include <vector>

#include "Failure.h"
#include "Nearest.h"
#include "Output.h"

namespace {

using Arguments = std::vector<std::string>;

// Rewrites two spellings that CLI11 doesn't support: "--name=" becomes "--name" and an empty argument, since CLI11 would take the
// next argument as the value; `help VERB` becomes `VERB --help`.
Arguments argumentsOf(int count, const char* const* given) {
  Arguments arguments;
  bool isBehindOptions = false;
  for (int at = 1; at < count; ++at) {
    const std::string argument = given[at];
    isBehindOptions = isBehindOptions || argument == "--";
    const bool hasEmptyValue = !isBehindOptions && argument.rfind("--", 0) == 0 && argument.back() == '=';
    arguments.push_back(hasEmptyValue ? argument.substr(0, argument.size() - 1) : argument);
    if (hasEmptyValue) arguments.emplace_back();
  }
  if (!arguments.empty() && arguments[0] == "help") {
    arguments.erase(arguments.begin());
    arguments.emplace_back("--help");
  }
  return arguments;
}

const CLI::App* verbOf(const CLI::App& app) {
  return app.get_subcommands().empty() ? nullptr : app.get_subcommands().front();
}

Arguments namesOfVerbs(const CLI::App& app) {
  Arguments names;
  for (const CLI::App* verb : app.get_subcommands(nullptr)) names.push_back(verb->get_name());
  return names;
}

Arguments namesOfOptions(const CLI::App& app) {
  Arguments names;
  for (const CLI::Option* option : app.get_options()) {
    for (const std::string& name : option->get_lnames()) names.push_back("--" + name);
  }
  return names;
}

bool isOption(const std::string& argument) {
  return argument.size() > 1 && argument[0] == '-';
}

// The first argument that CLI11 did not assign; options come before other arguments.
std::string firstLeftOver(const CLI::App& app) {
  const Arguments rest = app.remaining();
  const auto option = std::find_if(rest.begin(), rest.end(), isOption);
  if (option != rest.end()) return *option;
  return rest.empty() ? "" : rest.front();
}

std::string faultBeforeVerb(const CLI::App& app, const std::string& given) {
  if (!isOption(given)) {
    return given + " is not a verb; the verbs are " + listOf(namesOfVerbs(app)) + suggestionOf(namesOfVerbs(app), given);
  }
  const CLI::App* const verb = verbOf(app);
  if (verb != nullptr && verb->get_option_no_throw(given) != nullptr) {
    return given + " must follow the verb: zmatrix " + verb->get_name() + " " + given;
  }
  return given + " is not an option of zmatrix itself" + suggestionOf(namesOfOptions(app), given);
}

std::string faultBehindVerb(const CLI::App& verb, const std::string& given) {
  if (!isOption(given)) return "unexpected argument: " + given;
  const std::string name = given.substr(0, given.find('='));
  return name + " is not an option of zmatrix " + verb.get_name() + suggestionOf(namesOfOptions(verb), name);
}

// CLI11's messages begin with the option's name.
std::string faultOfValue(const CLI::ParseError& error) {
  std::string text = error.what();
  const std::string required = " is required";
  if (const std::size_t at = text.find(required); at != std::string::npos) return text.substr(0, at) + " is missing";
  if (error.get_name() == "ArgumentMismatch" && text.find(" missing") != std::string::npos) {
    return text.substr(0, text.find(':')) + " needs a value";
  }
  return text;
}

std::string faultOf(const CLI::App& app, const CLI::ParseError& error) {
  const CLI::App* const verb = verbOf(app);
  const std::string beforeVerb = firstLeftOver(app);
  if (!beforeVerb.empty()) return faultBeforeVerb(app, beforeVerb);
  if (verb == nullptr) {
    return error.get_name() == "RequiredError" ? "a verb is missing: " + listOf(namesOfVerbs(app)) : faultOfValue(error);
  }
  const std::string behindVerb = firstLeftOver(*verb);
  return behindVerb.empty() ? faultOfValue(error) : faultBehindVerb(*verb, behindVerb);
}

void print(const std::string& text) {
  keepStandardOutputForResults();
  Output output("");
  output.write(text);
  output.commit();
}

}  // namespace

void runCommandLine(CLI::App& app, int argumentCount, const char* const* arguments) {
  Arguments list = argumentsOf(argumentCount, arguments);
  std::reverse(list.begin(), list.end());  // CLI11 takes arguments from the end of the vector
  try {
    app.parse(list);
  } catch (const CLI::Success& answer) {
    std::ostringstream text;
    app.exit(answer, text, text);
    print(text.str());
  } catch (const CLI::ParseError& error) {
    const CLI::App* const verb = verbOf(app);
    const std::string help = "zmatrix " + (verb == nullptr ? "" : verb->get_name() + " ") + "--help";
    throw Failure{ExitCode::usage, faultOf(app, error) + " (see `" + help + "`)"};
  }
}
