// Working memory of a generation, kept between items so that an item needs no allocation. None of it is part of the state: it can
// be discarded at any time.
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
  ZQArray<int> sequence;      ///< the original items of the kernel followed by the next item
  ZQArray<int> preProcessed;  ///< the result of ZQMatrixMedium::preProcessIntoScratch
};

}  // namespace zmatrix
