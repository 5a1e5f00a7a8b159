// One sequence of a kernel: its items one after the other in one array. The number of items in use is a field of the info record
// that owns the sequence; the items behind them keep their values while the array grows.
#pragma once

#include <algorithm>
#include <climits>

#include "frame/ZQArray.h"

namespace zmatrix {

class ZQKernelItems {
 public:
  int* data() { return values_.data(); }
  const int* data() const { return values_.data(); }
  int coordinates() const { return coordinatesOfItem_; }
  int room() const { return roomInItems_; }
  int& at(int item, int coordinate) { return values_[item * coordinatesOfItem_ + coordinate]; }
  int at(int item, int coordinate) const { return values_[item * coordinatesOfItem_ + coordinate]; }

  static constexpr long long mostValues = 1LL << 26;  ///< 256 MB

  /// Makes room for at least so many items of so many coordinates; new values are 0. False, and nothing changed, if memory has
  /// run out or for more than mostValues.
  bool provide(int coordinates, int numberOfItems) {
    return (coordinates == coordinatesOfItem_ && numberOfItems <= roomInItems_) ||
           grow(coordinates, std::max(numberOfItems, roomInItems_));
  }

  /// Replaces all items by items of zeros. False if memory has run out.
  bool assign(int coordinates, int numberOfItems) {
    reset();
    return grow(coordinates, numberOfItems);
  }

  void reset() {
    values_.reset();
    rowsShown_.reset();
    valuesShown_.reset();
    coordinatesOfItem_ = roomInItems_ = 0;
  }

  /// A copy with a row per coordinate, each of room() items. Valid until the next call; null if memory has run out.
  int** rows() {
    if (rowsShown_.count() != coordinatesOfItem_ && !rowsShown_.resize(coordinatesOfItem_, nullptr)) return nullptr;
    if (valuesShown_.size() != values_.size() && !valuesShown_.resize(values_.size(), 0)) return nullptr;
    for (int k = 0; k < coordinatesOfItem_; ++k) {
      rowsShown_[k] = valuesShown_.data() + k * roomInItems_;
      for (int i = 0; i < roomInItems_; ++i) rowsShown_[k][i] = at(i, k);
    }
    return rowsShown_.data();
  }

 private:
  bool grow(int coordinates, int numberOfItems) {
    const long long numberOfValues = static_cast<long long>(coordinates) * numberOfItems;
    if (coordinates < 0 || numberOfItems < 0 || numberOfValues > mostValues) return false;
    if (numberOfValues > values_.count() && !values_.resize(numberOfValues, 0)) return false;
    if (coordinates > coordinatesOfItem_) widen(coordinates);
    if (coordinates < coordinatesOfItem_) narrow(coordinates);
    coordinatesOfItem_ = coordinates;
    roomInItems_ = numberOfItems;
    return true;
  }

  /// Adds coordinates of value 0 to each item. Starts with the last item, since the items move up in the array.
  void widen(int coordinates) {
    for (int i = roomInItems_ - 1; i >= 0; --i) {
      for (int k = coordinates - 1; k >= 0; --k) values_[i * coordinates + k] = k < coordinatesOfItem_ ? at(i, k) : 0;
    }
  }

  void narrow(int coordinates) {
    for (int i = 0; i < roomInItems_; ++i) std::copy_n(&at(i, 0), coordinates, values_.data() + i * coordinates);
    values_.fillFrom(roomInItems_ * coordinates, 0);
  }

  ZQArray<int> values_;
  int coordinatesOfItem_ = 0;
  int roomInItems_ = 0;
  ZQArray<int*> rowsShown_;
  ZQArray<int> valuesShown_;
};

}  // namespace zmatrix
