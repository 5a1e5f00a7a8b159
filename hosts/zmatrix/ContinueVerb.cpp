// `zmatrix continue`: learns files and writes a start followed by generated items.
#include <memory>
#include <string>
#include <vector>

#include "Failure.h"
#include "Inputs.h"
#include "Learning.h"
#include "Messages.h"
#include "Options.h"
#include "Output.h"
#include "Progress.h"
#include "Verbs.h"

namespace {

struct ContinueOptions {
  LearningOptions learning;
  GenerationOptions generation;
  MessageOptions messages;
};

const char* const examples = R"(
With --level words a text is learned and continued word by word.
A text is read as UTF-8, as UTF-16 if it has a byte order mark, else as Windows-1252; the result is UTF-8. --encoding overrides both.
The language of a text (German, English or unknown) is detected, and each language is learned in its own sub-matrix. The sub-matrix
that knows the longest ending of the start is continued; without a start, the one that learned most.
The same inputs, options and seed give the same bytes.

Examples:
  zmatrix continue novel.txt --count 500 --seed 7
  zmatrix continue letters/ --recursive --start "Dear " --out letter.txt
  zmatrix continue poems.txt --max-phrase 5 --method random | less
  zmatrix continue novel.txt --level words --count 100

)";

void runContinue(ContinueOptions& options) {
  keepStandardOutputForResults();
  const std::vector<InputFile> inputs = findInputs(options.learning.inputs, options.learning.recursive, options.learning.as);
  refuseInputAsOutput(options.generation.out, inputs);
  const std::unique_ptr<Material> material = Material::of(subjectOf(inputs), options.learning);
  Output output(options.generation.out);
  material->requireFitting(output);
  Progress progress(options.messages.showsProgress(), options.generation.out);
  const std::unique_ptr<Matrix> matrix = material->makeMatrix(inputs, options.messages.messageLevel());
  learnFiles(*material, *matrix, inputs, progress, options.messages.quiet);
  if (matrix->itemsLearned() == 0) throw Failure{ExitCode::badInput, material->nothingLearned()};

  options.generation.level = options.learning.level;
  options.generation.reading = options.learning.reading;
  options.generation.encoding = options.learning.encoding;
  options.generation.encodingOfTexts = options.learning.encoding;
  if (subjectOf(inputs) == Subject::texts && (isVerbose() || options.generation.json)) {
    for (const InputFile& input : inputs) options.generation.against.push_back(input.path);
  }
  const std::unique_ptr<Continuation> continuation = material->continuation(*matrix, options.generation);
  progress.clear();
  note("learned " + countOf(static_cast<long long>(inputs.size()), "file") + ", " + material->amountIn(*matrix) +
       "; continuing " + continuation->description());
  continuation->write(output, progress);
}

}  // namespace

void addContinueVerb(CLI::App& app) {
  const auto options = std::make_shared<ContinueOptions>();
  CLI::App* verb = app.add_subcommand("continue", "Learn texts, music or numbers and continue them");
  addLearningOptions(*verb, options->learning);
  addGenerationOptions(*verb, options->generation);
  addMessageOptions(*verb, options->messages);
  verb->footer(std::string(examples) + exitCodes);
  verb->callback([options] { runContinue(*options); });
}
