#include "numbers/ZQGocronSequence.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <memory>
#include <span>
#include <utility>

#include "frame/ZQDebugChannel.h"
#include "frame/ZQOwnedFile.h"
#include "frame/ZQSystemOwned.h"
#include "numbers/ZQGocron.h"
#include "numbers/ZQOcronEvaluator.h"
#include "numbers/ZQOcronParameters.h"
#include "numbers/ZQOcronSequence.h"

namespace zmatrix {

namespace {

constexpr int endSymbolOfIndices = 10;

bool areItemsOfType(std::span<const int> items, int ocronType, int endSymbol) {
  const std::string_view symbols = ocronAlphabet(ocronType).itemSymbols;
  for (const int item : items) {
    if (item == endSymbol || (item > 0 && item < 128 && symbols.find(static_cast<char>(item)) != std::string_view::npos))
      continue;
    dbPrintf(0, " createGoedelSequenceFromOcronSequence: illegal ocronItem for type %d: %c(%d)\n", ocronType,
             static_cast<char>(item), item);
    return false;
  }
  return true;
}

/// Removes the next ocron and its end symbol from the front of a sequence, and returns the ocron.
std::span<const int> takeRun(std::span<const int>& items, int endSymbol) {
  const auto end = std::find(items.begin(), items.end(), endSymbol);
  const auto length = static_cast<size_t>(end - items.begin());
  const std::span<const int> run = items.first(length);
  items = items.subspan(std::min(length + 1, items.size()));
  return run;
}

struct RunCounts {
  size_t runs = 0;
  size_t longest = 0;
};

RunCounts countRuns(std::span<const int> items, int endSymbol) {
  RunCounts counts;
  while (!items.empty()) {
    counts.longest = std::max(counts.longest, takeRun(items, endSymbol).size());
    counts.runs++;
  }
  return counts;
}

void logGocron(FILE* log, int ocronType, long long gocron, char* ocron, int length) {
  if (log == nullptr) return;
  int stackDepth = 0;
  const long long number = ocronToLongLong(ocronType, ocron, length, &stackDepth);
  fprintf(log, "%lld:\t\t%lld\t\t%s\n", number, gocron, ocron);
}

// --- sorting

long long keyOfGocron(const naturalNumberGocronCodeTag& record) {
  return record.gocronCode;
}

int keyOfNumber(const naturalNumberGocronCodeTag& record) {
  return static_cast<int>(record.naturalNumber);
}

/// Quicksort with the middle record's key as the pivot. The order of equal records is part of the result, and depends on these
/// swaps.
template <auto key>
void sortRecords(int low, int high, naturalNumberGocronCodeTag* records) {
  while (low < high) {
    const auto pivot = key(records[low + (high - low) / 2]);
    int i = low, j = high;
    while (i <= j) {
      while (key(records[i]) < pivot) i++;
      while (key(records[j]) > pivot) j--;
      if (i <= j) std::swap(records[i++], records[j--]);
    }
    // Recurse into the shorter part, so that the recursion depth is logarithmic.
    if (j - low < high - i) {
      sortRecords<key>(low, j, records);
      low = i;
    } else {
      sortRecords<key>(i, high, records);
      high = j;
    }
  }
}

}  // namespace

long long* createGoedelSequenceFromOcronSequence(int ocronType, const int* sequence, int length, int endSymbol, int* resultLength,
                                                 int* status, long long* maximalValue, const char* logPath) {
  *status = 1;
  *resultLength = 0;
  if (length <= 0 || sequence == nullptr) {
    *status = 0;
    return nullptr;
  }
  if (!isOcronType(ocronType)) return nullptr;
  const OwnedFile log(logPath != nullptr ? fopen(logPath, "wb") : nullptr);
  if (log != nullptr) fprintf(log.get(), "gocron%d: %d ocron items (incl. EOO Symbol) \n", ocronType, length);
  std::span<const int> items(sequence, static_cast<size_t>(length));
  if (!areItemsOfType(items, ocronType, endSymbol)) return nullptr;

  const RunCounts counts = countRuns(items, endSymbol);
  const SystemOwned<char> ocron(systemMallocArray<char>(static_cast<long long>(counts.longest) + 2));
  auto* gocrons = systemMallocArray<long long>(static_cast<long long>(counts.runs) + 1);
  if (ocron == nullptr || gocrons == nullptr) {
    systemFree(gocrons);
    return nullptr;
  }
  *maximalValue = 0;
  while (!items.empty()) {
    const std::span<const int> run = takeRun(items, endSymbol);
    *std::transform(run.begin(), run.end(), ocron.get(), [](int item) { return static_cast<char>(item); }) = 0;
    const auto runLength = static_cast<int>(run.size());
    const long long gocron = ocronToGocron(ocronType, ocron.get(), runLength);
    *maximalValue = std::max(*maximalValue, gocron);
    gocrons[(*resultLength)++] = gocron;
    logGocron(log.get(), ocronType, gocron, ocron.get(), runLength);
  }
  return gocrons;
}

long long* createGoedelSequenceFromOcronSequenceUseGlobalPars(const int* sequence, int length, int* resultLength) {
  const gocronParametersTag* parameters = getGlobalGocronParameters();
  int status = -1;
  long long maximalValue = 0;
  return createGoedelSequenceFromOcronSequence(parameters->ocronType, sequence, length, parameters->ocronEndSymbol, resultLength,
                                               &status, &maximalValue, nullptr);
}

long long* createLongLongGoedelSequenceFromIntegerSequenceUseGlobalPars(const int* sequence, int length, int* resultLength) {
  *resultLength = 0;
  int numberOfItems = 0;
  const SystemOwned<int> ocrons(createOcronSequenceFromIntegerSequenceUseGlobalPars(sequence, length, &numberOfItems));
  return createGoedelSequenceFromOcronSequenceUseGlobalPars(ocrons.get(), numberOfItems, resultLength);
}

int* createGoedelSequenceFromIntegerSequenceUseGlobalPars(const int* sequence, int length, int* resultLength) {
  const SystemOwned<long long> gocrons(
      createLongLongGoedelSequenceFromIntegerSequenceUseGlobalPars(sequence, length, resultLength));
  int* narrowed = gocrons != nullptr ? systemMallocArray<int>(*resultLength) : nullptr;
  if (narrowed == nullptr) {
    *resultLength = 0;
    return nullptr;
  }
  std::transform(gocrons.get(), gocrons.get() + *resultLength, narrowed,
                 [](long long gocron) { return static_cast<int>(gocron); });
  return narrowed;
}

naturalNumberGocronCodeTag* createGocronCodeIndices(int ocronType, const int* numbers, int count) {
  if (numbers == nullptr || count < 1) return nullptr;
  if (!isOcronType(ocronType)) {
    dbPrintf(0, "createGocronCodeIndices: wrong ocronType: %d\n", ocronType);
    return nullptr;
  }
  SystemOwned<naturalNumberGocronCodeTag> records(systemMallocArray<naturalNumberGocronCodeTag>(count));
  const SystemOwned<char> isLeftOut(static_cast<char*>(systemCalloc(static_cast<size_t>(count), 1)));
  if (records == nullptr || isLeftOut == nullptr) return nullptr;
  int numberOfItems = 0, numberOfGocrons = 0, status = 0;
  long long maximalValue = 0;
  const SystemOwned<int> ocrons(
      createOcronSequence(numbers, count, ocronType, &numberOfItems, endSymbolOfIndices, nullptr, isLeftOut.get()));
  if (ocrons == nullptr) return nullptr;
  const SystemOwned<long long> gocrons(createGoedelSequenceFromOcronSequence(
      ocronType, ocrons.get(), numberOfItems, endSymbolOfIndices, &numberOfGocrons, &status, &maximalValue, nullptr));
  if (gocrons == nullptr && numberOfItems > 0) return nullptr;
  for (int i = 0, next = 0; i < count; i++) {
    const bool hasGocron = isLeftOut[i] == 0 && next < numberOfGocrons;
    records[i] = {numbers[i], hasGocron ? gocrons[next++] : -1, 0};
  }
  gocronQsortByGocronCode(count - 1, records.get());
  for (int i = 0; i < count; i++) records[i].index = i;
  gocronQsortByNumber(count - 1, records.get());
  return records.release();
}

void gocronQsortByGocronCode(int lastIndex, naturalNumberGocronCodeTag* records) {
  sortRecords<keyOfGocron>(0, lastIndex, records);
}

void gocronQsortByNumber(int lastIndex, naturalNumberGocronCodeTag* records) {
  sortRecords<keyOfNumber>(0, lastIndex, records);
}

}  // namespace zmatrix
