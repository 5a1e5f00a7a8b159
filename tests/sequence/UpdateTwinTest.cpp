// Learning and generation compared with the plain reference: random sequences over small alphabets, whose phrases are skipped,
// post-written and overwritten, then pruned, then continued by each method with the same random draws.
#include "store/StoreTwin.h"
#include "support/PlainSequence.h"

namespace {

using zmatrix::Vector;

struct Habit {
  int c;
  int includeOverdeterminedRules;
  int useStart;
  int useEnd;
  int maxPhraseLength;
  int preProcessingType;
  int matrixType;
};

template <class Matrix>
class SequenceTwin : public StoreTwin<Matrix> {
 public:
  using Info = std::conditional_t<StoreTwin<Matrix>::hasSymbols, ZQMatrixInfo, ZQMatrixMediumInfo>;
  using StoreTwin<Matrix>::store;
  using StoreTwin<Matrix>::matrix;

  SequenceTwin(const Habit& habit, int method) : StoreTwin<Matrix>(200), habit_(habit) {
    this->modelled = habit.includeOverdeterminedRules == 1;
    for (int id = 0; id < 2; ++id) {
      this->setMethod(id, method);
      store.infos[static_cast<size_t>(id)].coordinateDimension = habit.c;
      const auto set = [&](int plain::Sequence::*plainSetting, auto setter, int value) {
        sequences_[id].*plainSetting = value;
        (infoOf(id)->*setter)(value);
      };
      set(&plain::Sequence::matrixType, &Info::setMatrixType, habit.matrixType);
      infoOf(id)->setCoordinateDimension(habit.c);
      infoOf(id)->setIsPhraseMatrix(1);
      set(&plain::Sequence::preProcessingType, &Info::setPreProcessingType, habit.preProcessingType);
      set(&plain::Sequence::includeOverdeterminedRules, &Info::setIncludeOverdeterminedRules, habit.includeOverdeterminedRules);
      set(&plain::Sequence::useStartOfSequence, &Info::setUseStartOfSequence, habit.useStart);
      set(&plain::Sequence::useEndOfSequence, &Info::setUseEndOfSequence, habit.useEnd);
      set(&plain::Sequence::maxPhraseLength, &Info::setMaxPhraseLengthForUpdateWithSequence, habit.maxPhraseLength);
    }
  }

  plain::Sequence& sequence() { return sequences_[store.currentMatrixID]; }
  Info* info() { return infoOf(store.currentMatrixID); }

  void learn(Vector items) {
    const plain::Update expected = sequence().update(items);
    int processed = -1, overwrites = -1;
    int *values = nullptr, *lengths = nullptr, **vectors = nullptr;
    EXPECT_EQ(updateLibrary(items, &processed, &overwrites, &values, &lengths, &vectors), expected.result);
    EXPECT_EQ(processed, expected.numberOfProcessedVectors);
    EXPECT_EQ(overwrites, expected.numberOfOverwrites);
    ASSERT_TRUE(processed == 0 || (values != nullptr && lengths != nullptr && vectors != nullptr));
    for (int i = 0; i < processed && this->sound(); ++i) {
      const Vector& vector = expected.indexVectors[static_cast<size_t>(i)];
      EXPECT_EQ(values[i], expected.values[static_cast<size_t>(i)]);
      EXPECT_EQ(lengths[i], expected.lengths[static_cast<size_t>(i)]);
      EXPECT_EQ(Vector(vectors[i], vectors[i] + vector.size()), vector);
      if (habit_.includeOverdeterminedRules == 1)
        this->model().write(vector, values[i], i == 0 && habit_.useStart, endsSequence(expected, i));
    }
    for (int i = 0; i < processed; ++i) matrix->mFree(vectors[i]);
    for (void* array : {static_cast<void*>(values), static_cast<void*>(lengths), static_cast<void*>(vectors)})
      matrix->mFree(array);
    this->compareMessages();
    this->compare();
    if (habit_.includeOverdeterminedRules == 1 && this->sound()) this->compareAll();
  }

  void startKernel(Vector items, int setInitialValues) {
    if (StoreTwin<Matrix>::hasSymbols && matrix->getHighestOccupiedMatrixID() < store.currentMatrixID) {
      startKernelOfUnwrittenSubMatrix(items, setInitialValues);
      return;
    }
    const int expected = sequence().initializeKernelWithOriginal(items, setInitialValues);
    EXPECT_EQ(
        matrix->initializeKernelSequenceWithOriginalSequence(items.data(), static_cast<int>(items.size()), setInitialValues),
        expected);
    compareKernel();
  }
  /// The full tier finds no level if this sub-matrix and those with higher IDs are empty.
  void startKernelOfUnwrittenSubMatrix(const Vector& items, int setInitialValues) {
    store.messages += "initializeKernelSequenceWithOriginalSequence: error: matrix does not contain symbol sub-matrix with id " +
                      std::to_string(store.currentMatrixID) + " for level 0!\n";
    EXPECT_EQ(
        matrix->initializeKernelSequenceWithOriginalSequence(items.data(), static_cast<int>(items.size()), setInitialValues), -1);
    compareKernel();
  }
  void resetKernel(int resetInitialValues) {
    EXPECT_EQ(matrix->resetKernelSequence(resetInitialValues), sequence().resetKernel(resetInitialValues));
    compareKernel();
  }
  void generate(int items) {
    for (int i = 0; i < items && this->sound(); ++i) {
      SCOPED_TRACE("item " + std::to_string(i));
      double probability = -1, stopProbability = -1;
      int handle = -7;
      const plain::Item expected = sequence().readObjex();
      const int* item = matrix->readObjexAndHandleFromMatrix(&probability, &stopProbability, &handle);
      compareItem(expected, item, probability, stopProbability, handle);
    }
  }
  void lookAtSuccessors() {
    for (int index = 0; index < 3 && this->sound(); ++index) {
      double probability = -1, stopProbability = -1;
      int handle = -7;
      const int updateKernel = index == 2;
      const plain::Item expected = sequence().readObjexForSuccessorIndex(index % 2, updateKernel);
      const int* item =
          matrix->readObjexAndHandleFromMatrixForSuccessorIndex(index % 2, updateKernel, &probability, &stopProbability, &handle);
      compareItem(expected, item, probability, stopProbability, handle);
    }
  }
  /// Deletes and writes random phrases, then sets the kernel to its old items and one more.
  void changeAndContinue(Dice& dice, const Vector& item) {
    const plain::Sequence& now = sequence();
    Vector context(now.kernelOriginal.begin(), now.kernelOriginal.begin() + now.lengthOfKernelOriginal * habit_.c);
    for (int i = 0; i < 4; ++i) {
      const int position = dice.below(store.maximalStack + 1);
      Vector path = store.at(position) != nullptr ? store.path(position) : Vector();
      if (path.empty()) continue;
      if (dice.oneIn(2)) {
        this->remove(path, dice.below(2));
      } else {
        this->write(path, 1, 0, dice.below(2));
      }
    }
    context.insert(context.end(), item.begin(), item.end());
    startKernel(context, 0);
  }
  void setReadOut(int method, int enableStopItem, int restartWithTrueStartItem, int skill) {
    sequence().successorMethod = method;
    sequence().enableStopItem = enableStopItem;
    sequence().restartWithTrueStartItem = restartWithTrueStartItem;
    sequence().skillOutputLevel = skill < 0 || skill > habit_.maxPhraseLength ? habit_.maxPhraseLength : skill;
    info()->setSuccessorMethod(method);
    info()->setEnableStopItem(enableStopItem);
    info()->setRestartWithTrueStartItem(restartWithTrueStartItem);
    info()->setSkillOutputLevel(skill);
  }

 private:
  Info* infoOf(int id) { return static_cast<Info*>(matrix->getMatrixInfoArray()[id]); }

  int updateLibrary(Vector& items, int* processed, int* overwrites, int** values, int** lengths, int*** vectors) {
    const int length = static_cast<int>(items.size());
    if constexpr (StoreTwin<Matrix>::hasSymbols) {
      return matrix->updateMatrixWithCombinedSequenceDebug(items.data(), length, habit_.matrixType, habit_.c,
                                                           habit_.preProcessingType, 0, nullptr, processed, overwrites, values,
                                                           lengths, vectors);
    } else {
      return matrix->updateMatrixWithCombinedSequenceDebug(items.data(), length, habit_.matrixType, habit_.c,
                                                           habit_.preProcessingType, 0, processed, overwrites, values, lengths,
                                                           vectors);
    }
  }
  bool endsSequence(const plain::Update& update, int number) const {
    const auto i = static_cast<size_t>(number);
    return habit_.useEnd && (i + 1 == update.lengths.size() || update.values[i + 1] != update.values[i]);
  }
  void compareItem(const plain::Item& expected, const int* item, double probability, double stopProbability, int handle) {
    ASSERT_EQ(item != nullptr, !expected.coordinates.empty());
    if (item != nullptr) {
      EXPECT_EQ(Vector(item, item + habit_.c), expected.coordinates);
    }
    EXPECT_DOUBLE_EQ(probability, expected.probability);
    EXPECT_DOUBLE_EQ(stopProbability, expected.stopProbability);
    EXPECT_EQ(handle, expected.handle);
    compareKernel();
  }
  void compareKernel() {
    const plain::Sequence& expected = sequence();
    EXPECT_EQ(info()->getKernelMatrixHandle(), expected.kernelMatrixHandle);
    EXPECT_EQ(info()->getLengthOfKernelOriginalSequence(), expected.lengthOfKernelOriginal);
    EXPECT_EQ(info()->getLengthOfKernelPreProcessedSequence() * habit_.c, static_cast<int>(expected.kernelPreProcessed.size()));
    int length = 0, c = 0;
    int* flat = info()->getKernelPreProcessedSequenceIndexVector(&length, &c);
    EXPECT_EQ(Vector(flat, flat + length), expected.kernelPreProcessed);
    matrix->mFree(flat);
    flat = info()->getKernelOriginalSequenceFlatIndexVector(&length, &c);
    const auto begin = expected.kernelOriginal.begin();
    EXPECT_EQ(Vector(flat, flat + length), Vector(begin, begin + expected.lengthOfKernelOriginal * habit_.c));
    matrix->mFree(flat);
    EXPECT_EQ(info()->getActualSuccessorRandomValue(), expected.successorRandomValue);
    EXPECT_EQ(matrix->getMatrixFileHeader()->getStopFlags()[store.currentMatrixID], expected.stopFlag);
    this->compareMessages();
  }

  Habit habit_;
  plain::Sequence sequences_[2] = {{store, 0}, {store, 1}};
};

template <class Matrix>
class UpdateTwinTest : public testing::Test {
 public:
  static Vector randomItems(Dice& dice, const Habit& habit, int items) {
    Vector sequence(static_cast<size_t>(items * habit.c));
    const int alphabet = habit.c == 1 ? dice.between(2, 4) : 2;
    for (int& k : sequence) k = habit.matrixType == 3 ? "ab .c"[dice.below(alphabet + 1)] : dice.below(alphabet) - 1;
    return sequence;
  }
  static void generateByEveryMethod(SequenceTwin<Matrix>& twin, Dice& dice, const Habit& habit) {
    if (twin.store.info().writeElements == 0) return;
    if (twin.sequence().lengthOfKernelOriginal < habit.preProcessingType) twin.resetKernel(dice.below(2));
    for (int variant = 0; variant < 12 && twin.sound(); ++variant) {
      const int method = variant % 3 + 1, stop = variant / 3 % 2;
      const int restart = variant / 6;
      SCOPED_TRACE("method " + std::to_string(method) + ", stop " + std::to_string(stop) + ", restart " +
                   std::to_string(restart));
      twin.setReadOut(method, stop, restart, dice.oneIn(3) ? dice.below(habit.maxPhraseLength + 2) : -1);
      if (variant % 4 == 1) twin.resetKernel(dice.below(2));
      twin.startKernel(randomItems(dice, habit, dice.between(0, 9)), dice.below(2));
      twin.lookAtSuccessors();
      twin.generate(8);
      twin.changeAndContinue(dice, randomItems(dice, habit, 1));
      twin.generate(4);
    }
  }
};
TYPED_TEST_SUITE(UpdateTwinTest, zmatrix::LearningTiers);

TYPED_TEST(UpdateTwinTest, AgreesOnLearningPruningAndGenerating) {
  int skips = 0, postWrites = 0;
  for (unsigned seed = 0; seed < 160; ++seed) {
    Dice dice(seed);
    const int c = seed % 4 == 3 ? 3 : seed % 4 == 2 ? 2 : 1;
    const int type = seed % 5 == 4 ? dice.between(1, 3) : 0;
    const int phraseLengths[] = {1, 2, 3, 5, 8, 64};
    const Habit habit{c,
                      dice.oneIn(3),
                      dice.below(2),
                      dice.below(2),
                      phraseLengths[dice.below(6)],
                      type,
                      c == 1 && type == 0 && dice.oneIn(2) ? 3 : 2};
    SCOPED_TRACE("seed " + std::to_string(seed) + ", c " + std::to_string(c) + ", type " + std::to_string(type));
    SequenceTwin<TypeParam> twin(habit, dice.below(4));
    for (int feed = 0; feed < 4 && twin.sound(); ++feed) {
      SCOPED_TRACE("feed " + std::to_string(feed));
      twin.select(dice.oneIn(4));
      twin.learn(this->randomItems(dice, habit, dice.oneIn(6) ? dice.between(1, 3) : dice.between(4, 40)));
      if (!twin.sound()) return;
      EXPECT_EQ(zmatrix::brokenInvariant(*twin.matrix), "");
      if (feed % 2 == 0) this->generateByEveryMethod(twin, dice, habit);
      if (feed == 2) twin.prune();
      if (feed == 2 && dice.oneIn(3)) twin.cut(dice.between(1, 3) * c);
      if (twin.sound()) twin.compare();
    }
    if (!twin.sound()) return;
    this->generateByEveryMethod(twin, dice, habit);
    for (int id = 0; id < 2; ++id) {
      twin.select(id);
      skips += twin.sequence().skips;
      postWrites += twin.sequence().postWrites;
    }
    if (!twin.sound()) return;
  }
  EXPECT_GT(skips, 1000);
  EXPECT_GT(postWrites, 100);
}

// Longer sequences, learned alternately in two sub-matrices, so that fields move during a pass and the block grows several times.
TYPED_TEST(UpdateTwinTest, AgreesOnLongSequences) {
  for (int method = 0; method <= 3; ++method) {
    for (const int c : {1, 3}) {
      SCOPED_TRACE("method " + std::to_string(method) + ", c " + std::to_string(c));
      const Habit habit{c, method % 2, 1, 1, 9, 0, 2};
      SequenceTwin<TypeParam> twin(habit, method);
      Dice dice(static_cast<unsigned>(900 + method));
      for (int feed = 0; feed < 4 && twin.sound(); ++feed) {
        twin.select(feed % 2);
        Vector items(static_cast<size_t>((method == 3 ? 150 : 350) * c));
        for (int& k : items) k = dice.below(1 + dice.below(60)) * (feed + 1);
        twin.learn(items);
      }
      if (!twin.sound()) return;
      this->generateByEveryMethod(twin, dice, habit);
    }
  }
}

// Large indices force dimension 2, so five integers are two items.
TEST(SequenceUpdateTest, LearnsItemsOfTheDimensionThatLargeIndicesForce) {
  ZQMatrixMedium* matrix = createAndInitMatrixMedium();
  const Vector sequence = {1, 2, 3, 4, 5};
  EXPECT_EQ(matrix->updateMatrixWithCombinedSequence(sequence.data(), 5, ZQMatrixTypeIntegerSeries, 1, 0, 1), 1);
  EXPECT_EQ(matrix->getMatrixInfo()->getCoordinateDimension(), 2);
  EXPECT_EQ(static_cast<ZQMatrixMediumElement*>(matrix->elementAt(0))->getWriteCountWithSuccessor(), 2);
  deleteMatrixMedium(matrix);
}

}  // namespace
