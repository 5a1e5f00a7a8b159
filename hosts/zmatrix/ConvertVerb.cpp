// `zmatrix convert`: converts a kern score to a MIDI file.
#include <memory>
#include <string>

#include "Failure.h"
#include "Inputs.h"
#include "KernConversion.h"
#include "Material.h"
#include "Messages.h"
#include "MusicLearning.h"
#include "MusicReport.h"
#include "Options.h"
#include "Output.h"
#include "Scores.h"
#include "ScratchFile.h"
#include "Verbs.h"

namespace {

struct ConvertOptions {
  std::string score;
  std::string out;
  ReadingOptions reading;
  MessageOptions messages;
};

std::string countOfFindings(const zq_Score& score) {
  long long findings = 0;
  for (const long long count : score.findingCounts) findings += count;
  return findings == 0 ? "" : ", with " + countOf(findings, "finding") + " (listed by `zmatrix inspect`)";
}

std::string convertExactly(const InputFile& input, const ReadingOptions& options, std::string& remark) {
  const Score score = readScore(input.path, input.kind, options.graceQuanta.value_or(0));
  if (const std::string refusal = refusalOf(*score); !refusal.empty()) {
    throw Failure{ExitCode::badInput, input.name + ": " + refusal};
  }
  if (score->numberOfNotes == 0) throw Failure{ExitCode::badInput, input.name + " has no notes (see `zmatrix inspect`)"};
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
  if (bytes.empty()) throw Failure{ExitCode::badInput, input.name + " has no notes (see `zmatrix inspect`)"};
  return bytes;
}

const char* const examples = R"(
By default every note keeps its exact onset and duration. `zmatrix inspect SCORE` lists the findings of the reading.

Examples:
  zmatrix convert chorale.krn chorale.mid
  zmatrix convert sonata.krn sonata.mid --grace-quanta 192

)";

void runConvert(const ConvertOptions& options) {
  keepStandardOutputForResults();
  const InputFile score = findInputs({options.score}, false, std::nullopt).front();
  refuseInputAsOutput(options.out, {score});
  if (score.kind != Kind::kern) throw Failure{ExitCode::badInput, score.name + " is not a kern file: it has no **kern column"};
  Output output(options.out);
  if (output.isOnTerminal()) throw Failure{ExitCode::usage, "won't write MIDI to a terminal; use --out FILE"};
  std::string remark;
  const bool isClassic = options.reading.reading == Reading::classic;
  if (isClassic) MusicLearning::of(Reading::classic, options.reading);  // refuses options of the exact reading
  output.write(isClassic ? convertByClassicRules(score) : convertExactly(score, options.reading, remark));
  output.commit();
  note("converted " + score.name + remark);
}

}  // namespace

void addConvertVerb(CLI::App& app) {
  const auto options = std::make_shared<ConvertOptions>();
  CLI::App* verb = app.add_subcommand("convert", "Convert a kern score to a MIDI file");
  verb->add_option("SCORE", options->score, "A kern file")->required()->option_text(" ");
  verb->add_option("MIDI,--out,-o", options->out, "The MIDI file to write; - is standard output")
      ->required()
      ->check(isNamed)
      ->option_text(" ");
  addReadingOptions(*verb, options->reading);
  addMessageOptions(*verb, options->messages);
  verb->footer(std::string(examples) + exitCodes);
  verb->callback([options] { runConvert(*options); });
}
