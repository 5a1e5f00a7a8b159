// Random scripts of writes, deletes, prunes and clears in four sub-matrices, in all tiers. After each step the counts of both
// self-tests must equal those of a map of paths, and the block must be unchanged.
#include <algorithm>
#include <cmath>
#include <iterator>
#include <map>

#include "store/StoreTwin.h"

namespace {

using zmatrix::Vector;

/// The counts that a self-test must find in one sub-matrix, computed from the paths alone.
struct Recount {
  int written = 0, ends = 0, starts = 0, sum = 0, rules = 0, unique = 0, overDetermined = 0;
  Vector writtenOfLength = Vector(40), rulesOfLength = Vector(40), uniqueOfLength = Vector(40);
};

class PathCounter {
 public:
  PathCounter(const plain::Model& model, int rootCount) : model_(model), rootCount_(rootCount) {}

  Recount count() const {
    Recount result;
    for (const auto& [path, counts] : model_.paths) {
      if (counts.writeCount < 1) continue;
      ++result.written;
      ++result.writtenOfLength[path.size() - 1];
      result.sum += counts.writeCount;
      if (!model_.hasChildren(path)) ++result.ends;
      if (counts.withoutPredecessor > 0) ++result.starts;
      const int determined = timesDetermined(path);
      if (determined > 0) ++result.unique, ++result.uniqueOfLength[path.size() - 1];
      if (determined > 1) ++result.overDetermined;
      const int contextCount = path.size() == 1 ? rootCount_ : model_.find({path.begin(), path.end() - 1})->withSuccessor;
      if (contextCount < 1 || counts.writeCount > contextCount) continue;
      ++result.rules;
      ++result.rulesOfLength[path.size() - 1];
    }
    return result;
  }

 private:
  bool isWritten(const Vector& path) const {
    const plain::Model::Counts* counts = model_.find(path);
    return counts != nullptr && (counts->writeCount > 0 || !model_.hasChildren(path));
  }
  bool hasSiblings(Vector path) const {
    const auto isSibling = [&path](const Vector& other) {
      return other.size() == path.size() && other.back() != path.back() &&
             std::equal(path.begin(), path.end() - 1, other.begin());
    };
    return std::any_of(model_.paths.begin(), model_.paths.end(), [&](const auto& entry) { return isSibling(entry.first); });
  }
  /// How many suffixes, from the longest on, have always been continued by the path's last item.
  int timesDetermined(const Vector& path) const {
    int times = 0;
    double stopOfWhole = 0;
    for (size_t i = 0; i + 1 < path.size(); ++i) {
      const Vector suffix(path.begin() + static_cast<long>(i), path.end());
      if (!isWritten(suffix)) continue;
      const plain::Model::Counts& counts = *model_.find(suffix);
      const double stop = static_cast<double>(counts.writeCount - counts.withSuccessor) / counts.writeCount;
      if (i == 0) stopOfWhole = stop;
      if (hasSiblings(suffix) || std::fabs(stop - stopOfWhole) > 1e-9) return times;
      ++times;
    }
    return times;
  }

  const plain::Model& model_;
  int rootCount_;
};

template <class Matrix>
class CheckedTwin : public StoreTwin<Matrix> {
 public:
  using Twin = StoreTwin<Matrix>;
  using Twin::matrix, Twin::store;

  explicit CheckedTwin(int blockSize) : Twin(blockSize) {
    for (const int id : {0, 1}) {
      this->setLevelUp(id, id + 2);
      this->setLevelDown(id + 2, id);
    }
  }

  /// Runs both self-tests on the current sub-matrix.
  void selfTest(bool walkFirst) {
    const bool isEmpty = store.at(store.currentMatrixID)->child == 0 || store.info().currentDimension == 0;
    const Recount expected = PathCounter(this->model(), store.at(store.currentMatrixID)->withSuccessor).count();
    const int sound = isEmpty ? -1 : isSound(expected) ? 1 : 0;
    ++(sound == 1 ? soundTests : otherTests);
    for (const bool walk : {walkFirst, !walkFirst}) {
      SCOPED_TRACE(walk ? "walk" : "scan");
      int written = -1, ends = -1;
      EXPECT_EQ(matrix->perform1stMemoryTest(walk ? 2 : 1, &written, &ends, 0), sound) << this->takeMessages();
      EXPECT_EQ(written, isEmpty ? 0 : expected.written);
      EXPECT_EQ(ends, isEmpty ? 0 : expected.ends);
      if (!isEmpty) compareCounters(expected);
    }
    this->takeMessages();
    this->compare();
  }

  /// Adds to the root's count of fed items, as learning does.
  void countItems(int count) {
    if constexpr (Twin::hasRules) {
      const int id = store.currentMatrixID;
      store.at(id)->withSuccessor += count;
      static_cast<ZQMatrixMediumElement*>(matrix->getMatrixData()[id])->addWriteCountWithSuccessor(count);
    }
  }
  const plain::Model& paths() { return this->model(); }
  int soundTests = 0, otherTests = 0, driftedSums = 0, linkedSymbols = 0;

 private:
  /// Drifted counters are faults, that of end elements only in the base tier. Symbols must link to their phrase and back.
  bool isSound(const Recount& expected) {
    const bool hasEnds = Twin::hasRules || store.info().endElements == expected.ends;
    return hasEnds && store.info().writeElements == expected.written && (!Twin::hasSymbols || linksAreSound());
  }
  bool linksAreSound() {
    const int id = store.currentMatrixID;
    bool areSound = true;
    for (int position = store.maxNumberOfMatrices; position <= store.maximalStack; ++position) {
      const plain::Element* element = store.at(position);
      if (element == nullptr || element->writeCount < 1 || rootOf(position) != id) continue;
      if (element->symbolID > 0 && id < 2) areSound = symbolLeadsTo(position) && areSound;
      if (element->symbolDownLink != 0) areSound = id >= 2 && linkLeadsToSymbolOf(*element) && areSound;
    }
    return areSound;
  }
  bool symbolLeadsTo(int position) {
    const int id = store.currentMatrixID, levelUp = store.info().levelUp;
    if (levelUp < 0) return true;  // after a clear, only a warning
    store.currentMatrixID = levelUp;
    const int symbolElement = store.handleOf({store.at(position)->symbolID});
    store.currentMatrixID = id;
    if (symbolElement < 0 || store.at(symbolElement)->symbolDownLink != position) return false;
    ++linkedSymbols;
    return true;
  }
  bool linkLeadsToSymbolOf(const plain::Element& element) {
    const int link = element.symbolDownLink;
    if (static_cast<ZQMatrixInfo*>(matrix->getMatrixInfo())->getCurrentMatrixIDLevelDown() < 0) return false;
    if (link < store.maxNumberOfMatrices || link > store.maximalStack || store.at(link) == nullptr) return false;
    return store.at(link)->symbolID == element.index;
  }
  int rootOf(int position) const {
    while (position >= store.maxNumberOfMatrices) position += store.at(position)->parent;
    return position;
  }

  /// The self-tests correct the sum, and from the medium tier up the end elements; all other counters must be right before.
  void compareCounters(const Recount& expected) {
    if (store.info().writeCounts != expected.sum) ++driftedSums;
    store.info().writeCounts = expected.sum;
    if constexpr (Twin::hasRules) {
      store.info().endElements = expected.ends;
      ZQMatrixMediumInfo& info = *matrix->getMatrixInfo();
      EXPECT_EQ(info.getNumberOfStartElements(), expected.starts);
      EXPECT_EQ(info.getNumberOfRuleElements(), expected.rules);
      EXPECT_EQ(info.getNumberOfUniqueRuleElements(), expected.unique);
      EXPECT_EQ(info.getNumberOfOverDeterminedRules(), expected.overDetermined);
      int size = 0;
      for (const auto& [found, counts] : {std::pair{info.getWriteElementsInDimension(&size), expected.writtenOfLength},
                                          {info.getRulesInDimension(&size), expected.rulesOfLength},
                                          {info.getUniqueRulesInDimension(&size), expected.uniqueOfLength}}) {
        for (int i = 0; i < std::min(size, 40); ++i) EXPECT_EQ(found[i], counts[static_cast<size_t>(i)]) << i;
      }
    }
  }
};

template <class Matrix>
class SelfTestScript {
 public:
  explicit SelfTestScript(unsigned seed) : twin(120), dice_(seed) {
    for (int id = 0; id < 4; ++id) twin.setMethod(id, static_cast<int>(seed) % 4);
  }

  void run(int steps) {
    for (int step = 0; step < steps && twin.sound(); ++step) {
      SCOPED_TRACE("step " + std::to_string(step));
      if (dice_.oneIn(4)) twin.select(dice_.below(4));
      takeStep();
      if (!twin.sound()) return;
      twin.selfTest(dice_.oneIn(2));
      EXPECT_EQ(zmatrix::brokenInvariant(*twin.matrix), "");
    }
  }

  CheckedTwin<Matrix> twin;
  int prunedLeaves = 0;

 private:
  void takeStep() {
    const int choice = dice_.below(100);
    if (choice < 40) return learnPhrases();
    if (choice < 50) return void(twin.write(randomPath(), choice));
    if (choice < 60) return linkSymbols();
    if (choice < 85) return remove(dice_.oneIn(5) ? randomPath() : somePath());
    if (choice < 90) return prune();
    if (choice < 95) return twin.cut(dice_.between(1, 4));
    return twin.clear(dice_.below(4));
  }
  /// Writes each phrase of a few random items, so that there are rules, some determined by shorter ones.
  void learnPhrases() {
    const Vector items = randomPath();
    const bool isBasicLevel = twin.store.currentMatrixID < 2;
    twin.countItems(static_cast<int>(items.size()));
    for (size_t begin = 0; begin < items.size(); ++begin) {
      for (size_t end = begin + 1; end <= items.size(); ++end) {
        const int marker = isBasicLevel && begin == 0 && end == items.size() ? 1 : 0;
        twin.write({items.begin() + static_cast<long>(begin), items.begin() + static_cast<long>(end)}, static_cast<int>(end),
                   begin == 0, end == items.size(), marker);
      }
    }
  }
  void linkSymbols() {
    const std::map<Vector, plain::Model::Counts> paths = twin.paths().paths;
    for (const auto& entry : paths) twin.linkSymbol(entry.first);
  }
  void remove(const Vector& path) {
    // Deleting a leaf without a write, as a cut leaves them, lowers the counters all the same; the self-tests report that from
    // then on.
    const plain::Model::Counts* counts = twin.paths().find(path);
    const bool isLeafWithoutWrite = counts != nullptr && counts->writeCount == 0 && !twin.paths().hasChildren(path);
    if (!isLeafWithoutWrite || dice_.oneIn(10)) twin.remove(path, dice_.below(2));
  }
  void prune() {
    const size_t before = twin.paths().paths.size();
    twin.prune();
    prunedLeaves += static_cast<int>(before - twin.paths().paths.size());
  }
  Vector randomPath() {
    Vector vector(static_cast<size_t>(dice_.between(1, 5)));
    const int reach = dice_.oneIn(6) ? 40 : 3;
    for (int& k : vector) k = dice_.between(-reach, reach);
    return vector;
  }
  Vector somePath() {
    const auto& paths = twin.paths().paths;
    if (paths.empty()) return randomPath();
    return std::next(paths.begin(), dice_.below(static_cast<int>(paths.size())))->first;
  }

  Dice dice_;
};

template <class Matrix>
class VerificationScriptTest : public testing::Test {};
TYPED_TEST_SUITE(VerificationScriptTest, zmatrix::Tiers);

TYPED_TEST(VerificationScriptTest, CountsEqualThoseOfThePaths) {
  using Twin = StoreTwin<TypeParam>;
  int sound = 0, other = 0, drifted = 0, linked = 0, moves = 0, pruned = 0;
  for (unsigned seed = 0; seed < 12; ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    SelfTestScript<TypeParam> script(seed);
    script.run(120);
    if (!script.twin.sound()) return;
    sound += script.twin.soundTests;
    other += script.twin.otherTests;
    drifted += script.twin.driftedSums;
    linked += script.twin.linkedSymbols;
    moves += script.twin.store.moves;
    pruned += script.prunedLeaves;
  }
  EXPECT_GT(sound, 500) << other;
  EXPECT_GT(other, 20);
  EXPECT_GT(drifted, 5);
  EXPECT_GT(moves, 500);
  EXPECT_GE(pruned, Twin::hasRules ? 100 : 0);
  EXPECT_GE(linked, Twin::hasSymbols ? 100 : 0);
}

}  // namespace
