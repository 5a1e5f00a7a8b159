// Reads one generated item after another from a matrix. A host reads until it gets null with probability 1.0. The stop flag of a
// sub-matrix means that the last item ended a sequence: the next read reports the end instead of choosing an item.
#include "frame/ZQCharacterTables.h"
#include "frame/ZQDebugChannel.h"
#include "sequence/ZQMatrixMedium.h"

namespace {

// With stops off, a read restarts after each dead end, at most this many times: random draws find an item in fewer.
constexpr int largestNumberOfTries = 64;

/// The differences between the four reads: those without an index let the method choose, and a stop is drawn at random.
struct ReadRequest {
  bool hasIndex;
  int successorIndex;
  int updateKernel;
};

struct ReadOutputs {
  double* probability;
  double* stopProbability;
  int* handle;  ///< may be null
};

int* readOnce(ZQMatrixMedium& matrix, const ReadRequest& request, const ReadOutputs& out) {
  ZQMatrixMediumInfo* info = matrix.getMatrixInfo();
  const bool fromTrueStart = info->getLengthOfKernelPreProcessedSequence() == 0 && info->getRestartWithTrueStartItem() == 1;
  const auto readItem = fromTrueStart ? &ZQMatrixMedium::getFirstOriginalObjectItemFromMatrix
                                      : &ZQMatrixMedium::getNextOriginalObjectItemFromMatrix;
  return (matrix.*readItem)(request.successorIndex, request.updateKernel, info->getSuccessorMethod(), out.probability,
                            out.stopProbability, out.handle);
}

/// Restarts at the root after a dead end, if stops are off and the kernel is updated. Two successive tries from the root without
/// an item or a random draw end the read, since further ones would give the same result.
int* readUntilItem(ZQMatrixMedium& matrix, const ReadRequest& request, const ReadOutputs& out) {
  ZQMatrixMediumInfo* info = matrix.getMatrixInfo();
  const bool restarts = info->getEnableStopItem() != 1 && request.updateKernel == 1;
  int futileTries = 0;
  for (int tries = 0; tries < largestNumberOfTries && futileTries < 2; ++tries) {
    const bool startsAtRoot = info->getLengthOfKernelPreProcessedSequence() == 0;
    const long long randomValue = info->getActualSuccessorRandomValue();
    int* item = readOnce(matrix, request, out);
    if (item != nullptr || !restarts) return item;
    futileTries = startsAtRoot && info->getActualSuccessorRandomValue() == randomValue ? futileTries + 1 : 0;
  }
  return nullptr;
}

bool itemEndsSequence(ZQMatrixMediumInfo* info, const ReadRequest& request, double stopProbability) {
  if (request.hasIndex) return request.updateKernel == 1 && stopProbability == 1.0;
  if (info->getSuccessorMethod() != ZQSuccessorMethodRandom) return stopProbability > 0.5;
  return stopProbability > info->drawSuccessorFraction();
}

int* readObjex(ZQMatrixMedium& matrix, const ReadRequest& request, double* probability, double* stopProbability, int* handle) {
  double ownProbability = 0, ownStopProbability = 0;
  const ReadOutputs out{probability != nullptr ? probability : &ownProbability,
                        stopProbability != nullptr ? stopProbability : &ownStopProbability, handle};
  ZQMatrixFileHeader* header = matrix.getMatrixFileHeader();
  const int matrixID = matrix.getCurrentMatrixID();
  if (handle != nullptr) *handle = -1;
  if (matrixID < 0 || matrixID >= header->getMaxNumberOfMatrices()) return nullptr;
  ZQMatrixMediumInfo* info = matrix.getMatrixInfo();
  if (info->getNumberOfWriteElements() < 1) return nullptr;
  const bool canStop = info->getEnableStopItem() == 1;
  if (!canStop) *out.stopProbability = 0;
  if (canStop && header->getStopFlag(matrixID) == 1) {
    header->setStopFlag(matrixID, 0);
    *out.probability = 1.0;
    *out.stopProbability = 1.0;
    return nullptr;
  }
  int* item = readUntilItem(matrix, request, out);
  if (item == nullptr) return nullptr;
  // The flag is set even if stops are off; it stays set until a read with stops on.
  if (itemEndsSequence(info, request, *out.stopProbability)) header->setStopFlag(matrixID, 1);
  if (canStop && header->getStopFlag(matrixID) == 1) matrix.initializeKernelSequenceWithOriginalSequence(nullptr, 0, 0);
  return item;
}

constexpr ReadRequest readByMethod = {false, -1, 1};

}  // namespace

int* ZQMatrixMedium::readObjexFromMatrix(double* probability, double* stopProbability) {
  return readObjex(*this, readByMethod, probability, stopProbability, nullptr);
}

int* ZQMatrixMedium::readObjexAndHandleFromMatrix(double* probability, double* stopProbability, int* handle) {
  return readObjex(*this, readByMethod, probability, stopProbability, handle);
}

int* ZQMatrixMedium::readObjexFromMatrixForSuccessorIndex(int successorIndex, int updateKernel, double* probability,
                                                          double* stopProbability) {
  return readObjex(*this, {true, successorIndex, updateKernel}, probability, stopProbability, nullptr);
}

int* ZQMatrixMedium::readObjexAndHandleFromMatrixForSuccessorIndex(int successorIndex, int updateKernel, double* probability,
                                                                   double* stopProbability, int* handle) {
  return readObjex(*this, {true, successorIndex, updateKernel}, probability, stopProbability, handle);
}

void ZQMatrixMedium::dbPrintSuccessorObjex(const int* objex) {
  if (objex == nullptr) {
    dbPrintf(0, "\n");
    return;
  }
  const int matrixType = getMatrixInfo()->getMatrixType(), coordinateDimension = getMatrixInfo()->getCoordinateDimension();
  switch (matrixType) {
    case ZQMatrixTypeANSIText:
      dbPrintfANSI(0, "%c", static_cast<unsigned>(objex[0]));
      return;
    case ZQMatrixTypeUndefined:
    case ZQMatrixTypeIntegerSeries:
      if (coordinateDimension < 1) return;
      if (coordinateDimension == 1) {
        dbPrintf(0, "%d,", objex[0]);
        return;
      }
      break;
    case ZQMatrixTypeMIDINoteAndQuanta:
    case ZQMatrixTypeMIDITriple_NDMT:
    case ZQMatrixTypeMIDIGMQuadruple_NDMTS:
      break;
    default:
      return;
  }
  dbPrintf(0, "(");
  for (int k = 0; k < coordinateDimension; ++k) dbPrintf(0, "%d,", objex[k]);
  dbPrintf(0, ")");
}
