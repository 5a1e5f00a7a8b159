// What the last search for a known context found: its items, and where the path of each of its endings lies, shortest first. When
// one item is appended, as a generation does, every longer ending is one item down from a shorter one found before, so that no
// ending has to be walked from the root. A place is good while its slot still holds its record and nothing was given back since.
#pragma once

#include <cstring>
#include <span>

#include "store/ZQMatrixBase.h"
#include "store/ZQPodList.h"

namespace zmatrix {

class ZQKnownSuffixes {
 public:
  struct Place {
    int position;
    const ZQMatrixBaseElement* record;
  };

  /// True if the sequence is the context found last with one item appended.
  bool isContinuedBy(const ZQMatrixBase& matrix, const int* sequence, int length) const {
    return root == matrix.getCurrentMatrixID() && releasedRecords == matrix.getReleasedRecords() &&
           coordinateDimension == matrix.getMatrixInfo()->getCoordinateDimension() &&
           static_cast<size_t>(length) == items.size() + static_cast<size_t>(coordinateDimension) &&
           (items.empty() || memcmp(items.begin(), sequence, items.size() * sizeof(int)) == 0);
  }

  /// Where the ending of so many items ends, or -1. No item at all ends at the root.
  int positionOf(const ZQMatrixBase& matrix, size_t numberOfItems) const {
    if (numberOfItems == 0) return root;
    if (numberOfItems > places.size()) return -1;
    const Place& place = places[numberOfItems - 1];
    return matrix.elementAt(place.position) == place.record ? place.position : -1;
  }

  /// A new search begins.
  void beginSearch() {
    found.clear();
    hasRoom = true;
  }
  /// Takes note of the next longer ending that was found. Without room for it nothing is remembered of this search.
  void add(const ZQMatrixBase& matrix, int position) { hasRoom = hasRoom && found.add({position, matrix.elementAt(position)}); }
  /// Keeps what the search has found, with the context that it ended at.
  void remember(const ZQMatrixBase& matrix, const int* context, int length) {
    hasRoom = hasRoom && items.copyFrom(std::span<const int>(context, static_cast<size_t>(length)));
    root = hasRoom ? matrix.getCurrentMatrixID() : -1;
    releasedRecords = matrix.getReleasedRecords();
    coordinateDimension = matrix.getMatrixInfo()->getCoordinateDimension();
    places.swap(found);
  }

 private:
  ZQPodList<int> items;
  ZQPodList<Place> places;
  ZQPodList<Place> found;  // by the search that is under way
  bool hasRoom = true;
  int root = -1;
  int coordinateDimension = 0;
  unsigned releasedRecords = 0;
};

}  // namespace zmatrix
