// The preprocessed items of MIDI: for each note after the first, its interval and its position in the bar; and a marker for each
// bar line between two notes that start a bar or more apart.
#pragma once

#include <algorithm>
#include <span>

#include "sequence/ZQPreprocessing.h"

namespace zmatrix {

/// Start times are quanta of 32 bits; differences may need more, so bars are counted in 64 bits.
struct BarLines {
  long long barLength;

  /// The number of bar lines between two starts that get a marker: none if the starts are less than a bar apart, else all.
  long long markersBetween(long long start, long long nextStart) const {
    if (nextStart - start < barLength) return 0;
    const long long firstBarLine = (start / barLength + 1) * barLength;
    return firstBarLine > nextStart ? 0 : (nextStart - firstBarLine) / barLength + 1;
  }
};

/// The items of one of the three MIDI types, by the number of their coordinates.
template <int coordinates>
struct MidiItems {
  static void writeMarker(int* item) {
    std::fill_n(item, coordinates, 0);
    item[0] = ZQNotNote;
  }

  static void writeItem(int* item, const int* previous, const int* original, long long barLength) {
    std::copy_n(original, coordinates, item);
    bool isDrum = false;
    if constexpr (coordinates == 4) isDrum = original[3] == drumSound;
    if (!isDrum) item[0] = wrappedDifference(original[0], previous[0]);
    item[1] = static_cast<int>(original[1] % barLength);
  }

  static long long numberOfMarkers(std::span<const int> original, size_t numberOfItems, const BarLines& bars) {
    long long markers = 0;
    for (size_t i = 1; i < numberOfItems; i++)
      markers += bars.markersBetween(original[(i - 1) * coordinates + 1], original[i * coordinates + 1]);
    return markers;
  }
};

}  // namespace zmatrix
