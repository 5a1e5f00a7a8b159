// Saving and loading of the base tier: instantiates the templates shared by all tiers.
#include "store/ZQBaseTier.h"
#include "store/ZQMatrixFileLoad.h"
#include "store/ZQMatrixFileSave.h"

int ZQMatrixBase::saveMatrixToDisk(const char* path) {
  return zmatrix::ZQMatrixFileSave<Tier>::save(*this, path);
}

int ZQMatrixBase::readAndInitMatrixFromDisk(const char* path, int newDebugLevel) {
  return zmatrix::ZQMatrixFileLoad<Tier>::load(*this, path, newDebugLevel);
}
