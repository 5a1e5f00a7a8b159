// `zmatrix continue`: learns text files and writes a start followed by what the matrix finds likely to come next.
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include "Continuation.h"
#include "Failure.h"
#include "Inputs.h"
#include "Learning.h"
#include "Options.h"
#include "Output.h"
#include "Progress.h"
#include "Verbs.h"

namespace {

struct ContinueOptions {
  LearningOptions learning;
  GenerationOptions generation;
  TalkOptions talk;
};

const char* const examples = R"(
With --level words a text is learned as letters and as words, and continued word by word.
Texts are read as bytes (ISO 8859-1 is what the rules for sentences expect; UTF-8 passes through as it is).
A text's language, German or English, is told by its words, and each language is learned apart. Continued is the language
that knows the longest ending of the start; without a start, the one of which most was learned.
The same inputs, options and seed give the same bytes.

Examples:
  zmatrix continue novel.txt --count 500 --seed 7
  zmatrix continue letters/ --recursive --start "Dear " --out letter.txt
  zmatrix continue poems.txt --max-phrase 5 --method random | less
  zmatrix continue novel.txt --level words --count 100

)";

void runContinue(const ContinueOptions& options) {
  keepStandardOutputForResults();
  const std::vector<InputFile> inputs = findTextFiles(options.learning.inputs, options.learning.recursive);
  refuseInputAsOutput(options.generation.out, inputs);
  Output output(options.generation.out);
  Progress progress(options.talk.showsProgress());
  const std::unique_ptr<Matrix> matrix = makeMatrix(options.learning, options.talk.loudness());
  learnFiles(*matrix, inputs, progress);
  if (matrix->itemsLearned() == 0) throw Failure{ExitCode::badInput, "nothing to learn: the input holds no text"};

  Continuation continuation(*matrix, options.learning.level.value_or(Level::letters), options.generation);
  progress.clear();
  if (!options.talk.quiet) {
    std::fprintf(stderr, "learned %zu file%s, %lld items; continuing %s\n", inputs.size(), inputs.size() == 1 ? "" : "s",
                 itemsOfTexts(*matrix), languageOf(matrix->record(continuation.id())));
  }
  continuation.write(output, progress);
}

}  // namespace

void addContinueVerb(CLI::App& app) {
  const auto options = std::make_shared<ContinueOptions>();
  CLI::App* verb = app.add_subcommand("continue", "Learn texts and continue them");
  addLearningOptions(*verb, options->learning);
  addGenerationOptions(*verb, options->generation);
  addTalkOptions(*verb, options->talk);
  verb->footer(std::string(examples) + exitCodes);
  verb->callback([options] { runContinue(*options); });
}
