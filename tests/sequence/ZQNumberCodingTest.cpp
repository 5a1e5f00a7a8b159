// Matrices that code their numbers: every type forward and back, what misfits print, and learning through a code.
#include <climits>

#include "numbers/ZQOcronParameters.h"
#include "numbers/ZQPrimes.h"
#include "sequence/ZQMatrixSequenceIndexVector.h"
#include "support/TierTest.h"

namespace {

using zmatrix::Vector;

class NumberCodingTest : public zmatrix::TierTest<ZQMatrixMedium> {
 protected:
  NumberCodingTest() {
    zmatrix::setGlobalGocronParametersToDefaults();
    zmatrix::initPrimes(0, 50000, &count);
  }
  ~NumberCodingTest() override {
    zmatrix::setGlobalGocronParametersToDefaults();
    zmatrix::deinitPrimes();
  }
  void take(int type, int ocronType, int coordinateDimension = 1) {
    info()->setPreProcessingType(type);
    info()->setOcronType(ocronType);
    info()->setCoordinateDimension(coordinateDimension);
    zmatrix::getGlobalGocronParameters()->ocronType = ocronType;
    TierMatrix::take();
  }
  Vector forward(const Vector& numbers) {
    length = -7;
    int* coded = matrix->getPreProcessedSequenceFromOriginalSequence(numbers.data(), static_cast<int>(numbers.size()), &length);
    return resultOf(coded);
  }
  Vector back(Vector coded) {
    int start = 0;
    int* numbers = matrix->getOriginalSequenceFromPreProcessedSequence(&start, 1, 1, coded.data(), static_cast<int>(coded.size()),
                                                                       &length, 0);
    return resultOf(numbers);
  }
  Vector resultOf(int* block) {
    Vector result;
    if (block != nullptr) result.assign(block, block + length);
    systemFree(block);
    return result;
  }
  int next(Vector item) {
    const int* result = matrix->getNextOriginalObjexFromPreProcessedObjex(item.data());
    return result != nullptr ? result[0] : -99;
  }
  int nextWithSequence(Vector item) {
    int* sequence[] = {item.data()};
    const int* result = matrix->getNextOriginalObjexFromPreProcessedObjexAndOriginalSequence(sequence, -1, 0, item.data());
    return result != nullptr ? result[0] : -99;
  }

  int count = 0, length = 0;
};

TEST_F(NumberCodingTest, CodesAndDecodes) {
  const Vector numbers = {2, 12, 7, 97};
  const std::pair<int, int> gocrons[] = {{1011, 4}, {1013, 6}};
  for (const auto& [type, ocronType] : gocrons) {
    take(type, ocronType);
    EXPECT_EQ(back(forward(numbers)), numbers) << type;
  }
  take(1016, 4);
  EXPECT_EQ(forward({9, 43, -1}), (Vector{3, 4, -1}));
  EXPECT_EQ(back({3, 4, 1}), (Vector{9, 43, -1}));
  const std::pair<int, Vector> coded[] = {
      {1017, {1, 5, 4, 25}}, {1018, {3, 37, 17, 509}}, {1019, {1, 7, 3, 72}}, {1020, {4, 20, 12, 128}}};
  for (const auto& [type, codes] : coded) {
    take(type, 4);
    EXPECT_EQ(forward(numbers), codes) << type;
    EXPECT_EQ(back(codes), type == 1017 || type == 1019 ? back(forward(numbers)) : numbers) << type;
  }
  take(1010, 4);
  EXPECT_EQ(forward({2, 1, 3}), (Vector{'2', 10, '2', 'P', 10}));
  EXPECT_EQ(forward({1}), Vector{});
  EXPECT_EQ(length, 0);
  for (int type : {1010, 1011, 1012, 1013, 1014, 1015}) {
    take(type, 4, 2);
    EXPECT_EQ(forward({2, 3}), Vector{});
    EXPECT_EQ(length, 0);
    EXPECT_EQ(next({2, 3}), -99);
  }
  take(1017, 4, 2);
  EXPECT_EQ(forward({2, 3}), (Vector{1, 2}));
}

TEST_F(NumberCodingTest, ReadsOcronsItemByItem) {
  take(1010, 4);
  Vector item = {'2', 'P', 10, 'x'};
  EXPECT_EQ(matrix->getNextOriginalObjexFromPreProcessedObjex(item.data()), info()->_getTemporaryMemory());
  EXPECT_EQ(info()->_getTemporaryMemory()[0], 3);
  EXPECT_EQ(item, (Vector{'2', 'P', 10, 'x'}));
  EXPECT_EQ(back({'2', 'P', 10, '2'}), (Vector{3, 3, -13, -1}));  // P is 3; an empty ocron, and one that no end symbol ends
  info()->getTemporaryMemory()[0] = 'P';
  EXPECT_EQ(matrix->getNextOriginalObjexFromPreProcessedObjex(info()->getTemporaryMemory())[0], -1);  // none in the whole memory
  // The parameters of the process cut, those of the matrix end the string.
  info()->setOcronEndSymbol('x');
  EXPECT_EQ(next({'2', 'P', 10, 'x'}), 3);
  zmatrix::getGlobalGocronParameters()->ocronEndSymbol = 0;
  EXPECT_EQ(next({'2', 'P', 'x'}), -4);
  // What doesn't fit in 32 bits: the operation with a sequence cuts it.
  zmatrix::setGlobalGocronParametersToDefaults();
  take(1014, 7);
  info()->setOcronEndSymbol(10);
  Vector large(33, '2');
  large.push_back(10);
  EXPECT_EQ(next(large), -1);
  EXPECT_EQ(nextWithSequence(large), 0);
}

TEST_F(NumberCodingTest, TellsMisfits) {
  const std::string start = "getNextOriginalObjexFromPreProcessedObjexAndOriginalSequence: illegal ocrontype 9 for ";
  const std::pair<const char*, const char*> endings[] = {{"  normal Ocrons\n", "  normal Ocrons\n"},
                                                         {"  normal Gocrons\n", "  normal Gocrons\n"},
                                                         {"PrimeOcrons\n", "PrimeOcrons\n"},
                                                         {"Prime Gocrons\n", "PrimeGocrons\n"},
                                                         {"  virtual Ocrons\n", "  virtual Ocrons\n"},
                                                         {"  virtual Gocrons\n", "  virtual Gocrons\n"},
                                                         {"Inverse Prime Gocrons\n", "Inverse Prime Gocrons\n"}};
  for (int type = 1010; type <= 1016; type++) {
    take(type, 9);
    next({'P', 10});
    EXPECT_EQ(TierMatrix::take(), start + endings[type - 1010].first);
    nextWithSequence({'P', 10});
    EXPECT_EQ(TierMatrix::take(), start + endings[type - 1010].second);
  }
  const auto fits = [this](int type) {
    info()->setPreProcessingType(type);
    std::string types;
    for (int ocronType = 0; ocronType < 10; ocronType++)
      if (matrix->isValidOcronType(ocronType) != 0) types += std::to_string(ocronType);
    return types;
  };
  for (int type : {1010, 1011}) EXPECT_EQ(fits(type), "345");
  for (int type : {1012, 1013}) EXPECT_EQ(fits(type), "6");
  for (int type : {1014, 1015}) EXPECT_EQ(fits(type), "7");
  for (int type : {0, 1016, 1020}) EXPECT_EQ(fits(type), "34567");
}

TEST_F(NumberCodingTest, Has64BitForms) {
  const std::vector<long long> numbers = {43, (1LL << 32) + 9, -1};
  const auto run = [&] {
    length = -7;
    long long* coded = matrix->getLongLongPreProcessedSequenceFromOriginalSequence(numbers.data(), 3, &length);
    std::vector<long long> result;
    if (coded != nullptr) result.assign(coded, coded + length);
    systemFree(coded);
    return result;
  };
  take(1016, 4);
  EXPECT_EQ(run().front(), 4);
  take(1018, 4);
  EXPECT_EQ(run(), (std::vector<long long>{191, 23, -1}));
  for (int type = 1010; type <= 1015; type++)
    for (int dimension : {1, 2}) {
      take(type, 4, dimension);
      EXPECT_EQ(run(), std::vector<long long>{});
      EXPECT_EQ(length, type > 1010 && dimension == 2 ? 0 : -7) << type;
    }
}

TEST_F(NumberCodingTest, CarriesIndexVectors) {
  ZQMatrixSequenceIndexVector* original = createZQMatrixSequenceIndexVector();
  Vector numbers = {12, 5, 30};
  original->setIndexVector(numbers.data(), 3);
  original->setApplyPreprocessingType(1010);
  matrix->setMaxNumberOfMatrices(4);
  ZQMatrixSequenceIndexVector* coded = matrix->getPreProcessedZQIndexVectorFromOriginalIndexVector(original);
  ASSERT_NE(coded, nullptr);
  ZQMatrixSequenceIndexVector* decoded = matrix->getOriginalZQIndexVectorFromPreprocessedIndexVector(coded);
  ASSERT_NE(decoded, nullptr);
  EXPECT_EQ(Vector(decoded->getIndexVector(), decoded->getIndexVector() + decoded->getLengthOfIndexVector()), numbers);
  for (auto* vector : {original, coded, decoded}) deleteZQMatrixSequenceIndexVector(vector);
}

}  // namespace
