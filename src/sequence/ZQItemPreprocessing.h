// Preprocessing one item at a time: what a sequence that grows by an item adds to its preprocessed form, without reading the
// whole again. Where that form may change further back, as in a text with a line end behind a hyphen, the answer is no.
#pragma once

#include <span>

#include "sequence/ZQPreprocessing.h"

namespace zmatrix {

/// Finds the one preprocessed item that the last item of `original` adds to the preprocessed form of those before it. False, with
/// `item` undefined, if it adds none or several or changes others, and for number codes. Prints nothing.
[[nodiscard]] bool preProcessedItem(const PreprocessingSettings& settings, std::span<const int> original, int* item);

/// For a preprocessed sequence that is the end of a preprocessed form which `original` was at the end of, in whole items: true if
/// it is the preprocessed form of `original` and nothing else.
bool isPreProcessedFormOf(const PreprocessingSettings& settings, std::span<const int> original,
                          std::span<const int> preProcessed);

/// The same if it was so before items were taken away in front of both: looks at the front alone.
bool isPreProcessedFormAfterCut(const PreprocessingSettings& settings, std::span<const int> original,
                                std::span<const int> preProcessed);

}  // namespace zmatrix
