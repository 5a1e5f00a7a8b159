#include "KernConversion.h"

#include <zmatrix/zmatrix.h>

// The library's function takes a matrix, but the result doesn't depend on it.
bool convertClassically(const std::string& score, const std::string& midi) {
  ZQMatrixMedium* const matrix = createAndInitMatrixMediumWithDebugParameters(0, -1, "");
  if (matrix == nullptr) return false;
  const int result = s_convertKERNFileToMIDIFile_Medium(matrix, score.c_str(), midi.c_str());
  deleteMatrixMedium(matrix);
  return result == 1;
}
