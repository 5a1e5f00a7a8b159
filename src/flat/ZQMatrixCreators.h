// Creation and deletion of matrix objects, for each tier. A failed creator returns null and leaves no object. A deleter accepts
// null. The deletion of a matrix closes the debug file and sets the debug level to 0 for all matrices that the calling thread
// uses.
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

/// The number of slots of a new matrix, whatever the arguments; 0 if one of the first three is below 1 or the last below 0.
int getExpectedMatrixMemory(int coordinateDimension, int numberOfItems, int phraseLength, int numberOfSymbols);
