// The number codings of a matrix: each type forward and back, and messages on wrong input.
#include <climits>
#include <iterator>
#include <sstream>

#include "numbers/ZQOcronParameters.h"
#include "numbers/ZQPrimes.h"
#include "sequence/ZQMatrixSequenceIndexVector.h"
#include "support/KeptText.h"
#include "support/TierTest.h"

using zmatrix::systemFree;

namespace {

using zmatrix::taken;
using zmatrix::Vector;

class NumberCodingTest : public zmatrix::TierTest<ZQMatrixMedium> {
 public:
  NumberCodingTest() {
    zmatrix::setGlobalGocronParametersToDefaults();
    zmatrix::initPrimes(0, 50000, &count);
  }
  ~NumberCodingTest() override {
    zmatrix::setGlobalGocronParametersToDefaults();
    zmatrix::deinitPrimes();
  }
  void use(int type, int ocronType, int coordinateDimension = 1) {
    info()->setPreProcessingType(type);
    info()->setOcronType(ocronType);
    info()->setCoordinateDimension(coordinateDimension);
    zmatrix::getGlobalGocronParameters()->ocronType = ocronType;
    take();
  }
  Vector forward(const Vector& numbers) {
    length = -7;
    return taken(matrix->getPreProcessedSequenceFromOriginalSequence(numbers.data(), sizeOf(numbers), &length), length);
  }
  Vector back(const Vector& coded) {
    int start = 0;
    return taken(matrix->getOriginalSequenceFromPreProcessedSequence(&start, 1, 1, coded.data(), sizeOf(coded), &length, 0),
                 length);
  }
  static int sizeOf(const Vector& numbers) { return static_cast<int>(numbers.size()); }
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
  zmatrix::expectKeptCases("number_codings.txt", [this](const std::string& line) {
    std::istringstream words(line);
    int type = 0, ocronType = 0, dimension = 0;
    char way = ' ';
    words >> type >> ocronType >> dimension >> way;
    const Vector items(std::istream_iterator<int>(words), {});
    use(type, ocronType, dimension);
    length = -7;
    const Vector result = way == 'f'   ? forward(items)
                          : way == 'b' ? back(items)
                          : way == 'n' ? Vector{next(items)}
                                       : Vector{nextWithSequence(items)};
    std::string text = "length " + std::to_string(length) + ":";
    for (const int number : result) text += " " + std::to_string(number);
    return text + "\n" + take();
  });
  for (const auto& [type, ocronType] : {std::pair{1011, 4}, {1013, 6}}) {
    use(type, ocronType);
    EXPECT_EQ(back(forward({2, 12, 7, 97})), (Vector{2, 12, 7, 97})) << type;
  }
}

TEST_F(NumberCodingTest, DecodesOcronsItemByItem) {
  use(1010, 4);
  Vector item = {'2', 'P', 10, 'x'};
  EXPECT_EQ(matrix->getNextOriginalObjexFromPreProcessedObjex(item.data()), info()->_getTemporaryMemory());
  EXPECT_EQ(info()->_getTemporaryMemory()[0], 3);
  EXPECT_EQ(item, (Vector{'2', 'P', 10, 'x'}));
  info()->getTemporaryMemory()[0] = 'P';
  EXPECT_EQ(matrix->getNextOriginalObjexFromPreProcessedObjex(info()->getTemporaryMemory())[0],
            -1);  // no end symbol in the whole memory
  // The end symbol of the global parameters cuts the string, that of the matrix ends it.
  info()->setOcronEndSymbol('x');
  EXPECT_EQ(next({'2', 'P', 10, 'x'}), 3);
  zmatrix::getGlobalGocronParameters()->ocronEndSymbol = 0;
  EXPECT_EQ(next({'2', 'P', 'x'}), -4);
}

TEST_F(NumberCodingTest, AcceptsTheOcronTypesOfEachCoding) {
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

}  // namespace
