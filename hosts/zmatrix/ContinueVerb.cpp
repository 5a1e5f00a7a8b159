// `zmatrix continue`: learns text files and writes a start followed by what the matrix finds likely to come next.
#include <zmatrix/zmatrix.h>

#include <cstdio>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "Failure.h"
#include "Inputs.h"
#include "Output.h"
#include "Progress.h"
#include "TextMatrix.h"
#include "Verbs.h"

namespace {

struct ContinueOptions {
  std::vector<std::string> inputs;
  bool recursive = false;
  std::string start;
  long long count = 1000;
  long long seed = 31459;
  Method method = Method::random;
  int maxPhrase = 8;
  std::string out;
  bool quiet = false;
  int debugLevel = 0;
};

const char* const examples = R"(
Texts are read as bytes (ISO 8859-1 is what the rules for sentences expect; UTF-8 passes through as it is).
A text's language, German or English, is told by its words, and each language is learned apart. Continued is the language
that knows the longest ending of the start; without a start, the one of which most was learned.
The same inputs, options and seed give the same bytes.

Examples:
  zmatrix continue novel.txt --count 500 --seed 7
  zmatrix continue letters/ --recursive --start "Dear " --out letter.txt
  zmatrix continue poems.txt --max-phrase 5 --method random | less

Exit codes: 0 done, 2 wrong usage, 3 an input can't be read or holds nothing to learn, 4 a limit (memory, matrix, disk).)";

Loudness loudnessFor(const ContinueOptions& options) {
  return {options.quiet ? -1 : options.debugLevel};
}

// The library's callback takes no context, so what it draws is reached through here while texts are learned.
struct Learning {
  Progress* progress;
  const TextMatrix<MediumTier>* matrix;
  std::string file;
  double bytesBefore;
  double bytesInAll;
  long long itemsBefore;
  double bytesOfFile;
};
Learning* learning = nullptr;

void showLearning(progressCallBackData_tag*) {
  const double items = static_cast<double>(learning->matrix->itemsLearned() - learning->itemsBefore);
  const double bytes = learning->bytesBefore + (items < learning->bytesOfFile ? items : learning->bytesOfFile);
  learning->progress->show("learning " + learning->file, learning->bytesInAll > 0 ? bytes / learning->bytesInAll : 1);
}

void learn(TextMatrix<MediumTier>& matrix, const std::vector<InputFile>& inputs, Progress& progress) {
  Learning state{&progress, &matrix, "", 0, 0, 0, 0};
  for (const InputFile& input : inputs) state.bytesInAll += static_cast<double>(input.size);
  if (progress.isShown()) {
    learning = &state;
    setMatrixProgressDisplayFunction(showLearning);
  }
  for (const InputFile& input : inputs) {
    state.file = input.path.substr(input.path.rfind('/') + 1);
    state.bytesOfFile = static_cast<double>(input.size);
    state.itemsBefore = matrix.itemsLearned();
    matrix.learn(input.path);
    state.bytesBefore += state.bytesOfFile;
  }
  setMatrixProgressDisplayFunction(nullptr);
  learning = nullptr;
}

// The sub-matrix to continue: the one that knows the longest ending of the start, of equals the one that learned most.
int chooseID(TextMatrix<MediumTier>& matrix, const std::string& start) {
  int best = -1;
  int bestKnown = -1;
  for (int id = 0; id < matrix.numberOfIDs(); ++id) {
    if (matrix.itemsLearned(id) == 0) continue;
    matrix.select(id);
    const int known = start.empty() ? 0 : matrix.setContext(start);
    if (known > bestKnown || (known == bestKnown && matrix.itemsLearned(id) > matrix.itemsLearned(best))) {
      best = id;
      bestKnown = known;
    }
  }
  return best;
}

void writeContinuation(TextMatrix<MediumTier>& matrix, const ContinueOptions& options, Output& output, Progress& progress) {
  if (!options.start.empty()) matrix.setContext(options.start);
  matrix.seed(options.seed);
  output.write(options.start);
  const bool shown = !output.isOnTerminal();  // there the text itself shows how far it is
  for (long long done = 0; done < options.count; ++done) {
    if (shown && done % 256 == 0) progress.show("writing", static_cast<double>(done) / static_cast<double>(options.count));
    output.write(matrix.generate());
  }
  output.commit();
  if (!shown) std::fputc('\n', stderr);
}

void runContinue(const ContinueOptions& options) {
  keepStandardOutputForResults();
  const std::vector<InputFile> inputs = findTextFiles(options.inputs, options.recursive);
  Output output(options.out);
  Progress progress(!options.quiet && options.debugLevel == 0);
  TextMatrix<MediumTier> matrix(loudnessFor(options), options.maxPhrase, options.method);
  learn(matrix, inputs, progress);

  const int id = chooseID(matrix, options.start);
  if (id < 0) throw Failure{ExitCode::badInput, "nothing to learn: the input holds no text"};
  matrix.select(id);
  progress.clear();
  if (!options.quiet) {
    std::fprintf(stderr, "learned %zu file%s, %lld items; continuing %s\n", inputs.size(), inputs.size() == 1 ? "" : "s",
                 matrix.itemsLearned(), matrix.language());
  }
  writeContinuation(matrix, options, output, progress);
}

}  // namespace

void addContinueVerb(CLI::App& app) {
  static const std::map<std::string, Method> methods = {
      {"best", Method::best}, {"middle", Method::middle}, {"random", Method::random}};
  const auto options = std::make_shared<ContinueOptions>();
  CLI::App* verb = app.add_subcommand("continue", "Learn texts and continue them");
  verb->add_option("INPUT", options->inputs, "Text files, or folders whose .txt files are learned")->required()->option_text(" ");
  verb->add_flag("--recursive,-r", options->recursive, "Learn the .txt files of the folders below too");
  verb->add_option("--start", options->start, "The text to continue; the input need not hold it")->option_text("TEXT");
  verb->add_option("--count", options->count, "Items (bytes) to generate, 1000 unless given")
      ->check(CLI::NonNegativeNumber)
      ->option_text("N");
  verb->add_option("--seed", options->seed, "Start of the random draws, 0 to 2147483647; 31459 unless given")
      ->check(CLI::Range(0LL, 2147483647LL))
      ->option_text("N");
  verb->add_option("--method", options->method,
                   "How an item is chosen: by its probability (random), the most probable (best), the middle one of the possible "
                   "(middle); random unless given")
      ->transform(CLI::CheckedTransformer(methods))
      ->option_text("best|middle|random");
  verb->add_option(
          "--max-phrase", options->maxPhrase,
          "Longest phrase learned, 1 to 1024 items, 8 unless given: more keeps closer to the text, for memory in proportion")
      ->check(CLI::Range(1, 1024))
      ->option_text("N");
  verb->add_option("--out", options->out, "File to write; without it, standard output")->option_text("FILE");
  verb->add_flag("--quiet,-q", options->quiet, "No progress, notes or warnings");
  verb->add_option("--debug", options->debugLevel, "Print the library's messages up to this level, 0 to 9, on standard error")
      ->check(CLI::Range(0, 9))
      ->option_text("LEVEL");
  verb->footer(examples);
  verb->callback([options] { runContinue(*options); });
}
