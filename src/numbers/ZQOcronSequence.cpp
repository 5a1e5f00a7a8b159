#include "numbers/ZQOcronSequence.h"

#include <sys/stat.h>

#include <algorithm>
#include <climits>
#include <cstdio>
#include <cstring>
#include <memory>

#include "frame/ZQDebugChannel.h"
#include "frame/ZQOwnedFile.h"
#include "frame/ZQSystemOwned.h"
#include "numbers/ZQOcronBuffers.h"
#include "numbers/ZQOcronEncoder.h"
#include "numbers/ZQOcronParameters.h"
#include "numbers/ZQSharedPrimes.h"

namespace zmatrix {

namespace {

constexpr int firstItems = 128;
constexpr int mostItemsOfString = 32768;

/// The format of the heading is kept as it is: `% i` prints the count with a blank, and "tems" follows.
OwnedFile openLog(const char* logPath, int ocronType, int length) {
  OwnedFile log(logPath != nullptr ? fopen(logPath, "w") : nullptr);
  if (log != nullptr && isOcronType(ocronType)) fprintf(log.get(), "ocron%d: % items\n", ocronType, length);
  return log;
}

/// The ocron of a number, checked by evaluating it; null, with a message, if there is none.
SystemOwned<char> provenOcron(int ocronType, int number, int* length, int* stackDepth) {
  int capacity = 0, compareNumber = 0;
  SystemOwned<char> ocron(intToOcron(ocronType, length, &capacity, number, &compareNumber, stackDepth));
  if (ocron == nullptr) {
    dbPrintf(0, "Error from getOcronSequenceFromIntegerSequence: illegal number (%d)!\n", number);
  } else if (compareNumber != number) {
    dbPrintf(0, "Error from getOcronSequenceFromIntegerSequence: number (%d)!= compareNumber (%d)\n", number, compareNumber);
    ocron.reset();
  }
  return ocron;
}

/// The growing array of items.
struct Items {
  int* values;
  int count = 0;
  int capacity = firstItems;

  bool add(int item) {
    const int before = count;
    values = addIntegerItemToOcronVector(values, &count, &capacity, item);
    return count > before;
  }

  /// Adds the items of one ocron, or none of them if memory runs out.
  bool add(const char* ocron, int length, int endSymbol) {
    const int before = count;
    bool hasRoom = length > 0;
    for (int i = 0; i < length && hasRoom; i++) hasRoom = add(static_cast<signed char>(ocron[i]));
    if (hasRoom && endSymbol != 0) hasRoom = add(endSymbol);
    if (!hasRoom) count = before;
    return hasRoom;
  }

  int* cutToSize() {
    auto* cut = static_cast<int*>(systemRealloc(values, static_cast<size_t>(std::max(count, 1)) * sizeof(int)));
    return cut != nullptr ? cut : values;
  }
};

// --- files

constexpr char whiteSpace[] = " \t\n\r";

bool isWhiteSpace(int character) {
  return character > 0 && strchr(whiteSpace, character) != nullptr;
}

bool isSymbol(int character) {
  return character > 0 && strchr("*2PQ^", character) != nullptr;
}

/// A readable regular file, with its length; null for a directory and the like.
OwnedFile openForReading(const char* path, long long* length) {
  OwnedFile file(path != nullptr ? fopen(path, "rb") : nullptr);
  struct stat about = {};
  if (file != nullptr && (fstat(fileno(file.get()), &about) != 0 || !S_ISREG(about.st_mode))) file.reset();
  *length = about.st_size;
  return file;
}

}  // namespace

int* createOcronSequence(const int* sequence, int length, int ocronType, int* resultLength, int endSymbol, const char* logPath,
                         char* isLeftOut) {
  const PrimesHeld held;
  dbPrintf(2, "ocronType: %d\n", ocronType);
  *resultLength = 0;
  Items items{systemMallocArray<int>(firstItems)};
  if (items.values == nullptr) return nullptr;
  const OwnedFile log = openLog(logPath, ocronType, length);
  int deepestStack = 0;
  for (int i = 0; i < length && sequence != nullptr; i++) {
    int ocronLength = 0, stackDepth = 0;
    const SystemOwned<char> ocron = provenOcron(ocronType, sequence[i], &ocronLength, &stackDepth);
    if (isLeftOut != nullptr) isLeftOut[i] = ocron == nullptr;
    if (ocron == nullptr) continue;
    deepestStack = std::max(deepestStack, stackDepth);
    if (log != nullptr) fprintf(log.get(), "%d:\t\t%d\t%s\n", sequence[i], ocronLength, ocron.get());
    const auto trueLength = static_cast<int>(strlen(ocron.get()));
    if (ocronLength != trueLength)
      dbPrintf(0, "Error from getOcronSequenceFromIntegerSequence: lengthOfOcron = %d\n", ocronLength);
    if (!items.add(ocron.get(), trueLength, endSymbol)) break;
  }
  dbPrintf(1, "maximal ocronStack: %d\n", deepestStack);
  *resultLength = items.count;
  return items.cutToSize();
}

int* createOcronSequenceFromIntegerSequence(const int* sequence, int length, int ocronType, int* resultLength, int endSymbol,
                                            const char* logPath) {
  return createOcronSequence(sequence, length, ocronType, resultLength, endSymbol, logPath, nullptr);
}

int* createOcronSequenceFromIntegerSequenceUseGlobalPars(const int* sequence, int length, int* resultLength) {
  const gocronParametersTag* parameters = getGlobalGocronParameters();
  return createOcronSequence(sequence, length, parameters->ocronType, resultLength, parameters->ocronEndSymbol, nullptr, nullptr);
}

char* getOcronStringFromOcronIntArray(const int* items, int endSymbol, int* length) {
  return getOcronStringFromOcronIntArray(items, mostItemsOfString, endSymbol, length);
}

char* getOcronStringFromOcronIntArray(const int* items, int readable, int endSymbol, int* length) {
  *length = 0;
  if (items == nullptr) return nullptr;
  const int* end = items + std::clamp(readable, 0, mostItemsOfString);
  const int* found = std::find(items, end, endSymbol);
  if (found == end) return nullptr;
  const auto numberOfItems = static_cast<int>(found - items) + 1;
  auto* ocron = systemMallocArray<char>(numberOfItems + 1);
  if (ocron == nullptr) return nullptr;
  for (int i = 0; i < numberOfItems; i++) ocron[i] = static_cast<char>(items[i]);
  ocron[numberOfItems] = 0;
  *length = numberOfItems;
  return ocron;
}

int* readIntegerSequenceFromASCIOcronFile(const char* path, int maximalItems, int endSymbol, int* count, int* status) {
  *status = 1;
  *count = 0;
  long long fileLength = 0;
  const OwnedFile file = openForReading(path, &fileLength);
  if (file == nullptr) {
    *status = -1;
    return nullptr;
  }
  // A file holds at most as many items as bytes.
  const long long most = maximalItems == 0 ? fileLength : std::min<long long>(maximalItems, fileLength);
  Items items{most >= 0 && most < INT_MAX ? systemMallocArray<int>(most) : nullptr};
  if (items.values == nullptr) {
    *status = -2;
    return nullptr;
  }
  int character = getc(file.get());
  while (isWhiteSpace(character)) character = getc(file.get());
  if (character == EOF) {
    systemFree(items.values);
    *status = -3;
    return nullptr;
  }
  while (character != EOF && items.count < most) {
    if (isWhiteSpace(character)) {
      if (endSymbol > 0) items.values[items.count++] = endSymbol;
      while (isWhiteSpace(character)) character = getc(file.get());
      continue;
    }
    items.values[items.count++] = character;
    if (!isSymbol(character)) {
      *status = 0;
      *count = items.count;
      return items.values;
    }
    character = getc(file.get());
  }
  *count = items.count;
  return items.cutToSize();
}

}  // namespace zmatrix
