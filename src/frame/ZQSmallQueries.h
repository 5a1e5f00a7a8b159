// Two small questions that a host or any floor may ask without a matrix.
#pragma once

/// The slots that a new matrix begins with, or 0 if the wishes make no sense (the first three below 1, the last below 0).
int getExpectedMatrixMemory(int coordinateDimension, int numberOfItems, int phraseLength, int numberOfSymbols);

/// How many original items the inverse of a preprocessing must be given before the first preprocessed item.
int sGetNumberOriginalItemsToRestoreFromPreprocessed(int preProcessingType);
