// `zmatrix convert`: a kern score as a MIDI file.
#include <memory>
#include <string>

#include "Failure.h"
#include "Inputs.h"
#include "KernConversion.h"
#include "Material.h"
#include "MusicLearning.h"
#include "MusicReport.h"
#include "Options.h"
#include "Output.h"
#include "Scores.h"
#include "ScratchFile.h"
#include "Talk.h"
#include "Verbs.h"

namespace {

struct ConvertOptions {
  std::string score;
  std::string out;
  ReadingOptions reading;
  TalkOptions talk;
};

std::string countOfFindings(const zq_Score& score) {
  long long findings = 0;
  for (const long long count : score.findingCounts) findings += count;
  return findings == 0 ? "" : ", with " + countOf(findings, "finding") + " (`zmatrix inspect` tells them)";
}

std::string convertExactly(const InputFile& input, const ReadingOptions& options, std::string& remark) {
  const Score score = readScore(input.path, input.kind, options.graceQuanta.value_or(0));
  if (const std::string refusal = refusalOf(*score); !refusal.empty()) {
    throw Failure{ExitCode::badInput, input.name + ": " + refusal};
  }
  if (score->numberOfNotes == 0) throw Failure{ExitCode::badInput, input.name + " gives no music; `zmatrix inspect` tells more"};
  remark = countOfFindings(*score);
  return midiOf(*score);
}

std::string convertByClassicRules(const InputFile& input) {
  const MusicReport report = reportOf(input);
  if (!report.refusal.empty()) throw Failure{ExitCode::badInput, input.name + ": " + report.refusal};
  const ScratchFile file;
  if (!convertClassically(input.path, file.path())) {
    throw Failure{ExitCode::limit, "cannot convert " + input.name + ": out of memory"};
  }
  std::string bytes = file.bytes();
  if (bytes.empty()) throw Failure{ExitCode::badInput, input.name + " gives no music; `zmatrix inspect` tells more"};
  return bytes;
}

const char* const examples = R"(
The exact reading gives every note at its time. `zmatrix inspect SCORE` tells what it found in the score.

Examples:
  zmatrix convert chorale.krn chorale.mid
  zmatrix convert sonata.krn sonata.mid --grace-quanta 192

)";

void runConvert(const ConvertOptions& options) {
  keepStandardOutputForResults();
  const InputFile score = findInputs({options.score}, false, std::nullopt).front();
  refuseInputAsOutput(options.out, {score});
  if (score.kind != Kind::kern) throw Failure{ExitCode::badInput, score.name + " is no kern file: no **kern column"};
  Output output(options.out);
  if (output.isOnTerminal()) throw Failure{ExitCode::usage, "MIDI is no text for a terminal: name a file for it"};
  std::string remark;
  const bool isClassic = options.reading.reading == Reading::classic;
  if (isClassic) MusicLearning::of(Reading::classic, options.reading);  // refuses what goes with the exact reading alone
  output.write(isClassic ? convertByClassicRules(score) : convertExactly(score, options.reading, remark));
  output.commit();
  note("converted " + score.name + remark);
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
  addReadingOptions(*verb, options->reading);
  addTalkOptions(*verb, options->talk);
  verb->footer(std::string(examples) + exitCodes);
  verb->callback([options] { runConvert(*options); });
}
