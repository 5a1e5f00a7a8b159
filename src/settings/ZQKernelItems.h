// One face of a kernel: items one after the other in one array, which grows and keeps what lies behind the items in use. How many
// are in use says the record that owns the face.
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

  static constexpr long long mostValues = 1LL << 26;  ///< a quarter of a gigabyte, far beyond any context

  /// Makes room for at least so many items of so many coordinates; what is new is 0. False, and nothing changed, without memory
  /// or for more than mostValues.
  bool provide(int coordinates, int numberOfItems) {
    return (coordinates == coordinatesOfItem_ && numberOfItems <= roomInItems_) ||
           grow(coordinates, std::max(numberOfItems, roomInItems_));
  }

  /// Drops all items for new ones of zeros.
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

  /// A copy by coordinates, a row each with all items there is room for. It holds until the next call; null without memory.
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

  /// Gives each item more coordinates, which are 0. From the last item on, since the items move up.
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
