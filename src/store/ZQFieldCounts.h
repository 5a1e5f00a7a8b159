// A cache of the number of children of wide fields, so that a field isn't counted again at each clash. The key is the name of the
// parent's record, which is unique and doesn't change in a move. Any deletion of an element invalidates the whole cache.
#pragma once

#include <cstring>

namespace zmatrix {

class ZQFieldCounts {
 public:
  static constexpr int smallestCount = 64;  // a field of fewer children is counted faster than looked up

  /// The number of children, or 0 if it isn't known. `releasedRecords` is ZQMatrixBase::getReleasedRecords().
  int find(unsigned parent, unsigned releasedRecords) const {
    const Entry& entry = entries_[parent % numberOfEntries];
    return entry.parent == parent && releasedRecords == releasedRecordsThen_ ? entry.count : 0;
  }
  void set(unsigned parent, int count, unsigned releasedRecords) {
    if (count < smallestCount) return;
    if (releasedRecords != releasedRecordsThen_) memset(static_cast<void*>(entries_), 0, sizeof entries_);
    releasedRecordsThen_ = releasedRecords;
    entries_[parent % numberOfEntries] = {parent, count};
  }
  /// Called when the parent gets one more child.
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
