// The part of Matrix that all tiers have: settings, records, file and self-tests, over the C functions of a tier. LearningMatrix
// and ContinuingMatrix derive from it.
#pragma once

#include <algorithm>
#include <cerrno>
#include <memory>
#include <string>
#include <vector>

#include "Failure.h"
#include "LibraryMessages.h"
#include "Matrix.h"

template <class Functions>
class StoredMatrix : public Matrix {
 public:
  using Handle = typename Functions::Handle;

  StoredMatrix(Handle* handle, MessageLevel messageLevel) : handle_(handle, Functions::destroy) { setMessageLevel(messageLevel); }

  Tier tier() const override { return Functions::number; }
  int numberOfIDs() const override { return Functions::numberOfIDs(matrix()); }
  int blockSize() const override { return Functions::blockSize(matrix()); }
  int maximalStack() const override { return Functions::maximalStack(matrix()); }
  void select(int id) override { Functions::setCurrentID(matrix(), id); }
  MessageLevel messageLevel() const override { return messageLevel_; }

  void setMessageLevel(MessageLevel messageLevel) override {
    messageLevel_ = messageLevel;
    Functions::setDebugDevice(matrix(), messageLevel.printsMessages() ? 1 : 0);
    Functions::setDebugLevel(matrix(), messageLevel.level);
  }

  Header header() const override {
    Header header{Functions::description(matrix()), Functions::formatVersion(matrix()), 0, Functions::idsInUse(matrix())};
    if constexpr (Functions::learns) header.updates = Functions::updates(matrix());
    return header;
  }

  const ZQMatrixProperties& record(int id) override {
    const int selected = Functions::currentID(matrix());
    select(id);
    const ZQMatrixProperties* record = Functions::snapshot(Functions::info(matrix()));
    select(selected);
    if (record == nullptr) throw Failure{ExitCode::limit, "out of memory"};
    return *record;
  }

  std::vector<const ZQMatrixProperties*> history() override {
    const MutedMessages muted(*this);  // the library reads until a record fails, and warns of that
    int count = 0;
    Functions::readHistory(matrix(), &count);
    std::vector<const ZQMatrixProperties*> records;
    for (int index = 0; index < count; ++index) {
      auto* info = Functions::historyRecord(matrix(), index);
      if (info == nullptr) break;
      records.push_back(Functions::snapshot(info));
    }
    return records;
  }

  zq_loadReport loadReport() override {
    zq_loadReport report;
    Functions::loadReport(matrix(), &report);
    return report;
  }

  bool save(const std::string& path) override {
    errno = 0;
    return Functions::save(matrix(), path.c_str()) == 1;
  }

  void reserveIDs(int count) override { Functions::reserveIDs(matrix(), count); }

  // The root's writeCountWithSuccessor counts the items, and the root's handle is the ID.
  long long itemsLearned([[maybe_unused]] int id) const override {
    if constexpr (Functions::learns) {
      auto* root = id > maximalStack() ? nullptr : Functions::elementAt(matrix(), id);
      return root == nullptr ? 0 : Functions::itemsBehind(root);
    } else {
      return 0;
    }
  }

 protected:
  Handle* matrix() const { return handle_.get(); }

  // For a sound matrix too the library may print many warnings, such as one per symbol without a level of words. The messages are
  // printed only if the test finds a fault.
  TestResult selfTest(int id, int which) override {
    select(id);
    TestResult result{};
    LibraryMessages messages(messageLevel_.level == 0);
    result.isSound =
        Functions::selfTest(matrix(), which, &result.writtenElements, &result.endElements, 0) == 1;  // 0: don't trim the block
    messages.end();
    if (!result.isSound) messages.print();
    return result;
  }

 private:
  std::unique_ptr<Handle, decltype(Functions::destroy)> handle_;
  MessageLevel messageLevel_{0};
};
