// The matrix file of the full tier: the shared tellings, instantiated.
#include <vector>

#include "store/ZQMatrixFileLoad.h"
#include "store/ZQMatrixFileSave.h"
#include "symbols/ZQFullTier.h"

namespace {

void cutBadLinks(ZQMatrix& matrix, const char* direction, int (ZQMatrixInfo::*linkOf)() const, void (ZQMatrixInfo::*cut)()) {
  const int numberOfMatrices = matrix.getMaxNumberOfMatrices();
  std::vector<int> seenFrom(static_cast<size_t>(numberOfMatrices), -1);
  for (int id = 0; id < numberOfMatrices; ++id) {
    for (int at = id; seenFrom[static_cast<size_t>(at)] == -1;) {
      seenFrom[static_cast<size_t>(at)] = id;
      ZQMatrixInfo& info = *matrix.getMatrixInfo(at);
      const int next = (info.*linkOf)();
      if (next == -1) break;
      if (next < 0 || next >= numberOfMatrices || seenFrom[static_cast<size_t>(next)] == id) {
        dbPrintf(0, "readMatrixFromDisk: illegal link from matrix no. %d to the level %s: %d\n", at, direction, next);
        (info.*cut)();
        break;
      }
      at = next;
    }
  }
}

}  // namespace

int ZQMatrix::saveMatrixToDisk(const char* path) {
  return ZQMatrixFileSave<Tier>::save(*this, path);
}

int ZQMatrix::readAndInitMatrixFromDisk(const char* path, int newDebugLevel) {
  return ZQMatrixFileLoad<Tier>::load(*this, path, newDebugLevel);
}

// A level may lie above or below by its number, so a circle shows only by going round.
void ZQMatrix::_checkLevelLinks() {
  cutBadLinks(*this, "down", &ZQMatrixInfo::getCurrentMatrixIDLevelDown, &ZQMatrixInfo::_cutLevelLinkDown);
  cutBadLinks(*this, "up", &ZQMatrixInfo::getCurrentMatrixIDLevelUp, &ZQMatrixInfo::_cutLevelLinkUp);
}
