// Learning and generation told plainly: the update walks every phrase from the root, the kernel search tries every suffix from
// the root, a choice lists all successors with their probabilities. It works on the plain store; the library must give the same
// slots, counters, results, draws and items.
#pragma once

#include <string>
#include <vector>

#include "support/PlainStore.h"

namespace plain {

/// Preprocessing of the kinds that need no music: a copy, or differences of order `type`.
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

/// Learning into, and generating from, the current sub-matrix of a store: one of these belongs to one matrix ID.
class Sequence {
 public:
  Sequence(Store& aStore, int matrixID);

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
  int postWrites = 0, skips = 0;  // so that a test can tell that its sequences went there

 private:
  int coordinateDimension() const { return store.infos[static_cast<size_t>(id)].coordinateDimension; }
  double randomFraction();
  int symbolMarkerOf(const std::vector<int>& preProcessed, int first, int last) const;
  int writePrefixesOfRunBefore(Update& call, const std::vector<int>& prefix, int previousRunStart, int runStart, int startFlag);
  Item nextPreProcessed(int successorIndex, int updateKernel, int method, int trueStart, Item outputs);
  Item nextOriginal(int successorIndex, int updateKernel, bool first, Item outputs);
  std::vector<int> restore(std::vector<int> item) const;
  Item read(int successorIndex, int updateKernel, bool byIndex);

  Store& store;
  int id;
};

}  // namespace plain
