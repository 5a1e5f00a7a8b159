#include "flat/ZQMatrixCreators.h"

#include <memory>

#include "frame/ZQSentence.h"
#include "sequence/ZQMediumTier.h"
#include "store/ZQBaseTier.h"
#include "store/ZQTierLife.h"
#include "symbols/ZQFullTier.h"

namespace {

// For creators without debug parameters: no device, and a level at which nothing is printed.
constexpr int silentDevice = 0;
constexpr int silentLevel = -1;

// The messages of a creator from a file, which differ between the tiers.
struct CreatorTexts {
  zmatrix::ZQSentence<int> otherTier;
  const char* notRead;
};

constexpr CreatorTexts baseTexts = {"error createAndInitMatrixBaseFile: this is not a base type matrix File! (type is %d)\n",
                                    "createAndInitMatrixBaseWithFile: readAndInitMatrixFromDisk failed\n"};
constexpr CreatorTexts mediumTexts = {
    "error createAndInitMatrixMediumFile: this is not a medium type matrix File! (type is %d)\n",
    "createAndInitMatrixMediumWithFile: readAndInitMatrixFromDisk failed\n"};
constexpr CreatorTexts fullTexts = {"error createAndInitMatrixFile: this is not a symbol type matrix File! (type is %d)\n",
                                    "createAndInitMatrixWithFile: readAndInitMatrixFromDisk failed\n"};

// Refuses a file of another tier, even of a lower one, which only readAndInitMatrixFromDisk of an existing object loads.
template <class Matrix>
Matrix* createFromFile(const char* path, int debugLevel, const CreatorTexts& texts) {
  const int infoType = ZQMatrixFileHeader().getMatrixInfoTypeFromFile(path);
  if (infoType != Matrix::Tier::infoType) {
    dbPrintf(0, texts.otherTier, infoType);
    return nullptr;
  }
  std::unique_ptr<Matrix> matrix = zmatrix::createMatrixIn<Matrix>(silentDevice, silentLevel, "");
  if (matrix == nullptr) return nullptr;
  if (matrix->readAndInitMatrixFromDisk(path, debugLevel) != 1) {
    dbPrintf(0, "%s", texts.notRead);
    return nullptr;
  }
  matrix->getMatrixFileHeader()->setMatrixInfoType(Matrix::Tier::infoType);
  return matrix.release();
}

}  // namespace

ZQMatrixBase* createAndInitMatrixBase() {
  return createAndInitMatrixBaseWithDebugParameters(silentDevice, silentLevel, "");
}

ZQMatrixBase* createAndInitMatrixBaseWithDebugParameters(int debugOutputDevice, int debugLevel, const char* debugDirectory) {
  return zmatrix::createMatrixIn<ZQMatrixBase>(debugOutputDevice, debugLevel, debugDirectory).release();
}

ZQMatrixBase* createAndInitMatrixBaseWithFile(const char* path, int debugLevel) {
  return createFromFile<ZQMatrixBase>(path, debugLevel, baseTexts);
}

void deleteMatrixBase(ZQMatrixBase* matrix) {
  delete matrix;
}

ZQMatrixMedium* createAndInitMatrixMedium() {
  return createAndInitMatrixMediumWithDebugParameters(silentDevice, silentLevel, "");
}

ZQMatrixMedium* createAndInitMatrixMediumWithDebugParameters(int debugOutputDevice, int debugLevel, const char* debugDirectory) {
  return zmatrix::createMatrixIn<ZQMatrixMedium>(debugOutputDevice, debugLevel, debugDirectory).release();
}

ZQMatrixMedium* createAndInitMatrixMediumWithFile(const char* path, int debugLevel) {
  return createFromFile<ZQMatrixMedium>(path, debugLevel, mediumTexts);
}

void deleteMatrixMedium(ZQMatrixMedium* matrix) {
  delete matrix;
}

ZQMatrix* createAndInitMatrix() {
  return createAndInitMatrixWithDebugParameters(silentDevice, silentLevel, "");
}

ZQMatrix* createAndInitMatrixWithDebugParameters(int debugOutputDevice, int debugLevel, const char* debugDirectory) {
  return zmatrix::createMatrixIn<ZQMatrix>(debugOutputDevice, debugLevel, debugDirectory).release();
}

ZQMatrix* createAndInitMatrixWithFile(const char* path, int debugLevel) {
  return createFromFile<ZQMatrix>(path, debugLevel, fullTexts);
}

void deleteMatrix(ZQMatrix* matrix) {
  delete matrix;
}

int getExpectedMatrixMemory(int coordinateDimension, int numberOfItems, int phraseLength, int numberOfSymbols) {
  constexpr int initialBlockSize = 64000;
  if (coordinateDimension < 1 || numberOfItems < 1 || phraseLength < 1 || numberOfSymbols < 0) return 0;
  return initialBlockSize;
}
