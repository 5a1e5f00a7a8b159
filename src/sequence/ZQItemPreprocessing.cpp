#include "sequence/ZQItemPreprocessing.h"

#include <array>

#include "frame/ZQTextCharacters.h"
#include "sequence/ZQMidiItems.h"

namespace zmatrix {

namespace {

bool isDifference(int type) {
  return type >= 0 && type <= ZQPreProcessingTypeHighestDifference;
}

bool isPlainText(const PreprocessingSettings& settings) {
  return settings.preProcessingType == ZQPreProcessingTypeANSIText && settings.coordinateDimension == 1;
}

/// Computes the difference of an order over the last order + 1 items, for each coordinate.
bool differenceAtEnd(int order, int coordinateDimension, std::span<const int> original, int* item) {
  const size_t step = static_cast<size_t>(coordinateDimension), numberOfValues = static_cast<size_t>(order) + 1;
  if (original.size() < numberOfValues * step) return false;
  const std::span<const int> last = original.last(numberOfValues * step);
  std::array<int, ZQPreProcessingTypeHighestDifference + 1> row;
  for (size_t k = 0; k < step; ++k) {
    for (size_t i = 0; i < numberOfValues; ++i) row[i] = last[i * step + k];
    for (size_t remaining = numberOfValues - 1; remaining > 0; --remaining) {
      for (size_t i = 0; i < remaining; ++i) row[i] = wrappedDifference(row[i + 1], row[i]);
    }
    item[k] = row[0];
  }
  return true;
}

/// Replaces a single white-space character by a blank. False for a run of white space and for a line end after a hyphen, which
/// change the length of the text.
bool characterAtEnd(std::span<const int> text, int* item) {
  const int character = text.back();
  *item = isWhiteCharacter(character) ? blankCharacter : character;
  if (!isWhiteCharacter(character) || text.size() < 2) return true;
  const int before = text[text.size() - 2];
  return !isWhiteCharacter(before) && !(character == lineEndCharacter && before == hyphenCharacter);
}

/// False if bar markers come before the note, or if its interval equals a bar marker and would be counted as one.
template <int coordinates>
bool noteAtEnd(long long barLength, std::span<const int> original, int* item) {
  if (original.size() < 2 * coordinates) return false;
  const int* last = &original[original.size() - coordinates];
  const int* previous = last - coordinates;
  if (BarLines{barLength}.markersBetween(previous[1], last[1]) > 0) return false;
  MidiItems<coordinates>::writeItem(item, previous, last, barLength);
  return item[0] != ZQNotNote;
}

template <int coordinates>
bool fitsInLength(long long barLength, std::span<const int> original, std::span<const int> preProcessed) {
  const size_t numberOfItems = original.size() / coordinates;
  const long long markers = MidiItems<coordinates>::numberOfMarkers(original, numberOfItems, BarLines{barLength});
  return numberOfItems > 0 &&
         static_cast<long long>(preProcessed.size() / coordinates) == static_cast<long long>(numberOfItems) - 1 + markers;
}

/// Calls an operation for MIDI items with their number of coordinates as template argument; false for other types, and for a time
/// signature without a bar length.
template <class Operation>
bool withMidiItems(const PreprocessingSettings& settings, Operation operation) {
  const int coordinates = coordinatesOfMidiType(settings.preProcessingType);
  const long long barLength = barLengthOrZero(settings);
  if (coordinates != settings.coordinateDimension || barLength == 0) return false;
  switch (coordinates) {
    case 2:
      return operation.template operator()<2>(barLength);
    case 3:
      return operation.template operator()<3>(barLength);
    case 4:
      return operation.template operator()<4>(barLength);
    default:
      return false;
  }
}

/// Checks that the bar markers in front of the first note are those of the bar lines before it.
template <int coordinates>
bool fitsInFront(long long barLength, std::span<const int> original, std::span<const int> preProcessed) {
  size_t firstNote = 0;
  while (firstNote < preProcessed.size() && preProcessed[firstNote] == ZQNotNote) firstNote += coordinates;
  const std::span<const int> front = original.first(std::min<size_t>(original.size(), 2 * coordinates));
  return fitsInLength<coordinates>(barLength, front, preProcessed.first(std::min(firstNote + coordinates, preProcessed.size())));
}

}  // namespace

bool preProcessedItem(const PreprocessingSettings& settings, std::span<const int> original, int* item) {
  if (isDifference(settings.preProcessingType)) {
    return differenceAtEnd(settings.preProcessingType, settings.coordinateDimension, original, item);
  }
  if (isPlainText(settings)) return characterAtEnd(original, item);
  return withMidiItems(settings,
                       [&]<int coordinates>(long long barLength) { return noteAtEnd<coordinates>(barLength, original, item); });
}

bool isPreProcessedFormOf(const PreprocessingSettings& settings, std::span<const int> original,
                          std::span<const int> preProcessed) {
  if (isDifference(settings.preProcessingType)) {
    return original.size() == preProcessed.size() + static_cast<size_t>(settings.preProcessingType) *
                                                        static_cast<size_t>(settings.coordinateDimension);
  }
  if (isPlainText(settings)) return original.size() == preProcessed.size();
  return withMidiItems(settings, [&]<int coordinates>(long long barLength) {
    return fitsInLength<coordinates>(barLength, original, preProcessed);
  });
}

bool isPreProcessedFormAfterCut(const PreprocessingSettings& settings, std::span<const int> original,
                                std::span<const int> preProcessed) {
  if (coordinatesOfMidiType(settings.preProcessingType) == 0) return isPreProcessedFormOf(settings, original, preProcessed);
  return withMidiItems(settings, [&]<int coordinates>(long long barLength) {
    return fitsInFront<coordinates>(barLength, original, preProcessed);
  });
}

}  // namespace zmatrix
