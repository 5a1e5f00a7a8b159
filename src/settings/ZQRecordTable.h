// An owning table of info records, by matrix ID or, in a history, by number. Entries may be null.
#pragma once

#include <memory>

#include "frame/ZQArray.h"
#include "settings/ZQMatrixBaseInfo.h"

namespace zmatrix {

class ZQRecordTable {
 public:
  ZQRecordTable() = default;
  ~ZQRecordTable() { deleteFrom(0); }
  ZQRecordTable(const ZQRecordTable&) = delete;
  ZQRecordTable& operator=(const ZQRecordTable&) = delete;

  int count() const noexcept { return records_.count(); }
  ZQMatrixBaseInfo** data() noexcept { return records_.data(); }
  ZQMatrixBaseInfo* operator[](int id) const noexcept { return records_[id]; }

  /// Deletes the records from `newCount` on; new entries are null. False, and nothing changed, if memory has run out; a smaller
  /// count never fails.
  [[nodiscard]] bool resize(int newCount) noexcept {
    deleteFrom(newCount);
    return records_.resize(newCount);
  }
  /// Replaces a record.
  void put(int id, std::unique_ptr<ZQMatrixBaseInfo> record) noexcept {
    delete records_[id];
    records_[id] = record.release();
  }
  void reset() noexcept {
    deleteFrom(0);
    records_.reset();
  }

 private:
  void deleteFrom(int first) noexcept {
    for (int id = first; id < records_.count(); ++id) delete std::exchange(records_[id], nullptr);
  }

  ZQArray<ZQMatrixBaseInfo*> records_;
};

}  // namespace zmatrix
