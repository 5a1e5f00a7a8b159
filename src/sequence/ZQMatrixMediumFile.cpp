// The matrix file of the medium tier: instances of the templates shared by all tiers.
#include "sequence/ZQMediumTier.h"
#include "store/ZQMatrixFileLoad.h"
#include "store/ZQMatrixFileSave.h"

int ZQMatrixMedium::saveMatrixToDisk(const char* path) {
  return zmatrix::ZQMatrixFileSave<Tier>::save(*this, path);
}

int ZQMatrixMedium::readAndInitMatrixFromDisk(const char* path, int newDebugLevel) {
  return zmatrix::ZQMatrixFileLoad<Tier>::load(*this, path, newDebugLevel);
}
