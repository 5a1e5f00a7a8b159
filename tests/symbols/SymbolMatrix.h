// A matrix that learns texts on both levels, with what its tests ask of it.
#pragma once

#include <string>
#include <vector>

#include "support/CapturedMessages.h"
#include "support/PlainWords.h"
#include "support/StoreInvariants.h"
#include "support/TestFolder.h"
#include "symbols/ZQMatrix.h"

/// A text of made-up words without structure, so that the fields of all their letters get in each other's way.
std::string unstructuredText(unsigned seed, int numberOfWords, int longestWord);

class SymbolMatrix {
 public:
  explicit SymbolMatrix(int phraseLimit = 64, int memorySearchMethod = 1);
  /// Takes a matrix over.
  explicit SymbolMatrix(ZQMatrix* aMatrix) : matrix(aMatrix) {}
  ~SymbolMatrix();
  SymbolMatrix(const SymbolMatrix&) = delete;
  SymbolMatrix& operator=(const SymbolMatrix&) = delete;

  ZQMatrix* operator->() { return matrix; }
  ZQMatrix* get() { return matrix; }

  /// Feeds a text as a file does; the result of the feed.
  int learn(const std::string& text);
  void select(int matrixID) { matrix->setCurrentMatrixID(matrixID); }

  struct Found {
    std::vector<int> entries;
    int numberOfUnknown = -1;
    int numberOfPredefined = -1;
  };
  /// What the basic level (the current one) makes of a text.
  Found symbolsOf(const std::string& text);
  Found handlesOf(const std::string& text);
  std::vector<int> symbolsOfAny(std::vector<int> sequence);

  /// A path element in the last used slot counts as outside the stack, so that a phrase below it can't be read back. This moves
  /// the end of the stack behind it.
  void raiseStack();
  /// The phrase of a symbol of the current sub-matrix.
  const std::string& folderPath() const { return folder.path(); }
  std::string phraseOf(int symbol);
  /// The words of symbols, as their handles have them. The current sub-matrix is the basic one.
  Words spell(const std::vector<int>& symbols);

  /// Empty if every phrase with a symbol is named by its symbol's handle, and numberOfSymbols counts them.
  std::string brokenLink();

 private:
  using Derive = int* (ZQMatrix::*)(const int*, int, int*, int*, int*);
  Found derive(Derive operation, const std::string& text);

  ZQMatrix* matrix;
  zmatrix::TestFolder folder;
};

/// The text as the library takes it: an integer a byte.
std::vector<int> valuesOf(const std::string& text);
