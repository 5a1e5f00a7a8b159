#include "Learning.h"

#include <cstdio>
#include <map>
#include <string>

#include "Failure.h"

namespace {

constexpr int phraseLimitForLetters = 8;
constexpr int phraseLimitForWords = 16;  // a longer word gets no symbol
constexpr int wordLimit = 3;

// The library's callback takes no context, so what it draws is reached through here while texts are learned.
struct Learning {
  Progress* progress;
  const Matrix* matrix;
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

}  // namespace

std::unique_ptr<Matrix> makeMatrix(const LearningOptions& options, Loudness loudness) {
  const bool learnsWords = options.level == Level::words;
  if (learnsWords && options.tier == Tier::medium) throw Failure{ExitCode::usage, "--level words needs --tier full"};
  if (!learnsWords && options.maxWords) throw Failure{ExitCode::usage, "--max-words needs --level words"};
  std::unique_ptr<Matrix> matrix = Matrix::create(options.tier.value_or(learnsWords ? Tier::full : Tier::medium), loudness);
  if (learnsWords) matrix->prepareForWords(options.maxWords.value_or(wordLimit));
  matrix->prepareForTexts(options.maxPhrase.value_or(learnsWords ? phraseLimitForWords : phraseLimitForLetters));
  return matrix;
}

void adjustMatrix(Matrix& matrix, const LearningOptions& options) {
  const auto refuse = [](const std::string& what) {
    throw Failure{ExitCode::usage, what + "; without --update a model is made anew"};
  };
  if (options.tier && options.tier != matrix.tier())
    refuse(std::string("the model is of the ") + nameOf(matrix.tier()) + " tier");
  if (options.level == Level::words && !matrix.hasWords()) refuse("the model was learned without --level words");
  if (options.level == Level::letters && matrix.hasWords()) refuse("the model was learned with --level words");
  if (options.maxWords && !matrix.hasWords()) refuse("--max-words is for a model that was learned with --level words");
  if (options.maxPhrase) matrix.setPhraseLimit(*options.maxPhrase);
  if (options.maxWords) matrix.setWordLimit(*options.maxWords);
}

std::vector<int> learnFiles(Matrix& matrix, const std::vector<InputFile>& inputs, Progress& progress) {
  Learning state{&progress, &matrix, "", 0, 0, 0, 0};
  for (const InputFile& input : inputs) state.bytesInAll += static_cast<double>(input.size);
  if (progress.isShown()) {
    learning = &state;
    setMatrixProgressDisplayFunction(showLearning);
  }
  std::vector<int> ids;
  std::map<int, long long> wordsLeftOut;  // by the limit that they exceeded, which a language may have of its own
  for (const InputFile& input : inputs) {
    state.file = input.path.substr(input.path.rfind('/') + 1);
    state.bytesOfFile = static_cast<double>(input.size);
    state.itemsBefore = matrix.itemsLearned();
    const Matrix::Learned learned = matrix.learn(input.path);
    ids.push_back(learned.id);
    if (learned.wordsLeftOut > 0) {
      wordsLeftOut[matrix.record(learned.id).maxPhraseLengthForUpdateWithSequence] += learned.wordsLeftOut;
    }
    state.bytesBefore += state.bytesOfFile;
  }
  setMatrixProgressDisplayFunction(nullptr);
  learning = nullptr;
  progress.clear();
  for (const auto& [limit, words] : wordsLeftOut) {
    std::fprintf(stderr, "left out %lld word%s of more than %d letters: a larger --max-phrase takes them\n", words,
                 words == 1 ? "" : "s", limit);
  }
  return ids;
}

long long itemsOfTexts(Matrix& matrix) {
  long long items = 0;
  for (int id = 0; id < matrix.numberOfIDs(); ++id) {
    if (matrix.record(id).matrixType == ZQMatrixTypeANSIText) items += matrix.itemsLearned(id);
  }
  return items;
}
