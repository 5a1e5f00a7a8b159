#include "Learning.h"

#include <string>

namespace {

// The library's progress callback has no context argument, so its state is reached through the pointer `learning`.
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

// Registers the callback, and unregisters it when learning ends, also by an exception.
class Display {
 public:
  explicit Display(Learning& state) {
    if (!state.progress->isShown()) return;
    learning = &state;
    setMatrixProgressDisplayFunction(showLearning);
  }
  ~Display() {
    setMatrixProgressDisplayFunction(nullptr);
    learning = nullptr;
  }
  Display(const Display&) = delete;
  Display& operator=(const Display&) = delete;
};

}  // namespace

std::vector<int> learnFiles(Material& material, Matrix& matrix, const std::vector<InputFile>& inputs, Progress& progress,
                            bool quiet) {
  Learning state{&progress, &matrix, "", 0, 0, 0, 0};
  for (const InputFile& input : inputs) state.bytesInAll += static_cast<double>(input.size);
  std::vector<int> ids;
  const Display display(state);
  for (const InputFile& input : inputs) {
    state.file = input.name.substr(input.name.rfind('/') + 1);
    state.bytesOfFile = static_cast<double>(input.size);
    state.itemsBefore = matrix.itemsLearned();
    ids.push_back(material.learn(matrix, input));
    state.bytesBefore += state.bytesOfFile;
  }
  matrix.refreshWords();
  progress.clear();
  if (!quiet) material.printOmissions();
  return ids;
}
