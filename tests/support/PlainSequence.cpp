#include "support/PlainSequence.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <numeric>

namespace plain {

using Vector = std::vector<int>;

std::vector<int> preProcess(const Vector& sequence, int type, int c) {
  Vector a = sequence;
  for (int pass = 1; pass <= type; ++pass) {
    if (static_cast<int>(a.size()) <= c) return {};
    for (size_t i = 0; i + static_cast<size_t>(c) < a.size(); ++i) a[i] = a[i + static_cast<size_t>(c)] - a[i];
    a.resize(a.size() - static_cast<size_t>(c));
  }
  return a;
}

static Vector slice(const Vector& from, int begin, int length) {
  return Vector(from.begin() + begin, from.begin() + begin + length);
}

Sequence::Sequence(Store& store, int matrixID) : kernelMatrixHandle(matrixID), store_(store), id_(matrixID) {
}

double Sequence::randomFraction() {
  successorRandomValue = nextRandom(successorRandomValue);
  return static_cast<double>(successorRandomValue) / 2147483647.0;
}

// ------------------------------------------------------------------------------------------------ learning

Update Sequence::update(const Vector& sequence) {
  Update call;
  if (sequence.empty()) return call;
  const int c = coordinateDimension();
  const Vector preProcessed = preProcess(sequence, preProcessingType, c);
  const int p = static_cast<int>(preProcessed.size());
  const int n = p / c;
  const int m = std::min(maxPhraseLength, n);
  store_.at(id_)->withSuccessor += n;
  ++store_.at(id_)->writeCount;

  int runStart = 0, previousRunStart = -1;
  for (int L = 0; L < m * c; L += c) {
    for (int s = 0; s < p - L; s += c) {
      const int length = L + c;
      const int number = runStart + s / c;
      const Vector phrase = slice(preProcessed, s, length);
      call.indexVectors.push_back(phrase);
      call.values.push_back(length);
      call.lengths.push_back(length);
      ++call.numberOfProcessedVectors;
      const int startFlag = s == 0 && L == 0 && useStartOfSequence == 1;
      const bool existed = store_.exist(phrase) >= 2;
      const bool isLong = includeOverdeterminedRules == 0 && L >= 2 * c;
      if (existed) {
        ++call.numberOfOverwrites;
      } else if (isLong && store_.isDetermined(phrase.data(), length) > 0) {
        call.lengths.back() = -length;
        ++skips;
        continue;
      }
      const int endFlag = useEndOfSequence == 1 && s >= p - L - c;
      if (store_.write(phrase, length, startFlag, endFlag, symbolMarkerOf(preProcessed, s, s + L)) < 1) {
        store_.print(0, "updateMatrixWithCombinedSequence: testSequence %d aborted prematurely\n", number);
        call.result = -1;
        return call;
      }
      if (existed || !isLong) continue;
      const Vector prefix = slice(phrase, 0, L);
      if (store_.exist(prefix) >= 2) continue;
      if (writePrefixesOfRunBefore(call, prefix, previousRunStart, runStart, startFlag) < 0) return call;
    }
    previousRunStart = runStart;
    runStart += (p - L) / c;
  }
  call.result = 1;
  return call;
}

// A written phrase needs its context written: writes each occurrence of the prefix that was skipped in this sequence.
int Sequence::writePrefixesOfRunBefore(Update& call, const Vector& prefix, int previousRunStart, int runStart, int startFlag) {
  const int L = static_cast<int>(prefix.size());
  for (int number = previousRunStart; number < runStart; number += coordinateDimension()) {
    const auto q = static_cast<size_t>(number);
    if (std::abs(call.lengths[q]) != L) {
      store_.print(0, "updateMatrixWithCombinedSequence: unexpected error\n");
      continue;
    }
    if (call.indexVectors[q] != prefix) continue;
    ++postWrites;
    if (store_.exist(prefix) < 2) {
      store_.print(1, "preceding phrase has writeCount =0! will be post-written\n");
    } else {
      store_.print(1, "preceding phrase more than once post-rewritten\n");
    }
    call.lengths[q] = std::abs(call.lengths[q]);
    const int endFlag = useEndOfSequence == 1 && number == runStart - 1;
    if (store_.write(prefix, call.values[q], startFlag, endFlag, 0) < 1) {
      store_.print(0, "testSequence %d aborted prematurely\n", number);
      return call.result = -1;
    }
  }
  return 1;
}

// 1 if the items first to last are exactly one word of a text: a maximal run of printing characters.
int Sequence::symbolMarkerOf(const Vector& preProcessed, int first, int last) const {
  if (store_.tier != Tier::full || matrixType != 3) return 0;
  const auto isWord = [&](int i) {
    if (i < 0 || i >= static_cast<int>(preProcessed.size())) return false;
    const int item = preProcessed[static_cast<size_t>(i)];
    return item >= 33 && item != 160;
  };
  for (int i = first; i <= last; ++i) {
    if (!isWord(i)) return 0;
  }
  return !isWord(first - 1) && !isWord(last + 1);
}

// ------------------------------------------------------------------------------------------------ the kernel

int Sequence::initializeKernelWithPreProcessed(const Vector& sequence) {
  const int c = coordinateDimension();
  const int length = static_cast<int>(sequence.size());
  if (length % c != 0) return -1;
  if (length > store_.infos[static_cast<size_t>(id_)].maxDimOfMatrix) return -3;
  if (length == 0) {
    resetKernel(0);
    return 0;
  }
  int goodLength = 0;
  for (int suffix = c; suffix <= length && skillOutputLevel >= 1; suffix += c) {
    const int handle = store_.handleOf(sequence.data() + length - suffix, suffix);
    if (handle < 0 || store_.successors(handle).empty()) break;
    goodLength = suffix;
    kernelMatrixHandle = handle;
    if (suffix >= skillOutputLevel) break;
  }
  if (goodLength > 0) {
    kernelPreProcessed = slice(sequence, length - goodLength, goodLength);
    return goodLength / c;
  }
  store_.print(1,
               "\n###initializeKernelSequenceWithPreProcessedSequence: warning: no part of input sequence found in matrix. "
               "Initializing with root-element...\n");
  resetKernel(0);
  return 0;
}

int Sequence::initializeKernelWithOriginal(const Vector& sequence, int setInitialValues) {
  if (sequence.empty()) return resetKernel(setInitialValues);
  const int c = coordinateDimension();
  const int length = static_cast<int>(sequence.size());
  const Vector preProcessed = preProcess(sequence, preProcessingType, c);
  if (preProcessed.empty()) return -1;
  if (initializeKernelWithPreProcessed(preProcessed) < 0) return resetKernel(setInitialValues);
  const int offset = static_cast<int>(preProcessed.size()) - static_cast<int>(kernelPreProcessed.size());
  lengthOfKernelOriginal = (length - offset) / c;
  const size_t kept = static_cast<size_t>(length - offset);
  if (kernelOriginal.size() < kept) kernelOriginal.resize(kept);
  if (kernelInitial.size() < kept) kernelInitial.resize(kept);
  std::copy(sequence.begin() + offset, sequence.end(), kernelOriginal.begin());
  if (setInitialValues == 1) std::copy(sequence.begin() + offset, sequence.end(), kernelInitial.begin());
  return lengthOfKernelOriginal;
}

// For matrix types without notes, whose default item is 0 in every coordinate.
int Sequence::resetKernel(int resetInitialValues) {
  const int c = coordinateDimension();
  const int need = preProcessingType;
  if (resetInitialValues == 1 || (lengthOfKernelOriginal < need && need >= 1)) {
    const size_t filled = static_cast<size_t>(need * c);
    if (kernelOriginal.size() < filled) kernelOriginal.resize(filled);
    if (kernelInitial.size() < filled) kernelInitial.resize(filled);
    if (matrixType == 0 || matrixType == 2) {
      std::fill_n(kernelOriginal.begin(), filled, 0);
      std::fill_n(kernelInitial.begin(), filled, 0);
    }
    lengthOfKernelOriginal = need;
  } else {
    lengthOfKernelOriginal -= static_cast<int>(kernelPreProcessed.size()) / c;
  }
  kernelPreProcessed.clear();
  kernelMatrixHandle = id_;
  std::copy_n(kernelInitial.begin(), lengthOfKernelOriginal * c, kernelOriginal.begin());
  return lengthOfKernelOriginal;
}

// ------------------------------------------------------------------------------------------------ choosing

Item Sequence::nextPreProcessed(int successorIndex, int updateKernel, int method, int trueStart, Item item) {
  item.coordinates.clear();
  if (method < 1 || method > 3 || successorIndex < -1) {
    store_.print(0, "illegal suucessorMethod or successor index\n");
    return item;
  }
  std::vector<int> list;
  if (trueStart == 1 && kernelPreProcessed.empty()) {
    list = store_.successors(kernelMatrixHandle, true);
    if (list.empty()) store_.print(0, "warning:getNextObjectItemFromMatrix(trueStartItem):successorList = 0\n");
  }
  if (list.empty()) list = store_.successors(kernelMatrixHandle);
  if (list.empty()) {
    if (updateKernel == 1) initializeKernelWithPreProcessed({});
    return item;
  }
  const int count = static_cast<int>(list.size());
  if (successorIndex >= count) {
    store_.print(0, "sucessorIndex (%d) out of range. max allowed: %d\n", successorIndex, count - 1);
    return item;
  }
  const int W = store_.at(kernelMatrixHandle)->writeCount;
  const int S = store_.at(kernelMatrixHandle)->withSuccessor;
  const double q = trueStart == 1 ? 0.0 : static_cast<double>(W - S) / W;
  if (S < 1) return item;

  std::vector<double> p, integral;
  for (const int handle : list) {
    const int w = store_.at(handle)->writeCount;
    const int v = store_.at(handle)->withoutPredecessor;
    double chance = 0.0;
    if (trueStart != 1) {
      if (w < 1) {
        store_.print(0, "getNextObjectItemFromMatrix(): can not compute probability (writeCount=0!)\n");
        return item;
      }
      chance = static_cast<double>(w) / S;
    } else {
      if (v < 1) {
        store_.print(0, "getNextObjectItemFromMatrix(): can not compute probability (writeCountWithoutPredecessor=0!\n");
      }
      if (W == 0) store_.print(0, "getNextObjectItemFromMatrix(): can not compute probability (writeCountFromRoot =0)\n");
      if (W > 0) chance = static_cast<double>(v >= 1 ? v : w) / W;
    }
    if (chance > 1.0 || chance == 0.0) {
      store_.print(0, "getSuccessor: Warning: illegal probability: %lf\n", chance);
      return item;
    }
    p.push_back(chance);
    integral.push_back(integral.empty() ? chance : integral.back() + chance);
  }
  const double T = integral.back();
  if (std::fabs(1 - T) >= 1e-7) {
    if (T > 1.0) {
      store_.print(0, "GetSuccessor: error: probabilityIntegral >1.0: %lf !\n", T);
      return item;
    }
    const double factor = 1 / T;
    for (double& chance : p) chance *= factor;
    for (double& sum : integral) sum *= factor;
  }
  integral.back() = 1.0;

  int chosen = successorIndex;
  bool stop = false;
  if (successorIndex == -1 && method == 1) {
    stop = q >= 0.5 && enableStopItem == 1;
    chosen = static_cast<int>(std::max_element(p.begin(), p.end()) - p.begin());
  } else if (successorIndex == -1 && method == 2) {
    chosen = count / 2;
  } else if (successorIndex == -1) {
    stop = q > randomFraction() && enableStopItem == 1;
    if (!stop) {
      const double r = randomFraction();
      const auto hit = std::find_if(integral.begin(), integral.end(), [r](double sum) { return sum > r; });
      chosen = hit == integral.end() ? 0 : static_cast<int>(hit - integral.begin());
    }
  }
  if (stop) {
    item.probability = item.stopProbability = q;
    if (updateKernel == 1) initializeKernelWithPreProcessed({});
    return item;
  }
  const auto index = static_cast<size_t>(chosen);
  item.handle = list[index];
  item.coordinates = store_.objex(item.handle);
  item.probability = p[index];
  const Element& successor = *store_.at(item.handle);
  item.stopProbability = (successor.writeCount - successor.withSuccessor) / successor.writeCount;
  if (updateKernel == 1) {
    Vector extended = kernelPreProcessed;
    extended.insert(extended.end(), item.coordinates.begin(), item.coordinates.end());
    initializeKernelWithPreProcessed(extended);
  }
  return item;
}

// Undoes differences: the item is added to the last entry of each row of the table of backward differences.
std::vector<int> Sequence::restore(Vector item) const {
  const int c = coordinateDimension();
  const int t = preProcessingType;
  for (int k = 0; k < c; ++k) {
    Vector w;
    for (int i = lengthOfKernelOriginal - t; i < lengthOfKernelOriginal; ++i) {
      w.push_back(kernelOriginal[static_cast<size_t>(i * c + k)]);
    }
    for (; !w.empty(); w = preProcess(w, 1, 1)) item[static_cast<size_t>(k)] += w.back();
  }
  return item;
}

Item Sequence::nextOriginal(int successorIndex, int updateKernel, bool first, Item item) {
  if (first) {
    if (!kernelPreProcessed.empty()) store_.print(1, "warning: getFirstOriginalItem will reset Kernelsequence...\n");
    resetKernel(0);
  }
  const int trueStart = first && successorIndex == -1;
  item = nextPreProcessed(successorIndex, 0, successorMethod, trueStart, item);
  if (item.coordinates.empty()) {
    if (!first && updateKernel == 1) initializeKernelWithOriginal({}, 0);
    return item;
  }
  item.coordinates = restore(item.coordinates);
  if (updateKernel == 1) {
    Vector extended = slice(kernelOriginal, 0, lengthOfKernelOriginal * coordinateDimension());
    extended.insert(extended.end(), item.coordinates.begin(), item.coordinates.end());
    initializeKernelWithOriginal(extended, 0);
  }
  return item;
}

// ------------------------------------------------------------------------------------------------ reading

Item Sequence::readObjex() {
  return read(-1, 1, false);
}

Item Sequence::readObjexForSuccessorIndex(int successorIndex, int updateKernel) {
  return read(successorIndex, updateKernel, true);
}

Item Sequence::read(int successorIndex, int updateKernel, bool byIndex) {
  Item item;
  if (store_.infos[static_cast<size_t>(id_)].writeElements < 1) return item;
  if (enableStopItem == 0) item.stopProbability = 0;
  if (enableStopItem == 1 && stopFlag == 1) {
    stopFlag = 0;
    item.probability = item.stopProbability = 1.0;
    return item;
  }
  // Two tries from the root without a random draw would repeat forever: they end the read.
  for (int hopelessTries = 0; hopelessTries < 2;) {
    const bool startsAtRoot = kernelPreProcessed.empty();
    const long long randomValue = successorRandomValue;
    item = nextOriginal(successorIndex, updateKernel, startsAtRoot && restartWithTrueStartItem == 1, item);
    if (!item.coordinates.empty()) break;
    if (enableStopItem == 1 || (byIndex && updateKernel != 1)) return item;
    hopelessTries = startsAtRoot && successorRandomValue == randomValue ? hopelessTries + 1 : 0;
  }
  if (item.coordinates.empty()) return item;
  if (byIndex) {
    if (updateKernel == 1 && item.stopProbability == 1.0) stopFlag = 1;
  } else if (item.stopProbability > (successorMethod == 3 ? randomFraction() : 0.5)) {
    stopFlag = 1;
  }
  if (stopFlag == 1 && enableStopItem == 1) initializeKernelWithOriginal({}, 0);
  return item;
}

}  // namespace plain
