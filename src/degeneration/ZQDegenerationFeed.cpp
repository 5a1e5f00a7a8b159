#include "degeneration/ZQDegenerationFeed.h"

namespace zmatrix {

namespace {

constexpr int mostNumbersShown = 100, mostFormsShown = 10, mostCharactersShown = 512;

void showForm(int number, int form, const char* ocron) {
  if (ocron == nullptr) {
    dbPrintf(0, "degenerationOcrons[%d][%d] = NULL\n", number, form);
    return;
  }
  dbPrintf(0, "degenerationOcrons[%d][%d] = %p\n", number, form, static_cast<const void*>(ocron));
  for (int i = 0; i < mostCharactersShown && ocron[i] != 0; i++) dbPrintf(0, "%c", ocron[i]);
  dbPrintf(0, "\n");
}

}  // namespace

void showDegenerationForms(const int* degenerationLevels, int arrayLength, const char* const* const* degenerationOcrons) {
  if (!ZQDebugChannel::shows(0)) return;
  for (int i = 0; i < std::min(arrayLength, mostNumbersShown); i++) {
    if (degenerationOcrons[i] == nullptr)
      dbPrintf(0, "degenerationOcrons[%d] = NULL\n", i);
    else
      for (int j = 0; j < std::min(degenerationLevels[i], mostFormsShown); j++) showForm(i, j, degenerationOcrons[i][j]);
    dbPrintf(0, "####################################\n");
  }
}

void reportDegenerationProgress(int number, int level, const char* fileName) {
  static constexpr char line[] = "Matrix feeded with ocron rules up to up to number: %d, degen-level: %d\n";
  dbPrintf(0, line, number, level);
  FILE* file = fileName != nullptr ? fopen(fileName, "w") : nullptr;
  if (file == nullptr) return;
  fprintf(file, line, number, level);
  fclose(file);
}

bool isDegenerationTerminated() {
  FILE* signal = fopen("matrixTerminate", "r");
  if (signal == nullptr) return false;
  fclose(signal);
  dbPrintf(0, "feedMatrixWithDegenerationOcronData: terminated by signal file matrixTerminate\n");
  return true;
}

}  // namespace zmatrix
