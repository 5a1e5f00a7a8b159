#include "sequence/ZQLearnedPhrases.h"

#include <algorithm>
#include <cstdlib>

#include "frame/ZQMemory.h"

namespace zmatrix {

ZQLearnedPhrases::~ZQLearnedPhrases() {
  for (long long i = 0; indexVectors_ != nullptr && i < count_; ++i) systemFree(indexVectors_[i]);
  systemFree(indexVectors_);
  systemFree(lengths_);
  systemFree(values_);
}

bool ZQLearnedPhrases::provide(int numberOfItems, int longest) {
  if (!wanted_) return true;
  const long long n = numberOfItems;
  const long long left = n - longest;
  capacity_ = n * (n + 1) / 2 - left * (left + 1) / 2;
  indexVectors_ = systemMallocArray<int*>(capacity_);
  lengths_ = systemMallocArray<int>(capacity_);
  if (indexVectors_ == nullptr || lengths_ == nullptr) {
    dbPrintf(0, "updateMatrixWithCombinedSeq: Cannot alloc indexVectors!\n");
    return false;
  }
  values_ = systemMallocArray<int>(capacity_);
  if (values_ == nullptr) dbPrintf(0, "updateMatrixWithCombinedSeq: Cannot alloc values!\n");
  return values_ != nullptr;
}

bool ZQLearnedPhrases::addCopy(const int* phrase, int length) {
  int* copy = count_ < capacity_ ? systemMallocArray<int>(length) : nullptr;
  if (copy == nullptr) {
    ranOut_ = true;
    return false;
  }
  std::copy_n(phrase, length, copy);
  indexVectors_[count_] = copy;
  values_[count_] = lengths_[count_] = length;
  ++count_;
  return true;
}

void ZQLearnedPhrases::setSign(long long number, int sign) {
  if (wanted_ && number >= 0 && number < count_) lengths_[number] = sign * std::abs(lengths_[number]);
}

void ZQLearnedPhrases::handOver(int** valuesOut, int** lengthsOut, int*** indexVectorsOut) {
  if (!wanted_) return;
  *valuesOut = values_;
  *lengthsOut = lengths_;
  *indexVectorsOut = indexVectors_;
  values_ = lengths_ = nullptr;
  indexVectors_ = nullptr;
  count_ = 0;
}

std::string textOfPhrase(const int* phrase, int length) {
  std::string text;
  for (int i = 0; i < length && text.size() < static_cast<size_t>(ZQDebugChannel::messageCapacity); ++i) {
    text += std::to_string(phrase[i]) + ",";
  }
  return text;
}

}  // namespace zmatrix
