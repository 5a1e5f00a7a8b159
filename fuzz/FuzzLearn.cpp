// Passes arbitrary bytes as settings, sequences and a start to a matrix of the medium tier and generates from it, through the C
// header alone. For every input there must be no overrun, no leak and no endless loop.
#include <zmatrix/zmatrix.h>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace {

constexpr int itemsToRead = 64;

// Reads bytes and settings from the front of the input; after its end it gives zeros.
class Bytes {
 public:
  Bytes(const std::uint8_t* data, std::size_t size) : data_(data), left_(size) {}
  int next() {
    if (left_ == 0) return 0;
    --left_;
    return *data_++;
  }
  std::vector<int> take(std::size_t count) {
    std::vector<int> values;
    while (values.size() < count && left_ > 0) values.push_back(next());
    return values;
  }
  std::vector<int> rest() { return take(left_); }

 private:
  const std::uint8_t* data_;
  std::size_t left_;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Bytes bytes(data, size);
  ZQMatrixMedium* matrix = createAndInitMatrixMedium();
  if (matrix == nullptr) return 0;
  const bool isText = bytes.next() % 2 == 0;
  if (isText) {
    s_setDefaultMatrixPropertiesForANSIText_Medium(matrix, nullptr);
  } else {
    s_setDefaultMatrixPropertiesForIntegerSeries_Medium(matrix, nullptr);
    s_setPreProcessingType_Medium(matrix, bytes.next() % 4);
    s_setIncludeOverDeterminedRules_Medium(matrix, bytes.next() % 2);
  }
  s_setMaxPhraseLengthForUpdateWithSequence_Medium(matrix, bytes.next() % 20);
  s_setMemorySearchMethod_Medium(matrix, bytes.next() % 4);
  s_setSucessorMethod_Medium(matrix, bytes.next() % 4);
  s_setSkillOutputLevel_Medium(matrix, bytes.next());
  s_setEnableStopItem_Medium(matrix, 1);
  std::vector<int> start = bytes.take(static_cast<std::size_t>(bytes.next() % 24));
  std::vector<int> sequence = bytes.rest();
  const int length = static_cast<int>(sequence.size());
  if (isText) {
    s_updateMatrixWithLongANSISequence_Medium(matrix, sequence.data(), length);
  } else {
    s_updateMatrixWithLongINTSequence_Medium(matrix, sequence.data(), length);
  }
  s_initializeKernelSequenceWithOriginalSequence_Medium(matrix, start.data(), static_cast<int>(start.size()), 1);
  double probability = 0, stopProbability = 0;
  for (int item = 0; item < itemsToRead; ++item) s_readObjexFromMatrix_Medium(matrix, &probability, &stopProbability);
  deleteMatrixMedium(matrix);
  return 0;
}
