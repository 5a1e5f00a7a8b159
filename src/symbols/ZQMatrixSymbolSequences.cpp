// From a sequence to its symbols: those of the words of a text, or of the longest known phrases of any other sequence. Both walks
// collect either the symbols or the handles of their phrases, in the same order, so a symbol and its phrase have the same index
// in their arrays.
#include <algorithm>
#include <cstdio>
#include <cstdlib>

#include "frame/ZQProgress.h"
#include "frame/ZQSystemOwned.h"
#include "symbols/ZQMatrix.h"
#include "symbols/ZQWordMarkers.h"

using zmatrix::beginsWord;
using zmatrix::endsWord;
using zmatrix::SystemOwned;

namespace {

constexpr int lineFeed = 10;  // the character, and also its symbol

/// A phrase of the basic level with its symbol.
struct SymbolPhrase {
  int symbol;
  int handle;
  const int* items;
  int length;
};

void printItems(ZQMatrix& matrix, const int* items, int length, int level) {
  dbPrintf(level, "orig: ");
  matrix.printIndexVector(items, length, 0, level);
  dbPrintf(level, "\n");
}

// The two kinds of result: they differ in the entries and in the messages.

struct SymbolEntries {
  static constexpr int ofLineFeed = lineFeed;
  static int of(const SymbolPhrase& phrase) { return phrase.symbol; }
  static void reportAdded(ZQMatrix& matrix, const SymbolPhrase& phrase) {
    dbPrintf(4, "getSymbolsFromLongAnsi..(): Symbol added %d\n", phrase.symbol);
    printItems(matrix, phrase.items, phrase.length, 4);
  }
  static void reportTooHighInText(int symbol, int highest) {
    dbPrintf(0, "getSymbolsFromLongAnsi..(): Symbol %d exceeds max. matrix index %d\n", symbol, highest);
  }
  static void reportFound(ZQMatrix& matrix, const SymbolPhrase& phrase) {
    dbPrintf(4, "getSymbolsFromAnyLong..(): Symbol found %d\n", phrase.symbol);
    printItems(matrix, phrase.items, phrase.length, 4);
  }
  static void reportTooHigh(int symbol, int highest) {
    dbPrintf(0, "getSymbolsFromAnyLong..(): Symbol %d exceeds max. matrix index %d\n", symbol, highest);
  }
  static void reportDisorder() { dbPrintf(0, "internal error 8986\n"); }
  static void beginProgress(int numberOfItems) {
    snprintf(globalProgressData.progressText, sizeof globalProgressData.progressText, "getSymbolsFromAnySequence: (%d) items",
             numberOfItems);
  }
  static void progress(int item, int numberOfItems) { matrixProgressDisplay(item, numberOfItems); }
};

struct HandleEntries {
  static constexpr int ofLineFeed = 0;
  static int of(const SymbolPhrase& phrase) { return phrase.handle; }
  static void reportAdded(ZQMatrix&, const SymbolPhrase& phrase) {
    dbPrintf(6, "getSymbolHandlesFromLongAnsi..(): Symbol %d with handle %d added\n", phrase.symbol, phrase.handle);
  }
  static void reportTooHighInText(int symbol, int highest) {
    dbPrintf(0, "getSymbolHandlesFromLongAnsi..(): Symbol %d exceeds max. matrix index %d\n", symbol, highest);
  }
  static void reportFound(ZQMatrix&, const SymbolPhrase& phrase) {
    dbPrintf(6, "getSymbolHandlesFromAnyLong..(): Symbol %d with handle %d found\n", phrase.symbol, phrase.handle);
  }
  static void reportTooHigh(int symbol, int highest) {
    dbPrintf(0, "getSymbolHandlesFromAnyLong..(): Symbol %d exceeds max. matrix index %d\n", symbol, highest);
  }
  static void reportDisorder() { dbPrintf(0, "internal error h8986\n"); }
  static void beginProgress(int) {}
  static void progress(int, int) {}
};

/// A preprocessed sequence and the entries collected from it, at most one per integer.
class Collection {
 public:
  Collection(ZQMatrix& matrix, const int* sequence, int length)
      : sequence_(matrix.getPreProcessedSequenceFromOriginalSequence(sequence, length, &length_)) {
    if (sequence_ == nullptr) length_ = 0;
    entries_.reset(systemMallocArray<int>(length_));
  }

  bool hasRoom() const { return entries_ != nullptr; }
  const int* sequence() const { return sequence_.get(); }
  int length() const { return length_; }
  int count() const { return count_; }
  void add(int entry) { entries_[static_cast<size_t>(count_++)] = entry; }

  /// Hands the entries over to the caller; null if there are none.
  int* take() {
    if (count_ < 1) return nullptr;
    auto* smaller = static_cast<int*>(systemRealloc(entries_.get(), static_cast<size_t>(count_) * sizeof(int)));
    if (smaller == nullptr) return entries_.release();
    entries_.release();
    return smaller;
  }

 private:
  int length_ = 0;
  int count_ = 0;
  SystemOwned<int> sequence_;
  SystemOwned<int> entries_;
};

bool exceeds(int symbol, int highest) {
  return std::abs(static_cast<long long>(symbol)) > highest;
}

// --- the words of a text

template <class Entries>
class TextWalk {
 public:
  TextWalk(ZQMatrix& matrix, Collection& collection) : matrix_(matrix), collection_(collection) {}

  /// Collects the entries in the order of the text. `markers`: for each item, whether a word begins or ends there.
  void run(const int* markers) {
    const int numberOfItems = collection_.length();
    int pendingLineFeeds = 0;
    for (int i = 0; i < numberOfItems; ++i) {
      if ((markers[i] & beginsWord) != 0) {
        if (pendingLineFeeds > 0) addLineFeed();
        pendingLineFeeds = 0;
        int last = i;
        while (last + 1 < numberOfItems && (markers[last] & endsWord) == 0) ++last;
        addWord(collection_.sequence() + i, last - i + 1);
        i = last;
      }
      if (collection_.sequence()[i] == lineFeed) ++pendingLineFeeds;
      matrixProgressDisplay(i, numberOfItems);
    }
  }

  int numberOfUnknown() const { return numberOfUnknown_; }
  int numberOfLineFeeds() const { return numberOfLineFeeds_; }

 private:
  void addLineFeed() {
    collection_.add(Entries::ofLineFeed);
    ++numberOfLineFeeds_;
    dbPrintf(4, "getSymbolsFromLongAnsi..(): LF-Symbol added\n\n");
  }

  void addWord(const int* items, int length) {
    const ZQMatrixInfo& info = *matrix_.getMatrixInfo();
    int handle = -1;
    const auto* element = matrix_.getMatrixElementFromElementVector(items, length, &handle);
    if (element == nullptr || element->getSymbolID() < 1) {
      ++numberOfUnknown_;
      // Words longer than the phrase limit are not learned completely.
      if (length <= info.getMaxPhraseLengthForUpdateWithSequence()) reportUnexpected(element != nullptr, handle, items, length);
    } else if (exceeds(element->getSymbolID(), info.getMaximalMatrixIndex())) {
      Entries::reportTooHighInText(element->getSymbolID(), info.getMaximalMatrixIndex());
    } else {
      const SymbolPhrase phrase = {element->getSymbolID(), handle, items, length};
      collection_.add(Entries::of(phrase));
      Entries::reportAdded(matrix_, phrase);
    }
  }

  void reportUnexpected(bool isWritten, int handle, const int* items, int length) {
    if (isWritten) {
      dbPrintf(0, "getSymbolsFromLongAnsi..(): symbol with handle %d not exist unexpected\n", handle);
    } else {
      dbPrintf(0, "getSymbolsFromLongAnsi..(): matrix element not exist unexpected\n");
    }
    printItems(matrix_, items, length, 0);
  }

  ZQMatrix& matrix_;
  Collection& collection_;
  int numberOfUnknown_ = 0;
  int numberOfLineFeeds_ = 0;
};

template <class Entries>
int* collectFromText(ZQMatrix& matrix, const int* sequence, int length, int* count, int* numberOfUnknown,
                     int* numberOfPredefined) {
  *count = *numberOfUnknown = *numberOfPredefined = 0;
  Collection collection(matrix, sequence, length);
  int numberOfWords = 0;
  const SystemOwned<int> markers(
      matrix.getSymbolMarkersFromPreProcessedCombinedSequence(collection.sequence(), collection.length(), &numberOfWords));
  if (markers == nullptr || !collection.hasRoom()) {
    dbPrintf(0, "getSymbolsFromLongAnsi..(): symbolMarkers = NULL\n");
    return nullptr;
  }
  snprintf(globalProgressData.progressText, sizeof globalProgressData.progressText, "getSymbolsFromANSISequence: (%d) items",
           collection.length());
  TextWalk<Entries> walk(matrix, collection);
  walk.run(markers.get());
  *count = collection.count();
  *numberOfUnknown = walk.numberOfUnknown();
  *numberOfPredefined = walk.numberOfLineFeeds();
  return collection.take();
}

// --- the longest known phrases of any sequence

/// The longest phrase with a symbol at the begin of `items`, all of whose beginnings are written; of length 0 if there is none.
/// Walks down one item at a time.
template <class Entries>
SymbolPhrase longestPhraseWithSymbol(ZQMatrix& matrix, const int* items, int numberOfItems, int coordinateDimension) {
  const int highest = matrix.getMatrixInfo()->getMaximalMatrixIndex();
  SymbolPhrase longest = {0, -1, items, 0};
  int handle = matrix.getCurrentMatrixID();
  for (int known = 0; known < numberOfItems; ++known) {
    const int length = (known + 1) * coordinateDimension;
    handle = matrix.handleOneItemBelow(handle, items + static_cast<ptrdiff_t>(known) * coordinateDimension, length);
    const auto* element = matrix.getMatrixElementFromMatrixHandle(handle);
    if (element == nullptr) break;
    if (element->getSymbolID() > 0) {
      if (exceeds(element->getSymbolID(), highest)) {
        Entries::reportTooHigh(element->getSymbolID(), highest);
      } else {
        longest = {element->getSymbolID(), handle, items, length};
        Entries::reportFound(matrix, longest);
      }
    } else if (element->getOffsetToElementInNextDimension() == 0 || element->getWriteCount() < 1) {
      break;
    }
  }
  return longest;
}

template <class Entries>
int* collectFromAnything(ZQMatrix& matrix, const int* sequence, int length, int* count) {
  *count = 0;
  Collection collection(matrix, sequence, length);
  const int coordinateDimension = matrix.getMatrixInfo()->getCoordinateDimension();
  if (!collection.hasRoom() || coordinateDimension < 1) return nullptr;
  const int numberOfItems = collection.length() / coordinateDimension;
  Entries::beginProgress(numberOfItems);
  for (int start = 0; start < numberOfItems;) {
    Entries::progress(start, numberOfItems);
    const int* items = collection.sequence() + static_cast<ptrdiff_t>(start) * coordinateDimension;
    const SymbolPhrase found = longestPhraseWithSymbol<Entries>(matrix, items, numberOfItems - start, coordinateDimension);
    if (found.length < 1) {
      ++start;
      continue;
    }
    const int end = start + found.length / coordinateDimension - 1;
    if (end < start) Entries::reportDisorder();
    collection.add(Entries::of(found));
    start = end + 1;
  }
  *count = collection.count();
  return collection.take();
}

/// Collects by the matrix type of the current sub-matrix; MIDI pairs have no symbols.
template <class Entries>
int* collectByType(ZQMatrix& matrix, const int* sequence, int length, int* count, int* numberOfUnknown, int* numberOfPredefined) {
  *count = *numberOfUnknown = *numberOfPredefined = 0;
  switch (matrix.getMatrixInfo()->getMatrixType()) {
    case ZQMatrixTypeMIDINoteAndQuanta:
      return nullptr;
    case ZQMatrixTypeANSIText:
      return collectFromText<Entries>(matrix, sequence, length, count, numberOfUnknown, numberOfPredefined);
    default:
      return collectFromAnything<Entries>(matrix, sequence, length, count);
  }
}

}  // namespace

int* ZQMatrix::getSymbolsFromLongANSISequence(const int* sequence, int length, int* numberOfSymbols, int* numberOfUnknownSymbols,
                                              int* numberOfPredefinedSymbols) {
  return collectFromText<SymbolEntries>(*this, sequence, length, numberOfSymbols, numberOfUnknownSymbols,
                                        numberOfPredefinedSymbols);
}

int* ZQMatrix::getSymbolHandlesFromLongANSISequence(const int* sequence, int length, int* numberOfSymbols,
                                                    int* numberOfUnknownSymbols, int* numberOfPredefinedSymbols) {
  return collectFromText<HandleEntries>(*this, sequence, length, numberOfSymbols, numberOfUnknownSymbols,
                                        numberOfPredefinedSymbols);
}

int* ZQMatrix::getSymbolsFromAnyLongSequence(const int* sequence, int length, int* numberOfSymbols) {
  return collectFromAnything<SymbolEntries>(*this, sequence, length, numberOfSymbols);
}

int* ZQMatrix::getSymbolHandlesFromAnyLongSequence(const int* sequence, int length, int* numberOfSymbols) {
  return collectFromAnything<HandleEntries>(*this, sequence, length, numberOfSymbols);
}

int* ZQMatrix::deriveSymbols(const int* sequence, int length, int* numberOfSymbols, int* numberOfUnknownSymbols,
                             int* numberOfPredefinedSymbols) {
  return collectByType<SymbolEntries>(*this, sequence, length, numberOfSymbols, numberOfUnknownSymbols,
                                      numberOfPredefinedSymbols);
}

int* ZQMatrix::getNextLevelSymbolsFromOriginalObjects(const int* sequence, int length, int* numberOfSymbols,
                                                      int* numberOfUnknownSymbols, int* numberOfPredefinedSymbols) {
  dbPrintf(3, "start getSymbolsFromOriginalObjects() for sequence with %d items...\n", length);
  int* symbols = deriveSymbols(sequence, length, numberOfSymbols, numberOfUnknownSymbols, numberOfPredefinedSymbols);
  dbPrintf(3, "finshed getNextLevelSymbolsFromLongOriginalObjexts()\n");
  return symbols;
}

int* ZQMatrix::getNextLevelSymbolHandlesFromOriginalObjects(const int* sequence, int length, int* numberOfSymbols,
                                                            int* numberOfUnknownSymbols, int* numberOfPredefinedSymbols) {
  return collectByType<HandleEntries>(*this, sequence, length, numberOfSymbols, numberOfUnknownSymbols,
                                      numberOfPredefinedSymbols);
}
