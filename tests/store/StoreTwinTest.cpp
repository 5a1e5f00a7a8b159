// Random scripts of writes, deletes, reads, prunes and growth on the library and on the plain store, in all tiers, with each
// search method and in blocks of all sizes: every element must lie in the same slot.
#include "store/StoreTwin.h"

namespace {

using zmatrix::Vector;

/// The size of the block, and the vectors that a script writes.
struct Habit {
  int blockSize;
  int steps;
  int deepest;  // longest vector
  int narrow;   // most coordinates lie between -narrow and narrow
  int wide;     // one in eight vectors has coordinates up to this
  int compareEvery;
};

template <class Matrix>
class Script {
 public:
  Script(unsigned seed, const Habit& habit, const plain::SearchState& state = {})
      : twin(habit.blockSize, state), dice_(seed), habit_(habit) {
    twin.setLevelUp(0, 2);
    twin.setLevelUp(1, 3);
  }

  void useMethod(int method) {
    for (int id = 0; id < 4; ++id) twin.setMethod(id, method);
  }

  void run() {
    for (int step = 0; step < habit_.steps && twin.sound(); ++step) {
      SCOPED_TRACE("step " + std::to_string(step));
      if (dice_.oneIn(4)) twin.select(dice_.below(4));
      if (mixMethods && dice_.oneIn(9)) twin.setMethod(dice_.below(4), dice_.below(4));
      takeStep();
      if (step % habit_.compareEvery == 0) twin.compare();
      if (step % (64 * habit_.compareEvery) == 0) {
        EXPECT_EQ(zmatrix::brokenInvariant(*twin.matrix), "");
      }
    }
    if (twin.sound()) twin.compareAll();
  }

  StoreTwin<Matrix> twin;
  bool mixMethods = false;

 private:
  void takeStep() {
    const int choice = dice_.below(1000);
    if (choice < 620) return writeNew();
    if (choice < 770) return twin.remove(dice_.oneIn(8) ? randomVector() : writtenVector(), dice_.below(2));
    if (choice < 850) return twin.read(dice_.oneIn(3) ? randomVector() : writtenVector());
    if (choice < 900) return twin.compareHandles(writtenVector());
    if (choice < 960) return twin.linkSymbol(writtenVector());
    if (choice < 970) return writeReadOnly();
    if (choice < 980) return void(twin.write(tooLargeVector(), 1));
    if (choice < 988) return twin.remove(Vector(static_cast<size_t>(dice_.below(3)), 9999999), 0);
    if (choice < 993) return twin.cut(dice_.between(1, habit_.deepest));
    if (choice < 997) return twin.prune();
    if (choice < 999 && growths_++ < 2) return twin.expand(dice_.oneIn(2) ? 0 : twin.store.blockSize + dice_.below(9));
    void(twin.write({}, choice));
  }
  void writeNew() {
    // Suffixes of a vector are written too, so that shorter paths determine longer ones.
    const Vector vector = dice_.oneIn(3) ? writtenVector() : randomVector();
    const int marker = twin.store.currentMatrixID < 2 && dice_.oneIn(3) ? dice_.between(-1, 1) : 0;
    if (twin.write(vector, dice_.between(-1000000, 1000000) * 5000LL, dice_.oneIn(4), dice_.oneIn(4), marker)) remember(vector);
    if (!dice_.oneIn(3)) return;
    for (Vector rest(vector); rest.size() > 1;) {
      rest.erase(rest.begin());
      if (twin.write(rest, 1, 0, 0, 0)) remember(rest);
    }
  }
  void writeReadOnly() {
    twin.setReadOnly(1);
    twin.write(randomVector(), 1);
    twin.setReadOnly(0);
  }
  Vector randomVector() {
    const int reach = dice_.oneIn(8) ? habit_.wide : habit_.narrow;
    Vector vector(static_cast<size_t>(dice_.between(1, reach == habit_.wide ? 2 : habit_.deepest)));
    for (int& k : vector) k = dice_.between(-reach, reach);
    return vector;
  }
  Vector tooLargeVector() {
    Vector vector = randomVector();
    vector[static_cast<size_t>(dice_.below(static_cast<int>(vector.size())))] = dice_.oneIn(2) ? 500001 : -500001;
    return vector;
  }
  Vector writtenVector() {
    const std::vector<Vector>& own = written_[twin.store.currentMatrixID];
    if (own.empty()) return randomVector();
    Vector vector = own[static_cast<size_t>(dice_.below(static_cast<int>(own.size())))];
    if (dice_.oneIn(4)) vector.back() = dice_.between(-habit_.narrow, habit_.narrow);
    if (dice_.oneIn(4)) vector.push_back(dice_.between(-habit_.narrow, habit_.narrow));
    return vector;
  }
  void remember(const Vector& vector) { written_[twin.store.currentMatrixID].push_back(vector); }

  Dice dice_;
  Habit habit_;
  int growths_ = 0;
  std::vector<Vector> written_[4];
};

template <class Matrix>
class StoreTwinTest : public testing::Test {};
TYPED_TEST_SUITE(StoreTwinTest, zmatrix::Tiers);

/// Runs a script with each search method in each kind of block, and gives `look` the sums of the branch counters by method.
template <class Matrix, class Look>
void runWithEachMethod(unsigned seed, const std::vector<Habit>& habits, Look look) {
  for (int method = 0; method <= 3; ++method) {
    plain::Store sum(plain::Tier::base);
    for (const Habit& habit : habits) {
      SCOPED_TRACE("method " + std::to_string(method) + ", block " + std::to_string(habit.blockSize));
      Script<Matrix> script(seed++, habit);
      script.useMethod(method);
      script.run();
      if (!script.twin.sound()) return;
      sum.moves += script.twin.store.moves;
      sum.growthsInMove += script.twin.store.growthsInMove;
      sum.periodicScans += script.twin.store.periodicScans;
    }
    look(method, sum);
  }
}

// In blocks this small fields collide, reach beyond both ends, and make the block grow within searches and moves.
TYPED_TEST(StoreTwinTest, AgreesInSmallBlocks) {
  const std::vector<Habit> habits = {
      {64, 500, 5, 2, 20, 1}, {100, 500, 3, 6, 60, 1}, {64, 400, 2, 40, 150, 1}, {400, 500, 6, 3, 200, 1}, {10, 120, 4, 1, 6, 1}};
  runWithEachMethod<TypeParam>(1, habits, [](int method, const plain::Store& sum) {
    EXPECT_GT(sum.moves, 300);
    EXPECT_GT(sum.growthsInMove, 3);
    EXPECT_GT(sum.periodicScans, method == 3 ? 200 : -1);
  });
}

// Block sizes next to multiples of 64 and 4096, the regions of the index; packed so that searches pass many regions.
TYPED_TEST(StoreTwinTest, AgreesAtRegionBoundaries) {
  std::vector<Habit> habits;
  for (const int blockSize : {2531, 4095, 4096, 4097}) habits.push_back({blockSize, 2500, 6, 3, 700, 500});
  runWithEachMethod<TypeParam>(100, habits, [](int, const plain::Store& sum) { EXPECT_GT(sum.moves, 0); });
}

// Each of the four IDs has a method of its own, which changes during the script; the search starts in the state of a larger
// matrix.
TYPED_TEST(StoreTwinTest, AgreesWithMixedMethodsAndAnySearchState) {
  unsigned seed = 200;
  for (const plain::SearchState& state :
       {plain::SearchState{4, 0, 4, 4}, plain::SearchState{90000, 1020, 90000, 90000}, plain::SearchState{200, 700, 250, 100},
        plain::SearchState{0, 1024, -1, 0}, plain::SearchState{30, 5, 90000, 90000}}) {
    for (const int blockSize : {80, 700}) {
      SCOPED_TRACE("start " + std::to_string(state.firstFree) + ", block " + std::to_string(blockSize));
      Script<TypeParam> script(seed++, {blockSize, 900, 5, 3, 300, 4}, state);
      script.mixMethods = true;
      script.run();
      if (!script.twin.sound()) return;
    }
  }
}

// Interleaved fields of hundreds of elements: ties, moves of the smaller field, and both ends of the block.
TYPED_TEST(StoreTwinTest, AgreesOnWideFields) {
  for (int method = 0; method <= 3; ++method) {
    SCOPED_TRACE("method " + std::to_string(method));
    StoreTwin<TypeParam> twin(3000);
    Dice dice(static_cast<unsigned>(300 + method));
    for (int id = 0; id < 4; ++id) twin.setMethod(id, method);
    for (int i = 0; i < 3000 && twin.sound(); ++i) {
      const int parent = dice.below(7), stride = parent + 1;
      twin.select(parent % 2);
      twin.write({parent, dice.between(-250, 250) * stride}, i);
      if (dice.oneIn(5)) twin.write({parent, dice.between(-250, 250) * stride, dice.below(3)}, i);
      if (dice.oneIn(10)) twin.remove({parent, dice.between(-250, 250) * stride}, 0);
      if (i % 300 == 0) twin.compare();
    }
    if (twin.sound()) twin.compareAll();
    EXPECT_GT(twin.store.moves, 50);
  }
}

// A field is counted from any of its elements. The owner of an element is its parent's slot; a root has none.
TYPED_TEST(StoreTwinTest, CountsFieldsAndFindsOwners) {
  StoreTwin<TypeParam> twin(200);
  for (const int k : {5, -3, 9}) twin.write({7, k}, k);
  const int parent = twin.store.handleOf({7, 5}) + twin.store.at(twin.store.handleOf({7, 5}))->parent;
  const int first = twin.store.handleOf({7, -3}), last = twin.store.handleOf({7, 9});
  EXPECT_EQ(last - first, 12);
  ZQMatrixBaseElement** block = twin.matrix->getMatrixData();
  for (const int k : {-3, 5, 9}) {
    int foundFirst = 0, foundLast = 0;
    EXPECT_EQ(twin.matrix->getNumberOfItemsAndFirstLastElementsInSameDimension(first + 3 + k, &foundFirst, &foundLast), 3);
    EXPECT_EQ(foundFirst, first);
    EXPECT_EQ(foundLast, last);
    EXPECT_EQ(twin.matrix->getOwner(block + first + 3 + k), block + parent);
  }
  EXPECT_EQ(twin.matrix->getOwner(block), nullptr);
  EXPECT_EQ(twin.matrix->getOwner(block + last + 1), nullptr);
}

// More roots reserve more slots at the begin of the block.
TYPED_TEST(StoreTwinTest, AgreesWithMoreRoots) {
  StoreTwin<TypeParam> twin(90);
  twin.setNumberOfRoots(7);
  Dice dice(9);
  for (int step = 0; step < 600 && twin.sound(); ++step) {
    twin.select(dice.below(7));
    twin.setMethod(dice.below(7), dice.below(4));
    twin.write({dice.between(-9, 9), dice.between(-40, 40)}, step);
    if (dice.oneIn(4)) twin.remove({dice.between(-9, 9), dice.between(-40, 40)}, 0);
    twin.compare();
  }
  if (twin.sound()) twin.compareAll();
}

/// Writes all phrases of the items, shortest first, deletes some of them and writes half of those again.
template <class Matrix>
void learnAndForget(StoreTwin<Matrix>& twin, Dice& dice, const Vector& items, int c, int longest) {
  const int length = static_cast<int>(items.size());
  std::vector<Vector> forgotten;
  twin.modelled = false;
  const auto phrase = [&](int start, int end) { return Vector(items.begin() + start, items.begin() + end); };
  for (int l = c; l <= longest * c; l += c) {
    for (int start = 0; start + l <= length && twin.sound(); start += c) twin.write(phrase(start, start + l), l);
    twin.compare();
  }
  for (int i = 0; i < length && twin.sound(); ++i) {
    const int start = dice.below(length / c - longest) * c;
    forgotten.push_back(phrase(start, start + dice.between(1, longest) * c));
    twin.remove(forgotten.back(), 1);
  }
  for (size_t i = 0; i < forgotten.size() && twin.sound(); i += 2) twin.write(forgotten[i], 1);
  twin.compare();
  EXPECT_EQ(zmatrix::brokenInvariant(*twin.matrix), "");
}

/// learnAndForget() with each search method, on as many items as the slower methods allow.
template <class Matrix, class AddItem>
void learnAndForgetByEachMethod(unsigned seed, int blockSize, const Vector& numbersOfItems, int c, int longest, AddItem addItem) {
  for (int method = 0; method <= 3; ++method) {
    SCOPED_TRACE("method " + std::to_string(method));
    StoreTwin<Matrix> twin(blockSize);
    Dice dice(seed + static_cast<unsigned>(method));
    twin.setMethod(0, method);
    Vector items;
    for (int i = 0; i < numbersOfItems[static_cast<size_t>(method)]; ++i) addItem(items, dice);
    learnAndForget(twin, dice, items, c, longest);
    if (!twin.sound()) return;
  }
}

// A text makes ten thousands of narrow fields.
TYPED_TEST(StoreTwinTest, AgreesOnPhrasesOfAText) {
  learnAndForgetByEachMethod<TypeParam>(500, 500, {4000, 12000, 3000, 1000}, 1, 8, [](Vector& text, Dice& dice) {
    text.push_back(97 + dice.below(1 + dice.below(1 + dice.below(26))));
  });
}

// Notes, times and durations: the times make fields of few elements at hundreds of different distances.
TYPED_TEST(StoreTwinTest, AgreesOnPhrasesOfWideItems) {
  learnAndForgetByEachMethod<TypeParam>(600, 3000, {5000, 5000, 2000, 600}, 3, 3, [](Vector& notes, Dice& dice) {
    for (const int k : {dice.between(-12, 12), dice.below(640) * 19, dice.between(1, 40) * 96}) notes.push_back(k);
  });
}

// About 80,000 packed elements, then each method in turn: periodic scans deep inside the block, growth at nine tenths of it,
// holes left by deletes, and fields of few distant elements, whose search for room is long.
TEST(StoreTwinLargeTest, AgreesInAPackedBlock) {
  constexpr int parents = 260, children = 300;
  StoreTwin<ZQMatrixMedium> twin(parents * children * 53 / 50);
  Dice dice(400);
  twin.modelled = false;
  for (int p = 0; p < parents; ++p) twin.write({p}, p);
  for (int p = 0; p < parents && twin.sound(); ++p) {
    for (int k = 0; k < children; ++k) twin.write({p, k + k / 30}, k);
  }
  for (const int method : {3, 2, 0, 1}) {
    SCOPED_TRACE("method " + std::to_string(method));
    twin.setMethod(0, method);
    for (int i = 0; i < 1000 && twin.sound(); ++i) {
      const int p = dice.below(parents), k = dice.below(children);
      twin.write({p, k, dice.between(-2, 2)}, i);
      if (dice.oneIn(3)) twin.write({p, k, dice.between(250, 250 + 4 * i)}, i);
      if (dice.oneIn(10)) twin.write({p, dice.below(2 * children)}, i);
      if (dice.oneIn(10)) twin.remove({p, dice.below(children)}, 0);
    }
    if (!twin.sound()) return;
    twin.compare();
  }
  EXPECT_GT(twin.store.growths, 0);
  EXPECT_EQ(zmatrix::brokenInvariant(*twin.matrix), "");
}

}  // namespace
