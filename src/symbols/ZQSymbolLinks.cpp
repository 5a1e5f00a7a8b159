#include "symbols/ZQSymbolLinks.h"

#include "frame/ZQMemory.h"
#include "symbols/ZQMatrix.h"

namespace zmatrix {

namespace {

constexpr int longestPath = 4096;  // coordinates, as for handles

/// Calls visit(coordinate) for each step from an element up to its root. Returns the ID of the root, or -1 if a link is damaged
/// or the path too long.
template <class Visitor>
int goUp(ZQMatrix& matrix, long long position, Visitor visit) {
  for (int steps = 0; steps <= longestPath; ++steps) {
    if (position >= 0 && position < matrix.getMaxNumberOfMatrices()) return static_cast<int>(position);
    const ZQMatrixElement* element = matrix.elementAt(position);
    if (element == nullptr || steps == longestPath) return -1;
    visit(element->getIndexInDimension());
    position += element->getOffsetToElementInPrevDimension();
  }
  return -1;
}

int rootOf(ZQMatrix& matrix, int position) {
  return goUp(matrix, position, [](int) {});
}

/// The symbol level above a sub-matrix, or -1.
int levelAbove(ZQMatrix& matrix, int id) {
  const int levelUp = matrix.getMatrixInfo(id)->getCurrentMatrixIDLevelUp();
  return levelUp >= 0 && levelUp < matrix.getMaxNumberOfMatrices() && levelUp != id ? levelUp : -1;
}

void clearLinksOfLevel(ZQMatrix& matrix, int level) {
  const ZQMatrixElement* root = matrix.elementAt(level);
  if (root == nullptr || root->getOffsetToElementInNextDimension() == 0) return;
  long long position = static_cast<long long>(level) + root->getOffsetToElementInNextDimension();
  for (auto* symbol = matrix.elementAt(position); symbol != nullptr; symbol = matrix.elementAt(position)) {
    symbol->setSymbolDownLinkHandle(0);
    if (symbol->getOffsetToNextElementInDimension() < 1) return;
    position += symbol->getOffsetToNextElementInDimension();
  }
}

/// Sets the link of a symbol to the last element of its phrase. 1, or 0 if the level above doesn't have the symbol.
int setLinkTo(ZQMatrix& matrix, int position, int symbol) {
  const int id = rootOf(matrix, position);
  const int level = id >= 0 ? levelAbove(matrix, id) : -1;
  const int symbolPosition = level >= 0 ? matrix.childAt(level, symbol) : -1;
  if (symbolPosition < 0) return 0;
  matrix.elementAt(symbolPosition)->setSymbolDownLinkHandle(position);
  return 1;
}

}  // namespace

int refreshSymbolLinks(ZQMatrix* matrix) {
  if (!matrix->hasBlock()) return 0;
  const int numberOfMatrices = matrix->getMaxNumberOfMatrices();
  for (int id = 0; id < numberOfMatrices; ++id) {
    if (const int level = levelAbove(*matrix, id); level >= 0) clearLinksOfLevel(*matrix, level);
  }
  int numberOfLinks = 0;
  for (int position = numberOfMatrices; position <= matrix->getMaximalStack(); ++position) {
    const ZQMatrixElement* element = matrix->elementAt(position);
    if (element == nullptr || element->getSymbolID() <= 0) continue;
    numberOfLinks += setLinkTo(*matrix, position, element->getSymbolID());
  }
  return numberOfLinks;
}

int* createPhraseOfSymbol(ZQMatrix* matrix, int symbol, int* length) {
  *length = 0;
  const int levelDown = matrix->getMatrixInfo()->getCurrentMatrixIDLevelDown();
  const int symbolPosition = matrix->childAt(matrix->getCurrentMatrixID(), symbol);
  if (levelDown < 0 || symbolPosition < 0) return nullptr;
  const int handle = matrix->elementAt(symbolPosition)->getSymbolDownLinkHandle();
  const ZQMatrixElement* end = matrix->elementAt(handle);
  if (handle < matrix->getMaxNumberOfMatrices() || end == nullptr || end->getWriteCount() < 1) return nullptr;
  int count = 0;
  if (goUp(*matrix, handle, [&count](int) { ++count; }) != levelDown) return nullptr;
  int* phrase = systemMallocArray<int>(count);
  if (phrase == nullptr) return nullptr;
  int* next = phrase + count;
  goUp(*matrix, handle, [&next](int coordinate) { *--next = coordinate; });
  *length = count;
  return phrase;
}

}  // namespace zmatrix
