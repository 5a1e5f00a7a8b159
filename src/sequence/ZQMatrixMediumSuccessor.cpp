// Continuation of a sequence: lists the successors of the kernel, computes their probabilities from the counts, chooses one, and
// moves the kernel to it if requested. The lower layer works on preprocessed items; the layer above restores original items and
// skips bar markers. A result lies in the temporary memory of the info record, which moving the kernel doesn't change.
#include <algorithm>
#include <climits>
#include <cmath>

#include "frame/ZQDebugChannel.h"
#include "frame/ZQOptionalOutput.h"
#include "sequence/ZQKernel.h"
#include "sequence/ZQMatrixMedium.h"
#include "sequence/ZQPreprocessing.h"
#include "sequence/ZQStopProbability.h"
#include "store/ZQSuccessorWalk.h"

using zmatrix::answer;
using zmatrix::dbPrintf;
using zmatrix::Successor;
using zmatrix::ZQKernel;
using zmatrix::ZQNotNote;

namespace {

constexpr int anySuccessor = -1;            ///< as successorIndex: the method chooses
constexpr int stopInstead = -1;             ///< result of pick(): the sequence ends here
constexpr int largestNumberOfMarkers = 32;  ///< bar markers in a row

/// Lists the elements of a walk, each with its share of the occurrences. The list is empty if memory runs out.
template <class Walk>
void listSuccessors(zmatrix::ZQArray<Successor>& successors, int occurrences, Walk&& walk) {
  successors.clear();
  bool hasMemory = true;
  double integral = 0;
  walk([&](int position, const ZQMatrixMediumElement& counts) {
    const double probability = static_cast<double>(counts.getWriteCount()) / occurrences;
    integral += probability;
    hasMemory =
        successors.append({probability, integral, position, counts.getWriteCount(), counts.getWriteCountWithoutPredecessor()});
    return hasMemory;
  });
  if (!hasMemory) successors.clear();
}

/// Visits the elements one item below the end of the kernel with which a sequence began.
template <class Visitor>
void walkTrueStarts(const ZQMatrixMedium& matrix, Visitor&& visit) {
  const int handle = matrix.getMatrixInfo()->getKernelMatrixHandle();
  zmatrix::visitOneItemBelow(matrix, handle, [&](int position, const ZQMatrixMediumElement& element) {
    return element.getWriteCountWithoutPredecessor() <= 0 || visit(position, element);
  });
}

/// The choice among the successors of the kernel.
class SuccessorChoice {
 public:
  SuccessorChoice(zmatrix::ZQArray<Successor>& successors, const ZQMatrixMediumElement& kernelElement, bool trueStart)
      : successors_(successors), kernelElement_(kernelElement), trueStart_(trueStart) {}

  /// False, with a message, if the counts give no probabilities.
  bool computeProbabilities() {
    // Shares with a sum of at most 1 are probabilities: each is above 0 and at most 1.
    if (!trueStart_ && successors_.back().integral <= 1.0) return normalise();
    double integral = 0;
    for (Successor& successor : successors_) {
      if (trueStart_) successor.probability = startProbability(successor);
      if (!isProbability(successor)) return false;
      if (trueStart_) successor.integral = integral += successor.probability;
    }
    return normalise();
  }

  /// The index chosen by the method, or stopInstead. The number of random values drawn is part of the contract: equal seeds give
  /// equal results.
  int pick(int successorMethod, double stopNow, ZQMatrixMediumInfo* info) const {
    const bool canStop = info->getEnableStopItem() == 1;
    switch (successorMethod) {
      case ZQSuccessorMethodMostProbable:
        if (stopNow >= 0.5 && canStop) return stopInstead;
        return static_cast<int>(
            std::max_element(successors_.begin(), successors_.end(),
                             [](const Successor& one, const Successor& other) { return one.probability < other.probability; }) -
            successors_.begin());
      case ZQSuccessorMethodMiddle:
        return static_cast<int>(successors_.size()) / 2;
      default:
        if (stopNow > info->drawSuccessorFraction() && canStop) return stopInstead;
        return firstBeyond(info->drawSuccessorFraction());
    }
  }

 private:
  bool isProbability(const Successor& successor) const {
    if (!trueStart_ && successor.writeCount < 1) {
      dbPrintf(0, "getNextObjectItemFromMatrix(): can not compute probability (writeCount=0!)\n");
      return false;
    }
    if (successor.probability <= 1.0 && successor.probability != 0.0) return true;
    dbPrintf(0, "getSuccessor: Warning: illegal probability: %lf\n", successor.probability);
    return false;
  }

  double startProbability(const Successor& successor) const {
    const int sequences = kernelElement_.getWriteCount();
    const int starts = successor.writeCountWithoutPredecessor;
    if (starts < 1) {
      dbPrintf(0, "getNextObjectItemFromMatrix(): can not compute probability (writeCountWithoutPredecessor=0!\n");
    }
    if (sequences == 0) dbPrintf(0, "getNextObjectItemFromMatrix(): can not compute probability (writeCountFromRoot =0)\n");
    if (sequences < 1) return 0;
    return static_cast<double>(starts < 1 ? successor.writeCount : starts) / sequences;
  }

  /// Sets the last integral to exactly 1.0. If the sum of the probabilities is less, all are scaled up.
  bool normalise() {
    double& total = successors_.back().integral;
    if (std::fabs(1.0 - total) >= 1e-7) {
      if (total > 1.0) {
        dbPrintf(0, "GetSuccessor: error: probabilityIntegral >1.0: %lf !\n", total);
        return false;
      }
      const double factor = 1.0 / total;
      for (Successor& successor : successors_) {
        successor.probability *= factor;
        successor.integral *= factor;
      }
    }
    total = 1.0;
    return true;
  }

  int firstBeyond(double fraction) const {
    const Successor* found =
        std::find_if(successors_.begin(), successors_.end(), [=](const Successor& next) { return next.integral > fraction; });
    return found != successors_.end() ? static_cast<int>(found - successors_.begin()) : 0;
  }

  zmatrix::ZQArray<Successor>& successors_;
  const ZQMatrixMediumElement& kernelElement_;
  const bool trueStart_;
};

/// The stop probability as an integer quotient: 1 for an element without successors, else 0.
double certainStopOf(const ZQMatrixMediumElement& element) {
  if (element.getWriteCount() == 0) return 0;
  const long long writeCount = element.getWriteCount();
  const long long quotient = (writeCount - element.getWriteCountWithSuccessor()) / writeCount;
  return static_cast<double>(quotient);
}

/// The length of a bar in quanta. Unlike barLengthInQuanta, it prints nothing for a time signature of 0.
long long silentBarLength(const ZQMatrixMediumInfo* info) {
  const long long numerator = info->getMidiTimeSignatureNom(), denominator = info->getMidiTimeSignatureDenom();
  if (numerator == 0 || denominator == 0) return zmatrix::quantaPerWholeNote;
  return numerator * zmatrix::quantaPerWholeNote / denominator;
}

/// The arguments and the state of one read of an original item.
struct OriginalRead {
  ZQMatrixMedium& matrix;
  int successorIndex;
  int successorMethod;
  double* probability;
  double* stopProbability;
  int* handle;
  bool isFirst;              ///< reads the first item of a sequence
  long long timeOffset = 0;  ///< quanta of the bars that were skipped
  bool isStuck = false;      ///< too many bar markers in a row; the kernel then stays at the last one

  int* nextPreProcessed(int trueStart) {
    return matrix.getNextPreProcessedObjectItemFromMatrix(successorIndex, 0, successorMethod, trueStart, probability,
                                                          stopProbability, handle);
  }

  /// Appends bar markers to the preprocessed kernel until the next item is a note or null. If a note precedes, the last marker
  /// adds no bar to the time, since the inverse preprocessing moves to the next bar itself. Null, with a message, for too many
  /// markers.
  int* skipBarMarkers(int* item) {
    const long long barLength = silentBarLength(matrix.getMatrixInfo());
    for (int markers = 1; item != nullptr && item[0] == ZQNotNote; ++markers) {
      if (markers > largestNumberOfMarkers) {
        dbPrintf(0,
                 "error from getNextOriginalObjecFromMatrix: stuck in while loop while (successorPreProcessedObjex[0] == "
                 "ZQNotNote)\n");
        isStuck = true;
        return nullptr;
      }
      ZQKernel(matrix).pushPreProcessed(item);
      item = nextPreProcessed(1);
      if (isFirst || (item != nullptr && item[0] == ZQNotNote)) timeOffset += barLength;
    }
    return item;
  }

  /// Reads the next original item, without changing the original items of the kernel.
  int* nextOriginal() {
    const bool isMidi = zmatrix::coordinatesOfMidiType(matrix.getMatrixInfo()->getPreProcessingType()) != 0;
    const bool isFreeChoice = successorIndex == anySuccessor;
    int* item = nextPreProcessed(isFirst && isFreeChoice ? 1 : 0);
    if (isMidi && isFreeChoice) item = skipBarMarkers(item);
    if (item == nullptr) return nullptr;
    int* original = matrix.getNextOriginalObjexFromPreProcessedObjex(item);
    if (original != nullptr && timeOffset > 0 && matrix.getMatrixInfo()->getCoordinateDimension() >= 2) {
      original[1] = zmatrix::wrappedSum(original[1], static_cast<int>(timeOffset));
    }
    return original;
  }
};

}  // namespace

int* ZQMatrixMedium::getSuccessorHandlesFromKernelHandle(int* count) {
  int numberOfHandles = 0;
  int* handles = getSuccessorHandlesFromMatrixHandle(getMatrixInfo()->getKernelMatrixHandle(), &numberOfHandles);
  answer(count, numberOfHandles);
  return handles;
}

int* ZQMatrixMedium::getTrueRootSuccessorHandlesFromKernelHandle(int* count) const {
  answer(count, 0);
  zmatrix::ZQArray<int> startItems;
  bool hasMemory = true;
  walkTrueStarts(*this, [&](int position, const ZQMatrixMediumElement&) {
    hasMemory = startItems.append(position);
    return hasMemory;
  });
  if (!hasMemory) return nullptr;
  answer(count, startItems.count());
  return startItems.releaseFitted();
}

int* ZQMatrixMedium::getNextPreProcessedObjectItemFromMatrix(int successorIndex, int updateKernel, int successorMethod,
                                                             int trueStart, double* probability, double* stopProbability,
                                                             int* handle) {
  if (successorMethod < ZQSuccessorMethodMostProbable || successorMethod > ZQSuccessorMethodRandom ||
      successorIndex < anySuccessor) {
    dbPrintf(0, "illegal suucessorMethod or successor index\n");
    return nullptr;
  }
  ZQMatrixMediumInfo* info = getMatrixInfo();
  const ZQMatrixMediumElement* kernelElement = elementAt(info->getKernelMatrixHandle());
  const int occurrences = kernelElement != nullptr ? kernelElement->getWriteCountWithSuccessor() : 0;
  zmatrix::ZQArray<Successor>& successors = generation_.successors;
  successors.clear();
  if (trueStart == 1 && info->getLengthOfKernelPreProcessedSequence() == 0) {
    listSuccessors(successors, std::max(occurrences, 1), [this](auto&& visit) { walkTrueStarts(*this, visit); });
    if (successors.empty()) dbPrintf(0, "warning:getNextObjectItemFromMatrix(trueStartItem):successorList = 0\n");
  }
  if (successors.empty()) {
    listSuccessors(successors, std::max(occurrences, 1),
                   [&](auto&& visit) { zmatrix::visitSuccessors(*this, info->getKernelMatrixHandle(), visit); });
  }
  const int count = static_cast<int>(successors.size());
  if (count < 1) {
    if (updateKernel == 1) initializeKernelSequenceWithPreProcessedSequence(nullptr, 0);
    return nullptr;
  }
  if (successorIndex != anySuccessor && successorIndex >= count) {
    dbPrintf(0, "sucessorIndex (%d) out of range. max allowed: %d\n", successorIndex, count - 1);
    return nullptr;
  }
  if (occurrences < 1) return nullptr;
  const bool canStopNow = trueStart != 1 && kernelElement->getWriteCount() != 0;
  const double stopNow = canStopNow ? zmatrix::stopProbabilityOf(*kernelElement) : 0;
  SuccessorChoice choice(successors, *kernelElement, trueStart == 1);
  if (!choice.computeProbabilities()) return nullptr;

  const int index = successorIndex != anySuccessor ? successorIndex : choice.pick(successorMethod, stopNow, info);
  if (index == stopInstead) {
    answer(probability, stopNow);
    answer(stopProbability, stopNow);
    if (updateKernel == 1) initializeKernelSequenceWithPreProcessedSequence(nullptr, 0);
    return nullptr;
  }
  const int chosen = successors[static_cast<size_t>(index)].handle;
  answer(probability, successors[static_cast<size_t>(index)].probability);
  answer(stopProbability, certainStopOf(*elementAt(chosen)));
  answer(handle, chosen);
  int* item = getObjexFromMatrixHandle(chosen);
  if (updateKernel != 1) return item;
  if (item != nullptr)
    ZQKernel(*this).pushPreProcessed(item);
  else
    initializeKernelSequenceWithPreProcessedSequence(nullptr, 0);
  return item;
}

int* ZQMatrixMedium::getFirstOriginalObjectItemFromMatrix(int successorIndex, int updateKernel, int successorMethod,
                                                          double* probability, double* stopProbability, int* handle) {
  ZQMatrixMediumInfo* info = getMatrixInfo();
  if (info->getLengthOfKernelPreProcessedSequence() != 0) {
    dbPrintf(1, "warning: getFirstOriginalItem will reset Kernelsequence...\n");
  }
  const int numberOfItems = info->resetKernelSequence(getCurrentMatrixID(), 0);
  OriginalRead read{*this, successorIndex, successorMethod, probability, stopProbability, handle, true};
  int* item = read.nextOriginal();
  if (updateKernel == 1 && item != nullptr) ZQKernel(*this).push(item, numberOfItems);
  return item;
}

int* ZQMatrixMedium::getNextOriginalObjectItemFromMatrix(int successorIndex, int updateKernel, int successorMethod,
                                                         double* probability, double* stopProbability, int* handle) {
  const int numberOfItems = getMatrixInfo()->getLengthOfKernelOriginalSequence();
  if (numberOfItems < 0) {
    dbPrintf(0, "error getNextOriginalObjecFromMatrix: lengthOfKernelOriginalSequence <0: %d\n", numberOfItems);
    return nullptr;
  }
  OriginalRead read{*this, successorIndex, successorMethod, probability, stopProbability, handle, false};
  int* item = read.nextOriginal();
  if (updateKernel == 1 && item != nullptr) ZQKernel(*this).push(item, numberOfItems);
  if (updateKernel == 1 && item == nullptr && !read.isStuck) initializeKernelSequenceWithOriginalSequence(nullptr, 0, 0);
  return item;
}
