// The zmatrix command, a host of the library like any other: it knows the C header alone. main reads the command line, lets the
// chosen verb run and turns what ends it into an exit code. Results go to standard output, all talk to standard error.
#include <zmatrix/version.h>

#include <CLI/CLI.hpp>
#include <cstdio>
#include <iostream>
#include <new>
#include <string>
#include <vector>

#include "Failure.h"
#include "Output.h"
#include "Verbs.h"

namespace {

std::string version() {
  return "zmatrix " + std::to_string(ZMATRIX_VERSION_MAJOR) + "." + std::to_string(ZMATRIX_VERSION_MINOR) + "." +
         std::to_string(ZMATRIX_VERSION_PATCH);
}

// What is wrong where no verb was named, or none that there is.
std::string wrongVerb(const CLI::App& app, const std::string& given) {
  std::string verbs;
  for (const CLI::App* verb : app.get_subcommands(nullptr)) verbs += (verbs.empty() ? "" : ", ") + verb->get_name();
  return (given.empty() ? "a verb is missing" : given + " is no verb") + ": " + verbs + " (`zmatrix --help` tells what they do)";
}

// The arguments, the last first as the parser wants them. "--start=" is an option with an empty value, which the parser would
// look for in the next argument.
std::vector<std::string> argumentsOf(int count, char** arguments) {
  std::vector<std::string> reversed;
  for (int at = 1; at < count; ++at) {
    const std::string argument = arguments[at];
    const bool isEmptyOption = argument.size() > 3 && argument.rfind("--", 0) == 0 && argument.find('=') == argument.size() - 1;
    reversed.insert(reversed.begin(), isEmptyOption ? argument.substr(0, argument.size() - 1) : argument);
    if (isEmptyOption) reversed.insert(reversed.begin(), "");
  }
  return reversed;
}

int end(ExitCode code, const std::string& text) {
  std::fflush(stdout);
  std::fprintf(stderr, "zmatrix: %s\n", text.c_str());
  return static_cast<int>(code);
}

}  // namespace

int main(int argumentCount, char** arguments) {
  CLI::App app("zmatrix learns sequences and continues them.", "zmatrix");
  app.set_version_flag("--version", version());
  app.require_subcommand(1);
  app.footer("`zmatrix VERB --help` tells what a verb takes.");
  addContinueVerb(app);
  addLearnVerb(app);
  addGenerateVerb(app);
  addInfoVerb(app);
  addCheckVerb(app);
  addInspectVerb(app);
  addConvertVerb(app);
  addNumbersVerb(app);
  try {
    app.parse(argumentsOf(argumentCount, arguments));
  } catch (const CLI::ParseError& error) {
    if (error.get_exit_code() != 0 && app.get_subcommands().empty()) {
      return end(ExitCode::usage, wrongVerb(app, argumentCount > 1 ? arguments[1] : ""));
    }
    return app.exit(error) == 0 ? static_cast<int>(ExitCode::done) : static_cast<int>(ExitCode::usage);
  } catch (const Failure& failure) {
    return end(failure.code, failure.text);
  } catch (const std::bad_alloc&) {
    return end(ExitCode::limit, "out of memory");
  }
  return static_cast<int>(ExitCode::done);
}
