// A list of plain values that grows and says no instead of throwing: the scratch of searches, moves and repairs.
#pragma once

#include <cstring>
#include <span>
#include <utility>

#include "store/ZQPodArray.h"

namespace zmatrix {

template <class T>
class ZQPodList {
 public:
  size_t size() const { return numberOfValues; }
  bool empty() const { return numberOfValues == 0; }
  T& operator[](size_t index) { return room[index]; }
  const T& operator[](size_t index) const { return room[index]; }
  T* begin() { return numberOfValues > 0 ? &room[0] : nullptr; }
  T* end() { return begin() + numberOfValues; }
  const T* begin() const { return numberOfValues > 0 ? &room[0] : nullptr; }
  const T* end() const { return begin() + numberOfValues; }
  const T& front() const { return room[0]; }
  operator std::span<const T>() const { return {begin(), numberOfValues}; }

  void clear() { numberOfValues = 0; }
  void swap(ZQPodList& other) {
    room.swap(other.room);
    std::swap(numberOfValues, other.numberOfValues);
  }
  /// Each of these is false, and changes nothing, if memory has run out.
  bool add(const T& value) {
    if (!provide(numberOfValues + 1)) return false;
    room[numberOfValues++] = value;
    return true;
  }
  bool insert(const T* place, const T& value) {
    const size_t index = static_cast<size_t>(place - begin());
    if (!provide(numberOfValues + 1)) return false;
    memmove(&room[0] + index + 1, &room[0] + index, (numberOfValues - index) * sizeof(T));
    room[index] = value;
    ++numberOfValues;
    return true;
  }
  /// Makes the list this long; what the values are then is up to the caller. Null if memory has run out.
  T* makeRoomFor(size_t number) {
    if (!provide(number > 0 ? number : 1)) return nullptr;
    numberOfValues = number;
    return &room[0];
  }
  bool copyFrom(std::span<const T> values) {
    if (!provide(values.size())) return false;
    if (!values.empty()) memcpy(&room[0], values.data(), values.size() * sizeof(T));
    numberOfValues = values.size();
    return true;
  }

 private:
  static constexpr size_t firstRoom = 64;

  bool provide(size_t number) {
    return number <= room.size() || room.resize(number < firstRoom ? firstRoom : number + number / 2, 0);
  }

  ZQPodArray<T> room;
  size_t numberOfValues = 0;
};

}  // namespace zmatrix
