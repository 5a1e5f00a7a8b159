// A matrix that learns texts on both levels, with queries for tests.
#pragma once

#include <string>
#include <vector>

#include "support/CapturedMessages.h"
#include "support/PlainWords.h"
#include "support/StoreInvariants.h"
#include "support/TestFolder.h"
#include "support/Vectors.h"
#include "symbols/ZQMatrix.h"

/// A text of random words, so that the fields of their letters collide.
std::string unstructuredText(unsigned seed, int numberOfWords, int longestWord);

class SymbolMatrix {
 public:
  explicit SymbolMatrix(int phraseLimit = 64, int memorySearchMethod = 1);
  /// Takes over a matrix.
  explicit SymbolMatrix(ZQMatrix* matrix) : matrix_(matrix) {}
  ~SymbolMatrix();
  SymbolMatrix(const SymbolMatrix&) = delete;
  SymbolMatrix& operator=(const SymbolMatrix&) = delete;

  ZQMatrix* operator->() { return matrix_; }
  ZQMatrix* get() { return matrix_; }

  /// Feeds a text from a file and returns the result of the feed.
  int learn(const std::string& text);
  void select(int matrixID) { matrix_->setCurrentMatrixID(matrixID); }

  struct Found {
    std::vector<int> entries;
    int numberOfUnknown = -1;
    int numberOfPredefined = -1;
  };
  /// The symbols of a text, or their handles, as the basic level finds them, which must be the current one.
  Found symbolsOf(const std::string& text);
  Found handlesOf(const std::string& text);
  std::vector<int> symbolsOfAny(std::vector<int> sequence);

  /// A path through the last used slot can't be read back, because that slot counts as outside the stack. This raises the end of
  /// the stack by one.
  void raiseStack();
  const std::string& folderPath() const { return folder_.path(); }
  /// The phrase of a symbol of the current sub-matrix.
  std::string phraseOf(int symbol);
  /// The phrases that the symbols link to. The current sub-matrix must be the basic one.
  Words spell(const std::vector<int>& symbols);

  /// Empty if each symbol links to its phrase and numberOfSymbols counts them; otherwise the first fault.
  std::string brokenLink();

 private:
  using Derive = int* (ZQMatrix::*)(const int*, int, int*, int*, int*);
  Found derive(Derive operation, const std::string& text);

  ZQMatrix* matrix_;
  zmatrix::TestFolder folder_;
};
