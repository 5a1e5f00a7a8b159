// What a generation works in, kept from item to item so that an item costs no allocation. It holds nothing that can't be made
// anew.
#pragma once

#include "frame/ZQArray.h"
#include "sequence/ZQKnownSuffixes.h"

namespace zmatrix {

/// A successor of the kernel with what decides how probable it is.
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
