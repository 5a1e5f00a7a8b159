// `zmatrix learn`: learns files into a new or an existing model file.
#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "Failure.h"
#include "Inputs.h"
#include "Learning.h"
#include "Messages.h"
#include "ModelFile.h"
#include "Options.h"
#include "Output.h"
#include "Progress.h"
#include "Reopenable.h"
#include "Verbs.h"

namespace {

struct LearnOptions {
  LearningOptions learning;
  std::string model;
  bool update = false;
  bool test = false;
  MessageOptions messages;
};

const char* const examples = R"(
The model file is replaced as a whole or not at all: after an interrupt, a full disk or a crash the previous file is unchanged.
Each run adds to the history that `zmatrix info` shows.

Examples:
  zmatrix learn novel.txt --out novel.zmatrix
  zmatrix learn second-novel.txt --update --out novel.zmatrix
  zmatrix learn letters/ --recursive --level words -o letters.zmatrix && zmatrix generate letters.zmatrix --level words
  curl -s https://example.org/novel.txt | zmatrix learn - -o novel.zmatrix
  zmatrix learn tunes/ --coding quadruple --out tunes.zmatrix

)";

std::unique_ptr<Matrix> matrixFor(const LearnOptions& options, Material& material, const std::vector<InputFile>& inputs) {
  if (!options.update) return material.makeMatrix(inputs, options.messages.messageLevel());
  std::unique_ptr<Matrix> matrix = Matrix::load(reopenable(options.model), options.messages.messageLevel());
  requireWhole(*matrix, options.model, options.learning.isForced);
  if (options.learning.tier && *options.learning.tier != matrix->tier()) {
    refuseUpdate(std::string("the model is of the ") + nameOf(matrix->tier()) + " tier");
  }
  if (subjectOf(*matrix) != subjectOf(inputs)) {
    refuseUpdate(std::string("the model holds ") + nameOf(subjectOf(*matrix)) + ", the input " + nameOf(subjectOf(inputs)));
  }
  material.adjust(*matrix, inputs);
  return matrix;
}

void runLearn(const LearnOptions& options) {
  keepStandardOutputForResults();
  const std::vector<std::string>& named = options.learning.inputs;
  if (options.update && options.model == "-" && std::find(named.begin(), named.end(), "-") != named.end()) {
    throw Failure{ExitCode::usage, "standard input can't be both the model and an input"};
  }
  const std::vector<InputFile> inputs = findInputs(options.learning.inputs, options.learning.recursive, options.learning.as);
  refuseInputAsOutput(options.model, inputs);
  const std::unique_ptr<Material> material = Material::of(subjectOf(inputs), options.learning);
  ModelFile model(options.model);
  Progress progress(options.messages.showsProgress(), options.model);
  const std::unique_ptr<Matrix> matrix = matrixFor(options, *material, inputs);
  const long long itemsBefore = matrix->itemsLearned();
  matrix->keepHistory();
  learnFiles(*material, *matrix, inputs, progress, options.messages.quiet);
  if (matrix->itemsLearned() == itemsBefore) throw Failure{ExitCode::badInput, material->nothingLearned()};
  if (options.test) {
    progress.show("testing", 0);
    if (!matrix->isSound()) throw Failure{ExitCode::damaged, "the matrix is damaged and was not saved"};
  }
  progress.show("saving", 1);
  model.save(*matrix);
  progress.clear();
  note("learned " + countOf(static_cast<long long>(inputs.size()), "file") + "; " + model.name() + " holds " +
       material->amountIn(*matrix));
}

}  // namespace

void addLearnVerb(CLI::App& app) {
  const auto options = std::make_shared<LearnOptions>();
  CLI::App* verb = app.add_subcommand("learn", "Learn texts, music or numbers into a model file");
  addLearningOptions(*verb, options->learning);
  verb->add_option("--out,-o", options->model, "The model file; an existing model is replaced. - is standard output")
      ->required()
      ->check(isNamed)
      ->option_text("MODEL");
  verb->add_flag("--update,-u", options->update, "Learn into the existing model, with its tier, level and limits");
  verb->add_flag("--test", options->test, "Run the self-test before saving; a damaged matrix is not saved");
  addMessageOptions(*verb, options->messages);
  verb->footer(std::string(examples) + exitCodes);
  verb->callback([options] { runLearn(*options); });
}
