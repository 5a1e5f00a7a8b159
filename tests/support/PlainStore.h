// A plain reference for the element store: a search looks at every slot on its way, a move copies records. The library uses an
// index of free slots and moves pointers; random scripts compare positions, counters, random draws and messages of both. One
// element record and one store class serve the three tiers.
#pragma once

#include <memory>
#include <string>
#include <vector>

namespace plain {

enum class Tier { base, medium, full };

struct Element {
  int writeCount = 0;
  long long value = 0;
  int index = 0;  // the coordinate
  int next = 0;   // offsets, all relative to the element's own slot
  int previous = 0;
  int child = 0;
  int parent = 0;
  int withSuccessor = 0;  // medium tier
  int withoutPredecessor = 0;
  int symbolID = 0;  // full tier
  int symbolDownLink = 0;
  bool operator==(const Element&) const = default;
};

/// One sub-matrix: its settings and counters.
struct Info {
  int memIsReadOnly = 0;
  int maximalMatrixIndex = 500000;
  int maxDimOfMatrix = 4096;
  int memorySearchMethod = 1;
  int coordinateDimension = 1;
  int currentDimension = 0;
  int internalCurrentDimension = 32;
  int writeEvents = 0;
  int deleteEvents = 0;
  int elements = 0;
  int writeElements = 0;
  int writeCounts = 0;
  int endElements = 0;
  int startElements = 0;
  int isOverDetermined = 1;
  int levelUp = -1;
  int symbols = 0;
  int newSymbol = 256;
  int keepSymbols = 1;
  std::vector<int> minimalIndices, maximalIndices, matrixPtr;
  Info();
  std::vector<int> counters() const { return {elements, writeElements, writeCounts, endElements, deleteEvents, writeEvents}; }
};

/// What the search keeps between calls. In the library all matrices of a thread share it, so tests set both.
struct SearchState {
  int firstFree = 4;
  int numberOfFunctionCalls = 0;
  int lastOffset = 4;
  int goodStartIndex = 4;
};

/// One step of the generator that all random values come from: the new state.
long long nextRandom(long long state);

struct Read {
  long long value = 0;
  int existCode = 0, writeCount = 0, withSuccessor = 0, withoutPredecessor = 0;
  bool operator==(const Read&) const = default;
};

class Store {
 public:
  explicit Store(Tier tierOfStore);

  // All state is public: tests compare it, and Sequence works on it.
  Tier tier;
  int maxNumberOfMatrices = 4;
  int currentMatrixID = 0;
  int blockSize = 64000;
  int blockSizeOld = 0;
  int maximalStack = 4;
  long long systemRandomValue = 31459;
  std::vector<std::unique_ptr<Element>> block;
  std::vector<Info> infos;
  SearchState search;
  std::string messages;  // those of level 0 and 1
  // How often each rare branch was taken, for tests that check which branches their scripts took.
  int moves = 0, growths = 0, growthsInSearch = 0, growthsInMove = 0, periodicScans = 0;

  Info& info() { return infos[static_cast<size_t>(currentMatrixID)]; }
  Element* at(int position) const { return block[static_cast<size_t>(position)].get(); }

  int write(const std::vector<int>& vector, long long value, int startFlag = 0, int endFlag = 0, int symbolMarker = 0);
  int exist(const int* vector, int length);
  int exist(const std::vector<int>& vector) { return exist(vector.data(), static_cast<int>(vector.size())); }
  Read read(const std::vector<int>& vector);
  int remove(const std::vector<int>& vector, int keepInnerElements);
  int setInitialMatrixBlocksize(int size);
  int expandMatrixBlock(int minimalSize);

  int handleOf(const int* vector, int length);
  int handleOf(const std::vector<int>& vector) { return handleOf(vector.data(), static_cast<int>(vector.size())); }
  int pathLength(int handle) const;
  std::vector<int> path(int handle) const;  // empty for what has no path
  std::vector<int> successors(int handle, bool onlyStarts = false);
  std::vector<int> objex(int handle);

  int isDetermined(const int* vector, int length);
  int isRule(int position);
  int removeOverDeterminedElements();
  int removeLongElements(int maximalLength);

  void print(int level, const char* format, ...) __attribute__((format(printf, 3, 4)));

 private:
  int positionOfFirst(int position) const;
  int positionOfLast(int position) const;
  int countField(int position, int* first, int* last) const;
  int ownerOf(int position) const;  // -1 for none
  int findNearestFreeMatrixElement(int method);
  int findIndexOfNearestFreeElement(int start, int* goodStart);
  int failedSearch(int* goodStart, int newGoodStart);
  int moveFieldToFreePosition(int method, int* fieldBegin, int* newElementIndex, int numberOfItems, int* firstElement,
                              int* lastElement, int moveWithNewIndex);
  int findOffset(int method, int newElementIndex, int numberOfItems, int first, int last, bool withIndex);
  bool offsetFits(int offset, int newElementIndex, int numberOfItems, int first, bool withIndex) const;
  void followSymbols(Element& element, int offset);
  bool placeChild(int& last, int& stackCandidate, int k);
  void insertFirst(int newPosition, int coordinate, int parentPosition);
  int insertExisting(int newPosition, int coordinate, int elementOfField);
  int checkMatrixDimension(int dimIndex);
  void clearMatrixElement(int position, int flag);
  int removeOverDeterminedPass();
  void markForRemoval(int position, int& result);
  std::vector<int> rootPath(int position, int limit, bool& reachedRoot) const;
};

}  // namespace plain
