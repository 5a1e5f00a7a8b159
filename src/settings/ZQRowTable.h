// Rows of ints of one length, reached through a table of row pointers: a sequence held coordinate by coordinate. The rows lie in
// one block.
#pragma once

#include "frame/ZQArray.h"

namespace zmatrix {

class ZQRowTable {
 public:
  static constexpr long long mostValues = 1LL << 26;  ///< of all rows: a quarter of a gigabyte, far beyond any context

  int** data() noexcept { return rows.data(); }
  int* operator[](int row) noexcept { return rows[row]; }
  int numberOfRows() const noexcept { return rows.count(); }
  int rowLength() const noexcept { return lengthOfRows; }
  bool holds(int rowCount, int length) const noexcept { return rowCount <= rows.count() && length <= lengthOfRows; }

  /// Makes room for at least this much; what is new is 0 and nothing gets smaller. False, and nothing changed, if there is no
  /// room, or if it is more than mostValues.
  [[nodiscard]] bool grow(int rowCount, int length) noexcept {
    if (holds(rowCount, length) && rows.data() != nullptr) return true;
    const int newRows = std::max(rowCount, rows.count());
    const int newLength = std::max(length, lengthOfRows);
    const long long numberOfValues = static_cast<long long>(newRows) * newLength;
    ZQArray<int> newValues;
    if (numberOfValues > mostValues || !newValues.resize(numberOfValues)) return false;
    const int oldRows = rows.count();
    if (!rows.resize(newRows)) return false;
    for (int i = 0; i < newRows; ++i) {
      int* const row = newValues.data() + static_cast<ptrdiff_t>(i) * newLength;
      if (i < oldRows) std::copy_n(rows[i], lengthOfRows, row);
      rows[i] = row;
    }
    values.swap(newValues);
    lengthOfRows = newLength;
    return true;
  }

  /// Drops all rows and makes new ones of zeros.
  [[nodiscard]] bool assign(int rowCount, int length) noexcept {
    reset();
    return grow(rowCount, length);
  }

  void reset() noexcept {
    rows.reset();
    values.reset();
    lengthOfRows = 0;
  }

 private:
  ZQArray<int> values;
  ZQArray<int*> rows;  // into the values
  int lengthOfRows = 0;
};

}  // namespace zmatrix
