// `zmatrix convert`: a kern score as a MIDI file.
#include <memory>
#include <string>

#include "Failure.h"
#include "Inputs.h"
#include "MusicReport.h"
#include "Options.h"
#include "Output.h"
#include "ScratchFile.h"
#include "Talk.h"
#include "Verbs.h"

namespace {

struct ConvertOptions {
  std::string score;
  std::string out;
  TalkOptions talk;
};

// The library asks for a matrix, which has no part in it.
bool convert(const std::string& score, const std::string& midi) {
  ZQMatrixMedium* const matrix = createAndInitMatrixMediumWithDebugParameters(0, -1, "");
  if (matrix == nullptr) return false;
  const int result = s_convertKERNFileToMIDIFile_Medium(matrix, score.c_str(), midi.c_str());
  deleteMatrixMedium(matrix);
  return result == 1;
}

const char* const examples = R"(
`zmatrix inspect SCORE` tells what of the score the reading takes.

Example:
  zmatrix convert chorale.krn chorale.mid

)";

void runConvert(const ConvertOptions& options) {
  keepStandardOutputForResults();
  const InputFile score = findInputs({options.score}, false, std::nullopt).front();
  refuseInputAsOutput(options.out, {score});
  if (score.kind != Kind::kern) throw Failure{ExitCode::badInput, score.name + " is no kern file: no **kern column"};
  Output output(options.out);
  if (output.isOnTerminal()) throw Failure{ExitCode::usage, "MIDI is no text for a terminal: name a file for it"};
  const MusicReport report = reportOf(score);
  if (!report.refusal.empty()) throw Failure{ExitCode::badInput, score.name + ": " + report.refusal};
  const ScratchFile file;
  if (!convert(score.path, file.path())) throw Failure{ExitCode::limit, "cannot convert " + score.name + ": out of memory"};
  const std::string bytes = file.bytes();
  if (bytes.empty()) throw Failure{ExitCode::badInput, score.name + " gives no music; `zmatrix inspect` tells more"};
  output.write(bytes);
  output.commit();
  note("converted " + score.name);
}

}  // namespace

void addConvertVerb(CLI::App& app) {
  const auto options = std::make_shared<ConvertOptions>();
  CLI::App* verb = app.add_subcommand("convert", "Turn a kern score into a MIDI file");
  verb->add_option("SCORE", options->score, "A kern file")->required()->option_text(" ");
  verb->add_option("MIDI,--out,-o", options->out, "The MIDI file to write; - is standard output")
      ->required()
      ->check(isNamed)
      ->option_text(" ");
  addTalkOptions(*verb, options->talk);
  verb->footer(std::string(examples) + exitCodes);
  verb->callback([options] { runConvert(*options); });
}
