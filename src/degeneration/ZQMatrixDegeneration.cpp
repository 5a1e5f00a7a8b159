// The degeneration feed of the medium tier and of the full tier.
#include "degeneration/ZQDegenerationFeed.h"
#include "symbols/ZQMatrix.h"

namespace zmatrix {

template <>
struct DegenerationTier<ZQMatrixMedium> {
  static void markEndOfForm(ZQMatrixMedium*, std::span<const int>) {}
};

/// The end of a form gets a new symbol each time it is learned, so the number of symbols counts the texts learned.
template <>
struct DegenerationTier<ZQMatrix> {
  static void markEndOfForm(ZQMatrix* matrix, std::span<const int> form) {
    int handle = -1;
    ZQMatrixElement* element = matrix->getMatrixElementFromElementVector(form.data(), static_cast<int>(form.size()), &handle);
    if (element == nullptr) return;  // the update was refused
    element->setSymbolID(matrix->getNewSymbolID());
    matrix->getMatrixInfo()->incrementNumberOfSymbols();
  }
};

}  // namespace zmatrix

int ZQMatrixMedium::feedMatrixWithDegenerationOcronData(const int* degenerationLevels, int arrayLength,
                                                        char*** degenerationOcrons, int ocronType, const char* endOfOcron,
                                                        int lastGoodIndex, int dryRun, int autoSave, int* numberFed) {
  return zmatrix::feedMatrixWithDegenerationOcronDataIn(this, degenerationLevels, arrayLength, degenerationOcrons, ocronType,
                                                        endOfOcron, lastGoodIndex, dryRun, autoSave, numberFed);
}

int ZQMatrix::feedMatrixWithDegenerationOcronData(const int* degenerationLevels, int arrayLength, char*** degenerationOcrons,
                                                  int ocronType, const char* endOfOcron, int lastGoodIndex, int dryRun,
                                                  int autoSave, int* numberFed) {
  return zmatrix::feedMatrixWithDegenerationOcronDataIn(this, degenerationLevels, arrayLength, degenerationOcrons, ocronType,
                                                        endOfOcron, lastGoodIndex, dryRun, autoSave, numberFed);
}
