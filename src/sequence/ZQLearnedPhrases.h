// The phrases of one update: value, length and a copy of each, in the order in which they were processed. They are collected only
// if a caller asks for them.
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

  /// Makes room for all phrases of up to `longest` items. False, with a message, if memory runs out.
  bool provide(int numberOfItems, int longest);

  /// Copies the next phrase. False if there is no room.
  bool add(const int* phrase, int length) { return !wanted_ || addCopy(phrase, length); }

  /// Phrases are numbered from 0. A phrase that was not written has its length negated.
  void leaveOut(long long number) { setSign(number, -1); }
  void takeIn(long long number) { setSign(number, 1); }

  /// Hands all three arrays over to the caller, who frees them and each index vector.
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

/// The coordinates of a phrase as text, for a message.
std::string textOfPhrase(const int* phrase, int length);

}  // namespace zmatrix
