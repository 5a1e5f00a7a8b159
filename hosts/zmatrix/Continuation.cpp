#include "Continuation.h"

#include <cstdio>

#include "Failure.h"

int selectSubMatrix(Matrix& matrix, const std::string& start) {
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
  if (best < 0) throw Failure{ExitCode::badInput, "nothing to learn: the input holds no text"};
  matrix.select(best);
  return best;
}

void writeContinuation(Matrix& matrix, const GenerationOptions& options, Output& output, Progress& progress) {
  matrix.setMethod(options.method);
  if (!options.start.empty()) matrix.setContext(options.start);
  matrix.seed(options.seed);
  output.write(options.start);
  const bool shown = !output.isOnTerminal();  // there the text itself shows how far it is
  for (long long done = 0; done < options.count; ++done) {
    if (shown && done % 256 == 0) progress.show("writing", static_cast<double>(done) / static_cast<double>(options.count));
    output.write(matrix.nextByte());
  }
  output.commit();
  if (!shown) std::fputc('\n', stderr);
}
