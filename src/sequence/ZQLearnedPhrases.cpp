#include "sequence/ZQLearnedPhrases.h"

#include <algorithm>
#include <cstdlib>

#include "frame/ZQMemory.h"

namespace zmatrix {

ZQLearnedPhrases::~ZQLearnedPhrases() {
  for (long long i = 0; indexVectors != nullptr && i < count; ++i) systemFree(indexVectors[i]);
  systemFree(indexVectors);
  systemFree(lengths);
  systemFree(values);
}

bool ZQLearnedPhrases::provide(int numberOfItems, int longest) {
  if (!wanted) return true;
  const long long n = numberOfItems;
  const long long left = n - longest;
  capacity = n * (n + 1) / 2 - left * (left + 1) / 2;
  indexVectors = systemMallocArray<int*>(capacity);
  lengths = systemMallocArray<int>(capacity);
  if (indexVectors == nullptr || lengths == nullptr) {
    dbPrintf(0, "updateMatrixWithCombinedSeq: Cannot alloc indexVectors!\n");
    return false;
  }
  values = systemMallocArray<int>(capacity);
  if (values == nullptr) dbPrintf(0, "updateMatrixWithCombinedSeq: Cannot alloc values!\n");
  return values != nullptr;
}

bool ZQLearnedPhrases::addCopy(const int* phrase, int length) {
  int* copy = count < capacity ? systemMallocArray<int>(length) : nullptr;
  if (copy == nullptr) {
    ranOut = true;
    return false;
  }
  std::copy_n(phrase, length, copy);
  indexVectors[count] = copy;
  values[count] = lengths[count] = length;
  ++count;
  return true;
}

void ZQLearnedPhrases::setSign(long long number, int sign) {
  if (wanted && number >= 0 && number < count) lengths[number] = sign * std::abs(lengths[number]);
}

void ZQLearnedPhrases::handOver(int** valuesOut, int** lengthsOut, int*** indexVectorsOut) {
  if (!wanted) return;
  *valuesOut = values;
  *lengthsOut = lengths;
  *indexVectorsOut = indexVectors;
  values = lengths = nullptr;
  indexVectors = nullptr;
  count = 0;
}

std::string textOfPhrase(const int* phrase, int length) {
  std::string text;
  for (int i = 0; i < length && text.size() < static_cast<size_t>(ZQDebugChannel::messageCapacity); ++i) {
    text += std::to_string(phrase[i]) + ",";
  }
  return text;
}

}  // namespace zmatrix
