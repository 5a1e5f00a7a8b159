// Working memory of a generation, kept from item to item so that an item costs no allocation. All of it can be made anew.
#pragma once

#include "frame/ZQArray.h"
#include "sequence/ZQKnownSuffixes.h"

namespace zmatrix {

/// A successor of the kernel with the counts that give its probability.
struct Successor {
  double probability;
  double integral;  ///< running sum of the probabilities
  int handle;
  int writeCount;
  int writeCountWithoutPredecessor;
};

struct ZQGenerationScratch {
  ZQKnownSuffixes knownSuffixes;
  ZQArray<Successor> successors;
  ZQArray<int> sequence;  ///< a kernel with the next item behind it
  ZQArray<int> preProcessed;
};

}  // namespace zmatrix
