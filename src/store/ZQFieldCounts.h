// How many children the parents of wide fields have, by the name of the parent's record: a field that others clash with again and
// again isn't counted each time. A child that is given back makes all of it unknown; a move changes no count.
#pragma once

#include <cstring>

namespace zmatrix {

class ZQFieldCounts {
 public:
  static constexpr int narrowest = 64;  // a field of fewer children is counted faster than looked up

  /// The number of children, or 0 if it isn't known. `releasedRecords` is what the matrix counts.
  int find(unsigned parent, unsigned releasedRecords) const {
    const Entry& entry = entries_[parent % numberOfEntries];
    return entry.parent == parent && releasedRecords == releasedRecordsThen_ ? entry.count : 0;
  }
  void set(unsigned parent, int count, unsigned releasedRecords) {
    if (count < narrowest) return;
    if (releasedRecords != releasedRecordsThen_) memset(static_cast<void*>(entries_), 0, sizeof entries_);
    releasedRecordsThen_ = releasedRecords;
    entries_[parent % numberOfEntries] = {parent, count};
  }
  /// The parent has a child more.
  void addOne(unsigned parent) {
    Entry& entry = entries_[parent % numberOfEntries];
    if (entry.parent == parent) ++entry.count;
  }

 private:
  static constexpr unsigned numberOfEntries = 512;
  struct Entry {
    unsigned parent = 0;
    int count = 0;
  };
  Entry entries_[numberOfEntries];
  unsigned releasedRecordsThen_ = 0;
};

}  // namespace zmatrix
