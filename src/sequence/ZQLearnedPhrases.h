// The phrases of one update as a caller may want them handed out: value, length and a copy of each, in the order they were
// handled. They are only collected if a caller asks for them.
#pragma once

#include <memory>
#include <new>
#include <string>

#include "frame/ZQDebugChannel.h"

namespace zmatrix {

class ZQLearnedPhrases {
 public:
  explicit ZQLearnedPhrases(bool areWanted) : wanted_(areWanted) {}
  ~ZQLearnedPhrases();
  ZQLearnedPhrases(const ZQLearnedPhrases&) = delete;
  ZQLearnedPhrases& operator=(const ZQLearnedPhrases&) = delete;

  bool areWanted() const { return wanted_; }

  /// Room for all phrases of up to `longest` items. False, with its message, if there is none.
  bool provide(int numberOfItems, int longest);

  /// Copies the next phrase. False if there is no room.
  bool add(const int* phrase, int length) { return !wanted_ || addCopy(phrase, length); }

  /// A phrase that was left out has its length negated.
  void leaveOut(long long number) { setSign(number, -1); }
  void takeIn(long long number) { setSign(number, 1); }

  /// Gives all three arrays away; the caller frees them, each index vector too.
  void handOver(int** valuesOut, int** lengthsOut, int*** indexVectorsOut);

  bool hasRunOut() const { return ranOut_; }

 private:
  bool addCopy(const int* phrase, int length);
  void setSign(long long number, int sign);

  const bool wanted_;
  bool ranOut_ = false;
  long long capacity_ = 0;
  long long count_ = 0;
  int* values_ = nullptr;
  int* lengths_ = nullptr;
  int** indexVectors_ = nullptr;
};

/// The numbers of a phrase, for a detail message.
std::string textOfPhrase(const int* phrase, int length);

}  // namespace zmatrix
