// Preprocessing of one appended item, without processing the whole sequence again. Fails where an item may change earlier parts
// of the preprocessed form, as a line end after a hyphen does in a text.
#pragma once

#include <span>

#include "sequence/ZQPreprocessing.h"

namespace zmatrix {

/// Computes the preprocessed item that the last item of `original` adds to the preprocessed form of the items before it. False,
/// with `item` undefined, if it adds none or several or changes others, and for number codes. Prints nothing.
bool preProcessedItem(const PreprocessingSettings& settings, std::span<const int> original, int* item);

/// `preProcessed` must be an ending of the preprocessed form of a sequence that ends with `original`, both in whole items. True
/// if it is exactly the preprocessed form of `original`; only lengths and bar markers are compared.
bool isPreProcessedFormOf(const PreprocessingSettings& settings, std::span<const int> original,
                          std::span<const int> preProcessed);

/// The same for a pair for which it was true before items were removed from the front of both; checks only the front.
bool isPreProcessedFormAfterCut(const PreprocessingSettings& settings, std::span<const int> original,
                                std::span<const int> preProcessed);

}  // namespace zmatrix
