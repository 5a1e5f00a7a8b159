// Preprocessing on a matrix: flat and objex sequences, the inverse of whole sequences, and the levels of index vectors.
#include <iterator>
#include <memory>

#include "sequence/ZQMatrixSequenceIndexVector.h"
#include "support/Account.h"
#include "support/TierTest.h"

using zmatrix::systemFree;

namespace {

using zmatrix::taken;
using zmatrix::Vector;
using OwnedVector = std::unique_ptr<ZQMatrixSequenceIndexVector, void (*)(ZQMatrixSequenceIndexVector*)>;

class MediumPreprocessingTest : public zmatrix::TierTest<ZQMatrixMedium> {
 public:
  MediumPreprocessingTest() { zmatrix::ZQDebugChannel::globalDebugLevel = 0; }

  void use(int coordinateDimension, int preProcessingType) {
    info()->setCoordinateDimension(coordinateDimension);
    info()->setPreProcessingType(preProcessingType);
  }
  Vector dataOf(const ZQMatrixSequenceIndexVector* vector) const {
    return {vector->getIndexVector(), vector->getIndexVector() + vector->getLengthOfIndexVector()};
  }

  /// The flat inverse, in place in `start`, which has room for `capacity` integers, or in a new array.
  Vector inverse(Vector start, int capacity, const Vector& preProcessed, int inPlace) {
    const int lengthOfStart = static_cast<int>(start.size());
    start.resize(static_cast<size_t>(std::max(capacity, lengthOfStart)), -9);
    int resultLength = -7;
    int* result =
        matrix->getOriginalSequenceFromPreProcessedSequence(start.data(), lengthOfStart, capacity, preProcessed.data(),
                                                            static_cast<int>(preProcessed.size()), &resultLength, inPlace);
    if (result == nullptr) {
      EXPECT_EQ(resultLength, 0);
      return {};
    }
    EXPECT_EQ(result == start.data(), inPlace == 1);
    const Vector numbers(result, result + resultLength);
    if (result != start.data()) systemFree(result);
    return numbers;
  }

  int length = -7, count = -7;
};

TEST_F(MediumPreprocessingTest, TakesItsSettingsFromTheCurrentSubMatrix) {
  using LongNumbers = std::vector<long long>;
  const int items[] = {60, 0, 62, 9216};
  const long long large[] = {1LL << 40, 0};
  use(2, 1002);
  info()->setMidiTimeSignatureNom(3);
  EXPECT_EQ(taken(matrix->getPreProcessedSequenceFromOriginalSequence(items, 4, &length), length), (Vector{127, 0, 2, 0}));
  matrix->setCurrentMatrixID(1);
  use(1, 1);
  EXPECT_EQ(taken(matrix->getPreProcessedSequenceFromOriginalSequence(items, 4, &length), length), (Vector{-60, 62, 9154}));
  EXPECT_EQ(taken(matrix->getLongLongPreProcessedSequenceFromOriginalSequence(large, 2, &length), length),
            LongNumbers{-(1LL << 40)});
  EXPECT_EQ(taken(matrix->getLongLongPreProcessedSequenceFromOriginalIntSequence(items, 4, &length), length), LongNumbers(3, 0));

  for (const auto& [sequence, number] : {std::pair<const int*, int>{items, 0}, {items, -1}, {items, INT_MIN}, {nullptr, 3}}) {
    EXPECT_EQ(matrix->getPreProcessedSequenceFromOriginalSequence(sequence, number, &length), nullptr);
    EXPECT_EQ(matrix->getLongLongPreProcessedSequenceFromOriginalIntSequence(sequence, number, &length), nullptr);
    const std::string warning = "Warning from getProcessedSequence: originalSequence is empty\n";
    EXPECT_EQ(take(), warning + warning);
  }
}

TEST_F(MediumPreprocessingTest, ConvertsBetweenTheTwoForms) {
  use(2, 0);
  const int flat[] = {1, 2, 3, 4, 5};
  const zmatrix::SystemOwned<int*> objex(matrix->getObjexSequenceFromFlatSequence(flat, 5, &count));
  EXPECT_EQ(count, 2);  // without the incomplete item
  EXPECT_EQ(objex[1][1], 4);
  EXPECT_EQ(taken(matrix->getFlatSequenceFromObjexSequence(objex.get(), 2, &length), length), (Vector{1, 2, 3, 4}));
  for (int illegalCount : {0, -1, INT_MIN, INT_MAX}) {
    EXPECT_EQ(matrix->getFlatSequenceFromObjexSequence(objex.get(), illegalCount, &length), nullptr);
    EXPECT_EQ(length, 0);
  }
  EXPECT_EQ(matrix->getObjexSequenceFromFlatSequence(flat, -1, &count), nullptr);
  EXPECT_EQ(matrix->getObjexSequenceFromFlatSequence(nullptr, 5, &count), nullptr);
  EXPECT_EQ(count, 0);

  matrix->setCurrentMatrixID(1);
  use(2, 1);
  const zmatrix::SystemOwned<int*> steps(matrix->getPreProcessedObjexSequenceFromOriginalObjexSequence(objex.get(), 2, &count));
  EXPECT_EQ(count, 1);
  EXPECT_EQ(steps[0][0], 2);
  EXPECT_EQ(matrix->getPreProcessedObjexSequenceFromOriginalObjexSequence(objex.get(), 1, &count), nullptr);
  EXPECT_EQ(count, 0);
}

TEST_F(MediumPreprocessingTest, RestoresTheNextItemFromTheKernel) {
  use(2, 2);
  info()->storeKernelOriginal(std::data({1, 100, 5, 10, 7, 30}), 3);
  int item[] = {1, 1};
  EXPECT_EQ(matrix->getNextOriginalObjexFromPreProcessedObjex(item), item);
  EXPECT_EQ(item[0], 1 + (7 - 5) + 7);
  EXPECT_EQ(item[1], 1 + (30 - 10) + 30);
  info()->setLengthOfKernelOriginalSequence(0);  // shorter than the order: missing items count as 0
  matrix->getNextOriginalObjexFromPreProcessedObjex(item);
  EXPECT_EQ(item[0], 10);
  EXPECT_EQ(matrix->getNextOriginalObjexFromPreProcessedObjex(nullptr), nullptr);
}

TEST_F(MediumPreprocessingTest, ReportsWrongArgumentsOfEachOperation) {
  use(2, 1002);
  int values[] = {60, 0, 62, 100}, item[] = {1, 1};
  int* items[] = {values, values + 2};
  zmatrix::Account tell([this] { return take(); });
  const auto next = [&](int index, int numberOfItems) {
    const int* result = matrix->getNextOriginalObjexFromPreProcessedObjexAndOriginalSequence(items, index, numberOfItems, item);
    tell("item " + std::to_string(index), result == item, item[0], item[1]);
  };
  for (const int index : {1, -1, 2}) next(index, 2);
  info()->setMidiTimeSignatureDenom(0);
  next(1, 2);
  matrix->getNextOriginalObjexFromPreProcessedObjex(item);
  tell("of the kernel");

  matrix->setCurrentMatrixID(1);
  use(3, 1003);
  info()->setMidiTimeSignatureNom(0);
  int triple[] = {60, 0, 5}, tripleItem[] = {1, 1, 1};
  int* triples[] = {triple};
  matrix->getNextOriginalObjexFromPreProcessedObjexAndOriginalSequence(triples, 0, 1, tripleItem);
  tell("of triples");

  matrix->setCurrentMatrixID(2);
  for (int order : {0, 2}) {
    use(1, order);
    next(-1, 2);
  }
  next(2, 2);
  EXPECT_EQ(matrix->getNextOriginalObjexFromPreProcessedObjexAndOriginalSequence(items, 0, 2, nullptr), nullptr);
  EXPECT_EQ(matrix->getNextOriginalObjexFromPreProcessedObjexAndOriginalSequence(nullptr, 0, 2, item), nullptr);
}

TEST_F(MediumPreprocessingTest, RestoresWholeSequences) {
  use(1, 2);
  const Vector squares = {1, 4, 9, 16, 25};
  EXPECT_EQ(inverse({1, 4}, 1, {2, 2, 2}, 0), squares);
  EXPECT_EQ(inverse({1, 4}, 5, {2, 2, 2}, 1), squares);
  EXPECT_EQ(inverse({1, 4, 7, 7, 7, 7}, 9, {2, 2, 2}, 1), squares);
  EXPECT_EQ(inverse({1, 4}, 4, {2, 2, 2}, 1), Vector{});  // no room
  EXPECT_EQ(inverse({1}, 5, {2, 2, 2}, 0), Vector{});     // too few to begin with
  EXPECT_EQ(inverse({1, 4}, 0, {2, 2, 2}, 0), Vector{});
  EXPECT_EQ(inverse({1, 4}, 5, {}, 0), Vector{});
  EXPECT_EQ(matrix->getOriginalSequenceFromPreProcessedSequence(nullptr, 2, 5, squares.data(), 3, &length, 0), nullptr);

  matrix->setCurrentMatrixID(1);
  use(2, 1002);
  EXPECT_EQ(inverse({60, 0, 61, 5}, 9, {2, 100, -2, 50}, 1), (Vector{60, 0, 62, 100, 60, 12338}));
  matrix->setCurrentMatrixID(2);
  use(1, 1005);
  EXPECT_EQ(inverse({1}, 9, {2}, 0), Vector{});
}

TEST_F(MediumPreprocessingTest, TakesIndexVectorsThroughTheirLevelsAndBack) {
  const Vector original = {60, 100, 62, 200, 59, 900, 59, 900};
  for (const Vector& types : {Vector{0}, {3}, {1000}, {1002}, {1, 1, 1, 1}}) {
    const int c = types[0] == 1002 ? 2 : 1;
    std::vector<OwnedVector> levels;
    levels.emplace_back(createZQMatrixSequenceIndexVector(), deleteZQMatrixSequenceIndexVector);
    levels[0]->setCoordDimension(c);
    levels[0]->setIndexVector(original.data(), 8);
    for (const int type : types) {
      const int level = static_cast<int>(levels.size()) - 1;
      levels.back()->setApplyPreprocessingType(type);
      levels.emplace_back(matrix->getPreProcessedZQIndexVectorFromOriginalIndexVector(levels.back().get()),
                          deleteZQMatrixSequenceIndexVector);
      ASSERT_NE(levels.back(), nullptr) << type;
      EXPECT_EQ(levels.back()->getCurrentLevelOfPreprocOperations(), level);
      EXPECT_EQ(levels.back()->getUsedPreprocessingType(), type);
      EXPECT_EQ(levels.back()->getCoordDimensionAfterPreproc(), c);
      if (type == 1) {
        EXPECT_EQ(levels.back()->getLengthOfIndexVector(), 7 - level);
      }
    }
    OwnedVector vector = std::move(levels.back());
    for (size_t level = types.size(); level-- > 0;) {
      vector.reset(matrix->getOriginalZQIndexVectorFromPreprocessedIndexVector(vector.get()));
      ASSERT_NE(vector, nullptr) << types[0];
      EXPECT_EQ(dataOf(vector.get()), dataOf(levels[level].get())) << types[0];
      EXPECT_EQ(vector->getCurrentLevelOfPreprocOperations(), static_cast<int>(level) - 1);
      EXPECT_EQ(vector->getLengthOfIndexVectorInfos(), static_cast<int>(level));
    }
    EXPECT_EQ(matrix->getCurrentMatrixID(), 0);
  }
}

TEST_F(MediumPreprocessingTest, RefusesIndexVectorsWithoutLevels) {
  zmatrix::Account tell([this] { return take(); });
  EXPECT_EQ(matrix->getPreProcessedZQIndexVectorFromOriginalIndexVector(nullptr), nullptr);
  EXPECT_EQ(matrix->getOriginalZQIndexVectorFromPreprocessedIndexVector(nullptr), nullptr);
  tell("null");
  ZQMatrixSequenceIndexVector vector;
  const auto refuse = [&](const std::string& step) {
    EXPECT_EQ(matrix->getOriginalZQIndexVectorFromPreprocessedIndexVector(&vector), nullptr);
    tell(step, matrix->getCurrentMatrixID());
  };
  refuse("a new vector");
  vector.setCurrentLevelOfPreprocOperations(0);
  refuse("on level 0");
  vector.setCurrentLevelOfPreprocOperations(-1);
  vector.setLengthOfIndexVectorInfos(1);
  refuse("above all levels");
  vector.setCurrentLevelOfPreprocOperations(0);
  vector.setCoordDimensionAfterPreproc(1);
  vector._setUsedPreprocessingType(1);
  matrix->setCurrentMatrixID(3);
  refuse("without data: the one failure that leaves the spare sub-matrix current");
  matrix->setCurrentMatrixID(3);
  vector.addSequenceItem(5);
  refuse("without a start");

  const int item[] = {1};
  for (int id = 0; id < matrix->getMaxNumberOfMatrices(); id++) {
    matrix->setCurrentMatrixID(id);
    matrix->writeMatrixElement(item, 1, 1);
  }
  take();
  refuse("without a spare sub-matrix");
  EXPECT_EQ(matrix->getPreProcessedZQIndexVectorFromOriginalIndexVector(&vector), nullptr);
  tell("the other way");
}

}  // namespace
