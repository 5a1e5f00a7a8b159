// `zmatrix generate`: continues a start with a model file.
#include <memory>
#include <string>

#include "Inputs.h"
#include "Material.h"
#include "Messages.h"
#include "ModelFile.h"
#include "Options.h"
#include "Output.h"
#include "Progress.h"
#include "Reopenable.h"
#include "Verbs.h"

namespace {

struct GenerateOptions {
  std::string model;
  bool force = false;
  GenerationOptions generation;
  MessageOptions messages;
};

const char* const examples = R"(
The result is the same as that of `zmatrix continue` for the same files, options and seed.

Examples:
  zmatrix generate novel.zmatrix --start "It was " --count 500 --seed 7
  zmatrix generate letters.zmatrix --level words --count 100 --out letter.txt
  zmatrix generate tunes.zmatrix --matrix 2 --count 300 --out new.mid

)";

void runGenerate(const GenerateOptions& options) {
  keepStandardOutputForResults();
  Progress progress(options.messages.showsProgress(), options.generation.out);
  progress.show("loading", 0);
  const std::string path = reopenable(options.model), name = nameOfArgument(options.model);
  const std::unique_ptr<Matrix> matrix = Matrix::load(path, options.messages.messageLevel());
  refuseInputAsOutput(options.generation.out, {{name, path, 0, Kind::text}});
  const LearningOptions none;
  const std::unique_ptr<Material> material = Material::of(subjectOf(*matrix), none);
  Output output(options.generation.out);
  material->requireFitting(output);
  requireWhole(*matrix, name, options.force);
  const std::unique_ptr<Continuation> continuation = material->continuation(*matrix, options.generation);
  progress.clear();
  note("loaded " + name + "; continuing " + continuation->description());
  continuation->write(output, progress);
}

}  // namespace

void addGenerateVerb(CLI::App& app) {
  const auto options = std::make_shared<GenerateOptions>();
  CLI::App* verb = app.add_subcommand("generate", "Continue a start with a model file");
  verb->add_option("MODEL", options->model, "A model file made by `zmatrix learn`; - is standard input")
      ->required()
      ->option_text(" ");
  addLevelOption(*verb, options->generation.level);
  addReadingOptions(*verb, options->generation.reading);
  addEncodingOption(*verb, options->generation.encoding,
                    "Encoding of the result: utf-8 (default), utf-16, utf-16le, utf-16be, windows-1252, iso-8859-1");
  addGenerationOptions(*verb, options->generation);
  verb->add_option("--against", options->generation.against,
                   "A text to compare the result with, to measure copying; can be repeated")
      ->allow_extra_args(false)
      ->option_text("FILE")
      ->group("Texts");
  verb->add_flag("--force", options->force, "Continue a model even if it is damaged");
  addMessageOptions(*verb, options->messages);
  verb->footer(std::string(examples) + exitCodes);
  verb->callback([options] { runGenerate(*options); });
}
