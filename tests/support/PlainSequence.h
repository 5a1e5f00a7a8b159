// A plain reference for learning and generation, on the plain store: the update walks each phrase from the root, the kernel
// search tries each suffix from the root, a choice lists all successors with their probabilities. The library must give the same
// slots, counters, results, random draws and items.
#pragma once

#include <string>
#include <vector>

#include "support/PlainStore.h"

namespace plain {

/// A copy of the sequence, or its differences of order `type`; no other preprocessing types.
std::vector<int> preProcess(const std::vector<int>& sequence, int type, int c);

struct Update {
  int result = 0, numberOfProcessedVectors = 0, numberOfOverwrites = 0;
  std::vector<int> values, lengths;
  std::vector<std::vector<int>> indexVectors;
};

struct Item {
  std::vector<int> coordinates;  // empty for null
  double probability = -1, stopProbability = -1;
  int handle = -1;
};

/// Learns into and generates from one sub-matrix of a store, which must be the current one.
class Sequence {
 public:
  Sequence(Store& store, int matrixID);

  Update update(const std::vector<int>& sequence);
  int initializeKernelWithOriginal(const std::vector<int>& sequence, int setInitialValues);
  int initializeKernelWithPreProcessed(const std::vector<int>& sequence);
  int resetKernel(int resetInitialValues);
  Item readObjex();
  Item readObjexForSuccessorIndex(int successorIndex, int updateKernel);

  // settings
  int matrixType = 2;
  int preProcessingType = 0;
  int includeOverdeterminedRules = 1;
  int useStartOfSequence = 1;
  int useEndOfSequence = 1;
  int maxPhraseLength = 64;
  int skillOutputLevel = 256;
  int successorMethod = 3;
  int restartWithTrueStartItem = 1;
  int enableStopItem = 1;
  // state
  long long successorRandomValue = 31459;
  int stopFlag = 0;
  int kernelMatrixHandle;
  int lengthOfKernelOriginal = 0;                  // in items
  std::vector<int> kernelOriginal, kernelInitial;  // item after item, never shrunk
  std::vector<int> kernelPreProcessed;
  int postWrites = 0, skips = 0;  // for tests that check which branches their sequences took

 private:
  int coordinateDimension() const { return store_.infos[static_cast<size_t>(id_)].coordinateDimension; }
  double randomFraction();
  int symbolMarkerOf(const std::vector<int>& preProcessed, int first, int last) const;
  int writePrefixesOfRunBefore(Update& call, const std::vector<int>& prefix, int previousRunStart, int runStart, int startFlag);
  Item nextPreProcessed(int successorIndex, int updateKernel, int method, int trueStart, Item outputs);
  Item nextOriginal(int successorIndex, int updateKernel, bool first, Item outputs);
  std::vector<int> restore(std::vector<int> item) const;
  Item read(int successorIndex, int updateKernel, bool byIndex);

  Store& store_;
  int id_;
};

}  // namespace plain
