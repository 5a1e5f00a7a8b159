// `zmatrix learn`: learns text files into a model file, a new one or one that has learned before.
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include "Failure.h"
#include "Inputs.h"
#include "Learning.h"
#include "ModelFile.h"
#include "Options.h"
#include "Output.h"
#include "Progress.h"
#include "Verbs.h"

namespace {

struct LearnOptions {
  LearningOptions learning;
  std::string model;
  bool update = false;
  TalkOptions talk;
};

const char* const examples = R"(
The file of the model is replaced as a whole or not at all: whatever ends the run, an interrupt, a full disk or a crash, what was
there before stands. Each run adds to the history that `zmatrix info` shows.

Examples:
  zmatrix learn novel.txt --out novel.zmatrix
  zmatrix learn second-novel.txt --update --out novel.zmatrix
  zmatrix learn letters/ --recursive --level words -o letters.zmatrix && zmatrix generate letters.zmatrix --level words

)";

std::unique_ptr<Matrix> matrixFor(const LearnOptions& options) {
  if (!options.update) return makeMatrix(options.learning, options.talk.loudness());
  std::unique_ptr<Matrix> matrix = Matrix::load(options.model, options.talk.loudness());
  adjustMatrix(*matrix, options.learning);
  return matrix;
}

// A model that was damaged before is told of and goes on, for its sound parts; one that was sound must be so when it is saved.
void runLearn(const LearnOptions& options) {
  keepStandardOutputForResults();
  const std::vector<InputFile> inputs = findTextFiles(options.learning.inputs, options.learning.recursive);
  ModelFile model(options.model);
  Progress progress(options.talk.showsProgress());
  const std::unique_ptr<Matrix> matrix = matrixFor(options);
  const bool wasSound = !options.update || matrix->isSound();
  if (!wasSound) warnOfDamage(options.model, options.talk);
  const long long itemsBefore = matrix->itemsLearned();
  matrix->keepHistory();
  learnFiles(*matrix, inputs, progress);
  if (matrix->itemsLearned() == itemsBefore) throw Failure{ExitCode::badInput, "nothing to learn: the input holds no text"};
  if (!matrix->isSound() && wasSound) throw Failure{ExitCode::damaged, "the matrix is damaged and was not saved"};

  progress.show("saving", 1);
  model.save(*matrix);
  progress.clear();
  if (options.talk.quiet) return;
  std::fprintf(stderr, "learned %zu file%s; %s holds %lld items\n", inputs.size(), inputs.size() == 1 ? "" : "s",
               options.model.c_str(), itemsOfTexts(*matrix));
}

}  // namespace

void addLearnVerb(CLI::App& app) {
  const auto options = std::make_shared<LearnOptions>();
  CLI::App* verb = app.add_subcommand("learn", "Learn texts into a model file");
  addLearningOptions(*verb, options->learning);
  verb->add_option("--out,-o", options->model, "The file of the model; what is there is replaced")
      ->required()
      ->option_text("MODEL");
  verb->add_flag("--update,-u", options->update, "Learn into the model that is there, with its tier, level and limits");
  addTalkOptions(*verb, options->talk);
  verb->footer(std::string(examples) + exitCodes);
  verb->callback([options] { runLearn(*options); });
}
