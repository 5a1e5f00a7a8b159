// `zmatrix inspect`: reports what is read from MIDI and kern files, what is lost and why.
#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "Failure.h"
#include "Inputs.h"
#include "Inspection.h"
#include "Options.h"
#include "Output.h"
#include "Reopenable.h"
#include "Statistics.h"
#include "Verbs.h"

namespace {

struct InspectOptions {
  std::vector<std::string> inputs;
  bool recursive = false;
  std::optional<Kind> as;
  bool json = false;
  ReadingOptions reading;
  MessageOptions messages;
};

const char* const examples = R"(
The exact and the classic reading are compared, with what the classic one loses or shifts; --reading reports one of them alone.
The reports account for everything that a reader drops. If a file is refused, the exit code is 3; the other files are still reported.

Examples:
  zmatrix inspect tune.mid
  zmatrix inspect tunes/ --recursive --json | jq '.[] | {file, readings}'

)";

// A file whose content is not recognised as music is inspected as its suffix says. Other files of a folder are skipped.
std::vector<InputFile> findMusic(const InspectOptions& options) {
  std::vector<InputFile> music;
  for (InputFile input : findInputs(options.inputs, options.recursive, options.as)) {
    if (subjectOf(input.kind) != Subject::music) input.kind = kindOfSuffix(input.name).value_or(Kind::text);
    const bool isNamed = std::any_of(options.inputs.begin(), options.inputs.end(),
                                     [&](const std::string& argument) { return nameOfArgument(argument) == input.name; });
    if (subjectOf(input.kind) == Subject::music) {
      music.push_back(input);
    } else if (isNamed) {
      throw Failure{ExitCode::badInput, input.name + " is neither a MIDI nor a kern file (--as midi|kern overrides this)"};
    }
  }
  if (music.empty()) throw Failure{ExitCode::badInput, "no MIDI or kern file in " + options.inputs.front()};
  return music;
}

void runInspect(const InspectOptions& options) {
  keepStandardOutputForResults();
  const std::vector<InputFile> inputs = findMusic(options);
  Output output("");
  Json reports = Json::array();
  std::string refused;
  for (const InputFile& input : inputs) {
    const MusicReport report = inspectionOf(input, options.reading);
    if (refused.empty() && !report.refusal.empty()) refused = input.name + ": " + report.refusal;
    if (options.json) {
      reports.push_back(report.full);
    } else {
      output.write((&input == &inputs.front() ? "" : "\n") + report.table);
    }
  }
  if (options.json) output.write(jsonText(reports));
  output.commit();
  if (!refused.empty()) throw Failure{ExitCode::badInput, refused};
}

}  // namespace

void addInspectVerb(CLI::App& app) {
  const auto options = std::make_shared<InspectOptions>();
  CLI::App* verb = app.add_subcommand("inspect", "Report what is read from MIDI and kern files, and what is lost");
  verb->add_option("FILE", options->inputs, "MIDI and kern files, or folders of them")->required()->option_text(" ");
  verb->add_flag("--recursive,-r", options->recursive, "Inspect the files of subfolders too");
  addKindOptions(*verb, options->as);
  addReadingOptions(*verb, options->reading);
  verb->add_flag("--json", options->json, "Print JSON instead of tables: a list with one object per file");
  addMessageOptions(*verb, options->messages);
  verb->footer(std::string(examples) + exitCodes);
  verb->callback([options] { runInspect(*options); });
}
