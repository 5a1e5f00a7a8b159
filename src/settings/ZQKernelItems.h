// One face of a kernel: items one after the other in one array, which grows and keeps what lies behind the items in use. How many
// are in use says the record that owns the face.
#pragma once

#include <algorithm>
#include <climits>

#include "frame/ZQArray.h"

namespace zmatrix {

class ZQKernelItems {
 public:
  int* data() { return values.data(); }
  const int* data() const { return values.data(); }
  int coordinates() const { return coordinatesOfItem; }
  int room() const { return roomInItems; }
  int& at(int item, int coordinate) { return values[item * coordinatesOfItem + coordinate]; }
  int at(int item, int coordinate) const { return values[item * coordinatesOfItem + coordinate]; }

  static constexpr long long mostValues = 1LL << 26;  ///< a quarter of a gigabyte, far beyond any context

  /// Makes room for at least so many items of so many coordinates; what is new is 0. False, and nothing changed, without memory
  /// or for more than mostValues.
  bool provide(int coordinates, int numberOfItems) {
    return (coordinates == coordinatesOfItem && numberOfItems <= roomInItems) ||
           grow(coordinates, std::max(numberOfItems, roomInItems));
  }

  /// Drops all items for new ones of zeros.
  bool assign(int coordinates, int numberOfItems) {
    reset();
    return grow(coordinates, numberOfItems);
  }

  void reset() {
    values.reset();
    rowsShown.reset();
    valuesShown.reset();
    coordinatesOfItem = roomInItems = 0;
  }

  /// A copy by coordinates, a row each with all items there is room for. It holds until the next call; null without memory.
  int** rows() {
    if (rowsShown.count() != coordinatesOfItem && !rowsShown.resize(coordinatesOfItem, nullptr)) return nullptr;
    if (valuesShown.size() != values.size() && !valuesShown.resize(values.size(), 0)) return nullptr;
    for (int k = 0; k < coordinatesOfItem; ++k) {
      rowsShown[k] = valuesShown.data() + k * roomInItems;
      for (int i = 0; i < roomInItems; ++i) rowsShown[k][i] = at(i, k);
    }
    return rowsShown.data();
  }

 private:
  bool grow(int coordinates, int numberOfItems) {
    const long long numberOfValues = static_cast<long long>(coordinates) * numberOfItems;
    if (coordinates < 0 || numberOfItems < 0 || numberOfValues > mostValues) return false;
    if (numberOfValues > values.count() && !values.resize(numberOfValues, 0)) return false;
    if (coordinates > coordinatesOfItem) widen(coordinates);
    if (coordinates < coordinatesOfItem) narrow(coordinates);
    coordinatesOfItem = coordinates;
    roomInItems = numberOfItems;
    return true;
  }

  /// Gives each item more coordinates, which are 0. From the last item on, since the items move up.
  void widen(int coordinates) {
    for (int i = roomInItems - 1; i >= 0; --i) {
      for (int k = coordinates - 1; k >= 0; --k) values[i * coordinates + k] = k < coordinatesOfItem ? at(i, k) : 0;
    }
  }

  void narrow(int coordinates) {
    for (int i = 0; i < roomInItems; ++i) std::copy_n(&at(i, 0), coordinates, values.data() + i * coordinates);
    values.fillFrom(roomInItems * coordinates, 0);
  }

  ZQArray<int> values;
  int coordinatesOfItem = 0;
  int roomInItems = 0;
  ZQArray<int*> rowsShown;
  ZQArray<int> valuesShown;
};

}  // namespace zmatrix
