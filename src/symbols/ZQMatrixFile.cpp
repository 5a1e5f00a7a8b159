// The matrix file of the full tier: instances of the templates shared by all tiers.
#include "frame/ZQArray.h"
#include "store/ZQMatrixFileLoad.h"
#include "store/ZQMatrixFileSave.h"
#include "symbols/ZQFullTier.h"

namespace {

/// Returns the number of links cut, or -1 if memory has run out.
int cutBadLinks(ZQMatrix& matrix, const char* direction, int (ZQMatrixInfo::*linkOf)() const, void (ZQMatrixInfo::*cut)()) {
  const int numberOfMatrices = matrix.getMaxNumberOfMatrices();
  zmatrix::ZQArray<int> seenFrom;
  if (!seenFrom.resize(numberOfMatrices, -1)) return -1;
  int numberCut = 0;
  for (int id = 0; id < numberOfMatrices; ++id) {
    for (int at = id; seenFrom[at] == -1;) {
      seenFrom[at] = id;
      ZQMatrixInfo& info = *matrix.getMatrixInfo(at);
      const int next = (info.*linkOf)();
      if (next == -1) break;
      if (next < 0 || next >= numberOfMatrices || seenFrom[next] == id) {
        dbPrintf(0, "readMatrixFromDisk: illegal link from matrix no. %d to the level %s: %d\n", at, direction, next);
        (info.*cut)();
        ++numberCut;
        break;
      }
      at = next;
    }
  }
  return numberCut;
}

}  // namespace

int ZQMatrix::saveMatrixToDisk(const char* path) {
  return zmatrix::ZQMatrixFileSave<Tier>::save(*this, path);
}

int ZQMatrix::readAndInitMatrixFromDisk(const char* path, int newDebugLevel) {
  return zmatrix::ZQMatrixFileLoad<Tier>::load(*this, path, newDebugLevel);
}

// A level can have a higher or lower ID than the one below it, so only following the links finds cycles.
int ZQMatrix::_checkLevelLinks() {
  const int down = cutBadLinks(*this, "down", &ZQMatrixInfo::getCurrentMatrixIDLevelDown, &ZQMatrixInfo::_cutLevelLinkDown);
  const int up = cutBadLinks(*this, "up", &ZQMatrixInfo::getCurrentMatrixIDLevelUp, &ZQMatrixInfo::_cutLevelLinkUp);
  return down < 0 || up < 0 ? -1 : down + up;
}
