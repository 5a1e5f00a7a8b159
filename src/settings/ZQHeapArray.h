// Arrays of plain values on the C heap whose sizes may come from outside: they say no instead of throwing, and keep what they
// hold when there is no room. The info records own theirs through these, and hand out the bare pointers.
#pragma once

#include <climits>
#include <cstring>

#include "frame/ZQMemory.h"

namespace zmatrix {

template <class T>
class HeapArray {
 public:
  HeapArray() = default;
  ~HeapArray() { release(); }
  HeapArray(const HeapArray&) = delete;
  HeapArray& operator=(const HeapArray&) = delete;

  T* data() { return values; }
  const T* data() const { return values; }
  int size() const { return numberOfValues; }
  T& operator[](int index) { return values[index]; }
  const T& operator[](int index) const { return values[index]; }

  /// Keeps the entries that fit; new ones get `fill`. False, and nothing changed, if there is no room. Making it smaller never
  /// fails.
  bool resize(long long newSize, T fill) {
    if (newSize < 0 || newSize > INT_MAX) return false;
    T* newValues =
        static_cast<T*>(systemRealloc(values, bytesOf(newSize > 0 ? static_cast<unsigned long long>(newSize) : 1, sizeof(T))));
    if (newValues == nullptr && (values == nullptr || newSize > numberOfValues)) return false;
    if (newValues != nullptr) values = newValues;
    const int oldSize = numberOfValues;
    numberOfValues = static_cast<int>(newSize);
    fillFrom(oldSize, fill);
    return true;
  }

  /// As resize, but all entries get `fill`.
  bool assign(long long newSize, T fill) {
    if (!resize(newSize, fill)) return false;
    fillFrom(0, fill);
    return true;
  }

  void fillFrom(int first, T fill) {
    for (int i = first; i < numberOfValues; ++i) values[i] = fill;
  }

  void release() {
    systemFree(values);
    values = nullptr;
    numberOfValues = 0;
  }

 private:
  T* values = nullptr;
  int numberOfValues = 0;
};

/// Rows of ints of one length, reached through a table of row pointers: a sequence held coordinate by coordinate.
class RowTable {
 public:
  RowTable() = default;
  ~RowTable() { release(); }
  RowTable(const RowTable&) = delete;
  RowTable& operator=(const RowTable&) = delete;

  int** data() { return rows.data(); }
  int* operator[](int row) { return rows[row]; }
  int numberOfRows() const { return rows.size(); }
  int rowLength() const { return lengthOfRows; }
  bool holds(int rowCount, int length) const { return rowCount <= rows.size() && length <= lengthOfRows; }

  /// Makes room for at least this much; what is new is 0 and nothing gets smaller. False if there is no room, or if it is more
  /// than mostValues.
  bool grow(int rowCount, int length) {
    if (holds(rowCount, length)) return true;
    const long long numberOfValues =
        static_cast<long long>(rowCount > rows.size() ? rowCount : rows.size()) * (length > lengthOfRows ? length : lengthOfRows);
    if (numberOfValues > mostValues) return false;
    return (length <= lengthOfRows || growRows(length)) && (rowCount <= rows.size() || addRows(rowCount));
  }

  /// Drops all rows and makes new ones of zeros.
  bool assign(int rowCount, int length) {
    release();
    return rows.resize(0, nullptr) && grow(rowCount, length);
  }

  static constexpr long long mostValues = 1LL << 26;  ///< of all rows: a quarter of a gigabyte, far beyond any context

  void release() {
    for (int i = 0; i < rows.size(); ++i) systemFree(rows[i]);
    rows.release();
    lengthOfRows = 0;
  }

 private:
  bool growRows(int length) {
    for (int i = 0; i < rows.size(); ++i) {
      int* row = static_cast<int*>(systemRealloc(rows[i], static_cast<size_t>(length) * sizeof(int)));
      if (row == nullptr) return false;
      memset(row + lengthOfRows, 0, static_cast<size_t>(length - lengthOfRows) * sizeof(int));
      rows[i] = row;
    }
    lengthOfRows = length;
    return true;
  }

  bool addRows(int rowCount) {
    while (rows.size() < rowCount) {
      int* row = systemMallocArray<int>(lengthOfRows);
      if (row == nullptr) return false;
      memset(row, 0, static_cast<size_t>(lengthOfRows) * sizeof(int));
      if (!rows.resize(rows.size() + 1LL, row)) {
        systemFree(row);
        return false;
      }
    }
    return true;
  }

  HeapArray<int*> rows;
  int lengthOfRows = 0;
};

}  // namespace zmatrix
