// The zmatrix command. It includes only the library's C headers. main registers the verbs, runs the chosen one and turns a
// Failure into an exit code. Results go to stdout, diagnostics to stderr.
#include <zmatrix/zmatrix.h>
#include <zmatrix/zq.h>

#include <CLI/CLI.hpp>
#include <memory>
#include <new>
#include <string>
#include <vector>

#include "CommandLine.h"
#include "Failure.h"
#include "Help.h"
#include "Manual.h"
#include "Messages.h"
#include "Output.h"
#include "Verbs.h"

namespace {

// The format version is read from the header of an empty matrix.
std::string version() {
  ZQMatrixBase* const matrix = createAndInitMatrixBaseWithDebugParameters(0, -1, "");
  if (matrix == nullptr) throw std::bad_alloc();
  const int format = s_getHeaderSoftwareVersion_Base(matrix);
  deleteMatrixBase(matrix);
  return std::string("zmatrix ") + zq_version() + ", file format " + std::to_string(format);
}

void run(int argumentCount, char** arguments) {
  CLI::App app("zmatrix learns texts, music and series of integers, and continues them.", "zmatrix");
  app.formatter(std::make_shared<Help>());
  app.get_formatter()->label("SUBCOMMAND", "VERB");
  app.set_version_flag("--version,-V", version, "Print the version and the format of model files, and exit");
  addPrintOption(app, std::string("zmatrix ") + zq_version());
  app.require_subcommand(1);
  app.footer("`zmatrix VERB --help` lists the options of a verb.");
  addContinueVerb(app);
  addLearnVerb(app);
  addGenerateVerb(app);
  addInfoVerb(app);
  addCheckVerb(app);
  addInspectVerb(app);
  addConvertVerb(app);
  addNumbersVerb(app);
  for (CLI::App* verb : app.get_subcommands(nullptr)) verb->group("Verbs");
  runCommandLine(app, argumentCount, arguments);
}

}  // namespace

// Any other exception is a fault of the program and ends it.
// NOLINTNEXTLINE(bugprone-exception-escape)
int main(int argumentCount, char** arguments) {
  fillClosedStandardStreams();
  try {
    run(argumentCount, arguments);
  } catch (const Failure& failure) {
    say(failure.text);
    return static_cast<int>(failure.code);
  } catch (const std::bad_alloc&) {
    say("out of memory: lower --max-phrase, or learn fewer files");
    return static_cast<int>(ExitCode::limit);
  }
  return static_cast<int>(ExitCode::done);
}
