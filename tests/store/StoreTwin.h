// Runs each operation on a library matrix and on the plain store, and compares results, messages, slots, counters and the state
// of the search. After the first difference `sound()` is false and a script should end.
#pragma once

#include <algorithm>
#include <cstdlib>
#include <random>

#include "support/CapturedMessages.h"
#include "support/PlainModel.h"
#include "support/StoreInvariants.h"
#include "support/TierUnderTest.h"

/// Random numbers that are the same on every system.
class Dice {
 public:
  explicit Dice(unsigned seed) : engine_(seed) {}
  int below(int limit) { return static_cast<int>(engine_() % static_cast<unsigned>(limit)); }
  int between(int low, int high) { return low + below(high - low + 1); }
  bool oneIn(int n) { return below(n) == 0; }

 private:
  std::mt19937 engine_;
};

template <class Matrix>
class StoreTwin {
 public:
  using Access = zmatrix::TierUnderTest<Matrix>;
  static constexpr bool hasRules = Access::tier != plain::Tier::base;
  static constexpr bool hasSymbols = Access::tier == plain::Tier::full;

  explicit StoreTwin(int blockSize, const plain::SearchState& state = {}) : store(Access::tier), matrix(Access::create()) {
    zmatrix::setSearchState(state);
    store.search = state;
    store.setInitialMatrixBlocksize(blockSize);
    matrix->setInitialMatrixBlocksize(blockSize);
    messages_.listen();
    compare();
  }
  ~StoreTwin() {
    Access::destroy(matrix);
    zmatrix::setSearchState({});
  }
  StoreTwin(const StoreTwin&) = delete;
  StoreTwin& operator=(const StoreTwin&) = delete;

  bool sound() const { return !::testing::Test::HasFailure(); }

  void select(int id) {
    store.currentMatrixID = id;
    matrix->setCurrentMatrixID(id);
  }
  void setMethod(int id, int method) {
    store.infos[static_cast<size_t>(id)].memorySearchMethod = method;
    matrix->getMatrixInfoArray()[id]->setMemorySearchMethod(method);
  }
  void setReadOnly(int flag) {
    store.info().memIsReadOnly = flag;
    matrix->getMatrixInfo()->setMemIsReadOnly(flag);
  }

  int write(const zmatrix::Vector& vector, long long value, int startFlag = 0, int endFlag = 0, int symbolMarker = 0) {
    const int expected = store.write(vector, value, startFlag, endFlag, symbolMarker);
    EXPECT_EQ(Access::write(*matrix, vector, value, startFlag, endFlag, symbolMarker), expected);
    compareMessages();
    if (!modelled) return expected;
    if (expected == 1 && !vector.empty()) model().write(vector, value, hasRules ? startFlag : 0, hasRules ? endFlag : 1);
    if (expected == 0 && !store.info().memIsReadOnly) keepWalkedPath(vector);
    return expected;
  }
  void remove(zmatrix::Vector vector, int keepInnerElements) {
    const int expected = store.remove(vector, keepInnerElements);
    EXPECT_EQ(matrix->deleteMatrixElement(vector.data(), static_cast<int>(vector.size()), keepInnerElements), expected);
    compareMessages();
    if (vector.empty() || !modelled) return;
    EXPECT_EQ(model().remove(vector, keepInnerElements), std::max(expected, -1));
  }
  void read(zmatrix::Vector vector) {
    const plain::Read found = Access::read(*matrix, vector);
    EXPECT_TRUE(found == store.read(vector)) << "exist code " << found.existCode << ", write count " << found.writeCount;
    const plain::Model::Counts* counts = model().find(vector);
    EXPECT_EQ(counts != nullptr, found.existCode >= 1);
    if (counts == nullptr || found.existCode < 1) return;
    EXPECT_EQ(found.writeCount, counts->writeCount);
    EXPECT_EQ(found.value, counts->value);
    EXPECT_EQ(found.existCode, !model().hasChildren(vector) ? 3 : counts->writeCount > 0 ? 2 : 1);
    for (size_t i = 0; i <= vector.size(); ++i) EXPECT_EQ(matrix->getMatrixInfo()->getMatrixPtr()[i], store.info().matrixPtr[i]);
    if constexpr (hasRules) {
      EXPECT_EQ(matrix->isDeterminedMatrixData(vector.data(), static_cast<int>(vector.size())),
                store.isDetermined(vector.data(), static_cast<int>(vector.size())));
    }
    compareMessages();
  }
  void compareHandles(zmatrix::Vector vector) {
    const int handle = store.handleOf(vector);
    EXPECT_EQ(matrix->getMatrixHandleFromElementVector(vector.data(), static_cast<int>(vector.size())), handle);
    if (handle < 0) return;
    EXPECT_EQ(matrix->getLengthOfIndexVectorFromMatrixHandle(handle), store.pathLength(handle));
    int length = -1, count = -1;
    int* path = matrix->getIndexVectorFromMatrixHandle(handle, &length);
    EXPECT_EQ(zmatrix::Vector(path, path + length), store.path(handle));
    matrix->mFree(path);
    const zmatrix::Vector expected = store.successors(handle);
    int* successors = matrix->getSuccessorHandlesFromMatrixHandle(handle, &count);
    EXPECT_EQ(zmatrix::Vector(successors, successors + count), expected);
    matrix->mFree(successors);
    EXPECT_EQ(matrix->getNumberOfSuccessorsFromMatrixHandle(handle), static_cast<int>(expected.size()));
    EXPECT_EQ(matrix->hasMatrixHandleSuccessors(handle), !expected.empty());
    if constexpr (hasRules) {
      EXPECT_EQ(matrix->isRuleMatrixData(mediumSlot(handle)), store.isRule(handle));
    }
    messages_.take();
  }
  void expand(int minimalSize) {
    const int expected = store.expandMatrixBlock(minimalSize);
    EXPECT_EQ(matrix->expandMatrixBlock(minimalSize), expected);
    compareMessages();
  }
  void cut(int maximalLength) {
    if constexpr (requires { matrix->removeLongElements(1); }) {
      const bool hadElements = store.at(store.currentMatrixID)->child != 0;
      const int expected = store.removeLongElements(maximalLength);
      EXPECT_EQ(matrix->removeLongElements(maximalLength), expected);
      compareMessages();
      if (hadElements) model().cut(static_cast<size_t>(maximalLength));
    }
  }
  void prune() {
    if constexpr (requires { matrix->removeOverDeterminedElements(); }) {
      const int expected = store.removeOverDeterminedElements();
      EXPECT_EQ(matrix->removeOverDeterminedElements(), expected);
      compareMessages();
      std::erase_if(model().paths, [this](const auto& path) { return store.exist(path.first) < 1; });
    }
  }
  /// Empties a sub-matrix and resets its record. After a failure it stays the current one.
  void clear(int id) {
    if constexpr (requires { matrix->clearMatrixForID(1); }) {
      const int remembered = store.currentMatrixID;
      store.currentMatrixID = id;
      const bool isCleared = store.removeLongElements(0) > 0;
      model().cut(0);
      if (isCleared) {
        store.info() = plain::Info();
        store.currentMatrixID = remembered;
      } else {
        store.print(0, "error from clearMatrixWithID(): removeLongElements() returned error!\n");
      }
      EXPECT_EQ(matrix->clearMatrixForID(id), isCleared ? 1 : -1);
      EXPECT_EQ(matrix->getCurrentMatrixID(), store.currentMatrixID);
      compareMessages();
    }
  }
  /// Writes the phrase's symbol in the sub-matrix above, with a link down to the phrase.
  void linkSymbol(const zmatrix::Vector& phrase) {
    if constexpr (hasSymbols) {
      const int handle = store.handleOf(phrase), id = store.currentMatrixID, levelUp = store.info().levelUp;
      if (handle < 0 || levelUp < 0 || store.at(handle)->symbolID < 256) return;
      const int symbol = store.at(handle)->symbolID;
      select(levelUp);
      write({symbol}, symbol);
      const int phraseNow = phrasePosition(phrase, id), symbolNow = store.handleOf({symbol});
      store.at(symbolNow)->symbolDownLink = phraseNow;
      static_cast<ZQMatrixElement*>(matrix->getMatrixData()[symbolNow])->setSymbolDownLinkHandle(phraseNow);
      select(id);
    }
  }
  void setNumberOfRoots(int count) {
    for (int id = store.maxNumberOfMatrices; id < count; ++id)
      store.block[static_cast<size_t>(id)] = std::make_unique<plain::Element>();
    store.maxNumberOfMatrices = count;
    store.infos.resize(static_cast<size_t>(count));
    models_.resize(static_cast<size_t>(count));
    matrix->setMaxNumberOfMatrices(count);
    compareMessages();
  }
  void setLevelUp(int id, int levelUp) {
    if constexpr (hasSymbols) {
      store.infos[static_cast<size_t>(id)].levelUp = levelUp;
      static_cast<ZQMatrixInfo*>(matrix->getMatrixInfoArray()[id])->setCurrentMatrixIDLevelUp(levelUp);
    }
  }
  void setLevelDown(int id, int levelDown) {
    if constexpr (hasSymbols) {
      static_cast<ZQMatrixInfo*>(matrix->getMatrixInfoArray()[id])->setCurrentMatrixIDLevelDown(levelDown);
    }
  }

  /// Every slot, counter and random state.
  void compare() {
    ASSERT_EQ(matrix->getMatrixBlockSize(), store.blockSize);
    EXPECT_EQ(matrix->getMatrixFileHeader()->getMatrixBlockSizeOld(), store.blockSizeOld);
    EXPECT_EQ(matrix->getMaximalStack(), store.maximalStack);
    ZQMatrixBaseElement** block = matrix->getMatrixData();
    for (int position = 0; position < store.blockSize; ++position) {
      const plain::Element* expected = store.at(position);
      ASSERT_EQ(block[position] != nullptr, expected != nullptr) << "occupation of slot " << position;
      if (expected == nullptr) continue;
      ASSERT_TRUE(Access::copyOf(block[position]) == *expected) << "record in slot " << position;
    }
    for (int id = 0; id < store.maxNumberOfMatrices; ++id) compareInfo(id);
    const zmatrix::ZQFreeSlotSearchState& search = zmatrix::freeSlotSearchState();
    EXPECT_EQ(search.firstFree, store.search.firstFree);
    EXPECT_EQ(search.numberOfFunctionCalls, store.search.numberOfFunctionCalls);
    EXPECT_EQ(search.lastOffset, store.search.lastOffset);
    EXPECT_EQ(search.goodStartIndex, store.search.goodStartIndex);
  }
  /// compare(), the invariants, the paths of the model, and the random generator, of which both sides draw once.
  void compareAll() {
    compare();
    EXPECT_EQ(zmatrix::brokenInvariant(*matrix), "");
    const int id = store.currentMatrixID;
    for (int each = 0; each < store.maxNumberOfMatrices && sound(); ++each) {
      select(each);
      EXPECT_EQ(static_cast<int>(model().paths.size()), store.info().elements);
      for (const auto& path : model().paths) read(path.first);
    }
    select(id);
    EXPECT_EQ(matrix->getSystemRandomValue(), store.systemRandomValue = plain::nextRandom(store.systemRandomValue));
  }

  /// The messages of both since the last call, without the lines that describe a path: the plain store prints none.
  void compareMessages() {
    std::string printed = messages_.take();
    for (size_t line = printed.find("M("); line != std::string::npos; line = printed.find("M(", line)) {
      printed.erase(line, printed.find('\n', line) + 1 - line);
    }
    EXPECT_EQ(printed, store.messages);
    store.messages.clear();
  }

  plain::Store store;
  Matrix* matrix;
  bool modelled = true;  // false where a map of all paths would be too slow

 protected:
  plain::Model& model() { return models_[static_cast<size_t>(store.currentMatrixID)]; }
  std::string takeMessages() { return messages_.take(); }

 private:
  // A write that stops at a coordinate beyond the limit leaves the elements created so far, without a write.
  void keepWalkedPath(zmatrix::Vector vector) {
    for (size_t i = 0; i < vector.size(); ++i) {
      if (std::abs(vector[i]) > store.info().maximalMatrixIndex) vector.resize(i);
    }
    for (; !vector.empty(); vector.pop_back()) model().paths[vector];
  }
  int phrasePosition(const zmatrix::Vector& phrase, int id) {
    const int remembered = store.currentMatrixID;
    store.currentMatrixID = id;
    const int position = store.handleOf(phrase);
    store.currentMatrixID = remembered;
    return position;
  }
  ZQMatrixMediumElement** mediumSlot(int position) {
    return reinterpret_cast<ZQMatrixMediumElement**>(matrix->getMatrixData() + position);
  }
  void compareInfo(int id) {
    const plain::Info& expected = store.infos[static_cast<size_t>(id)];
    auto* info = matrix->getMatrixInfoArray()[id];
    EXPECT_EQ(zmatrix::countersOf(*info), expected.counters()) << id;
    EXPECT_EQ(info->getCurrentDimension(), expected.currentDimension) << id;
    EXPECT_EQ(info->getInternalCurrentDimension(), expected.internalCurrentDimension) << id;
    for (int i = 0; i < expected.currentDimension; ++i) {
      EXPECT_EQ(info->getMinimalIndices()[i], expected.minimalIndices[static_cast<size_t>(i)]);
      EXPECT_EQ(info->getMaximalIndices()[i], expected.maximalIndices[static_cast<size_t>(i)]);
    }
    if constexpr (hasRules) {
      EXPECT_EQ(static_cast<ZQMatrixMediumInfo*>(info)->getNumberOfStartElements(), expected.startElements) << id;
    }
    if constexpr (hasSymbols) {
      EXPECT_EQ(static_cast<ZQMatrixInfo*>(info)->getNumberOfSymbols(), expected.symbols) << id;
      EXPECT_EQ(static_cast<ZQMatrixInfo*>(info)->getNewSymbol(), expected.newSymbol) << id;
    }
  }

  std::vector<plain::Model> models_{4};
  zmatrix::CapturedMessages messages_{1};
};
