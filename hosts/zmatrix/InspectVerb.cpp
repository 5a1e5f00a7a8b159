// `zmatrix inspect`: what MIDI and kern files give, and what of them is lost and why.
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
  TalkOptions talk;
};

const char* const examples = R"(
Both readings stand side by side, with what the classic one loses or shifts; --reading tells of one alone.
Nothing that a reader drops is dropped silently here. If a file is refused the run ends with code 3, after all were looked at.

Examples:
  zmatrix inspect tune.mid
  zmatrix inspect tunes/ --recursive --json | jq '.[] | {file, readings}'

)";

// A broken file is inspected as what its name says. Texts of a folder are passed over.
std::vector<InputFile> findMusic(const InspectOptions& options) {
  std::vector<InputFile> music;
  for (InputFile input : findInputs(options.inputs, options.recursive, options.as)) {
    if (subjectOf(input.kind) != Subject::music) input.kind = kindOfSuffix(input.name).value_or(Kind::text);
    const bool isNamed = std::any_of(options.inputs.begin(), options.inputs.end(),
                                     [&](const std::string& argument) { return nameOfArgument(argument) == input.name; });
    if (subjectOf(input.kind) == Subject::music) {
      music.push_back(input);
    } else if (isNamed) {
      throw Failure{ExitCode::badInput, input.name + " is neither a MIDI nor a kern file (--as midi|kern says what it is to be)"};
    }
  }
  if (music.empty()) throw Failure{ExitCode::badInput, "no MIDI and no kern file in " + options.inputs.front()};
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
  CLI::App* verb = app.add_subcommand("inspect", "Tell what MIDI and kern files give, and what is lost of them");
  verb->add_option("FILE", options->inputs, "MIDI and kern files, or folders of them")->required()->option_text(" ");
  verb->add_flag("--recursive,-r", options->recursive, "Inspect the files of the folders below too");
  addKindOptions(*verb, options->as);
  addReadingOptions(*verb, options->reading);
  verb->add_flag("--json", options->json, "Print JSON instead of tables: a list with an object for each file");
  addTalkOptions(*verb, options->talk);
  verb->footer(std::string(examples) + exitCodes);
  verb->callback([options] { runInspect(*options); });
}
