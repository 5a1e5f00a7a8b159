// Creation and deletion of matrix objects, a set for each tier. A failed creator returns null and leaves nothing behind. A
// deleter accepts null. Deleting any one matrix closes the debug file and sets the debug level to 0 for all matrices of the
// process.
#pragma once

class ZQMatrixBase;
class ZQMatrixMedium;
class ZQMatrix;

ZQMatrixBase* createAndInitMatrixBase();
ZQMatrixBase* createAndInitMatrixBaseWithDebugParameters(int debugOutputDevice, int debugLevel, const char* debugDirectory);
ZQMatrixBase* createAndInitMatrixBaseWithFile(const char* path, int debugLevel);
void deleteMatrixBase(ZQMatrixBase* matrix);

ZQMatrixMedium* createAndInitMatrixMedium();
ZQMatrixMedium* createAndInitMatrixMediumWithDebugParameters(int debugOutputDevice, int debugLevel, const char* debugDirectory);
ZQMatrixMedium* createAndInitMatrixMediumWithFile(const char* path, int debugLevel);
void deleteMatrixMedium(ZQMatrixMedium* matrix);

ZQMatrix* createAndInitMatrix();
ZQMatrix* createAndInitMatrixWithDebugParameters(int debugOutputDevice, int debugLevel, const char* debugDirectory);
ZQMatrix* createAndInitMatrixWithFile(const char* path, int debugLevel);
void deleteMatrix(ZQMatrix* matrix);

/// The slots that a new matrix begins with, or 0 if the wishes make no sense (the first three below 1, the last below 0).
int getExpectedMatrixMemory(int coordinateDimension, int numberOfItems, int phraseLength, int numberOfSymbols);
