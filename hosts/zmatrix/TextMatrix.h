// A matrix that learns texts, for the verbs that do. The tier is a table of the flat functions it needs, so that another tier is
// another table. A matrix holds texts of different languages in different sub-matrices, each under an ID of its own.
#pragma once

#include <zmatrix/zmatrix.h>

#include <memory>
#include <string>
#include <vector>

#include "Failure.h"

/// What the flat interface calls the medium tier: sequences, no symbols.
struct MediumTier {
  using Matrix = ZQMatrixMedium;
  static constexpr auto create = createAndInitMatrixMediumWithDebugParameters;
  static constexpr auto destroy = deleteMatrixMedium;
  static constexpr auto setTextProfile = s_setGlobalDefaultMatrixPropertiesForANSIText_Medium;
  static constexpr auto setPhraseLimit = s_setGlobalMaxPhraseLengthForUpdateWithSequence_Medium;
  static constexpr auto setSuccessorMethod = s_setGlobalSuccessorMethod_Medium;
  static constexpr auto learnFile = s_updateMatrixWithANSIFile_Medium;
  static constexpr auto maximalNumberOfIDs = s_getMaxNumberOfMatrices_Medium;
  static constexpr auto currentID = s_getCurrentMatrixID_Medium;
  static constexpr auto setCurrentID = s_setCurrentMatrixID_Medium;
  static constexpr auto language = s_getLanguage_Medium;
  static constexpr auto elementAt = s_getMatrixElementFromMatrixHandle_Medium;
  static constexpr auto itemsBehind = s_getWriteCountWithSuccessorFromElement_Medium;
  static constexpr auto setRandomValue = s_setSuccessorRandomValue_Medium;
  static constexpr auto setContext = s_initializeKernelSequenceWithOriginalSequence_Medium;
  static constexpr auto lengthOfContext = s_getLengthOfKernelPreprocessedSequence_Medium;
  static constexpr auto nextItem = s_readObjexFromMatrix_Medium;
};

/// How the next item is chosen, in the numbers of the flat interface.
enum class Method { best = 1, middle = 2, random = 3 };

/// How loud the library is: its level of messages, -1 for silence.
struct Loudness {
  int level;
};

template <class Tier>
class TextMatrix {
 public:
  TextMatrix(Loudness loudness, int phraseLimit, Method method)
      : matrix_(Tier::create(loudness.level < 0 ? 0 : 1, loudness.level, ""), Tier::destroy) {
    if (!matrix_) throw Failure{ExitCode::limit, "no memory for a matrix"};
    Tier::setTextProfile(matrix_.get());
    Tier::setPhraseLimit(matrix_.get(), phraseLimit);
    Tier::setSuccessorMethod(matrix_.get(), static_cast<int>(method));
  }

  void learn(const std::string& path) {
    int length = 0;
    if (Tier::learnFile(matrix_.get(), path.c_str(), &length) < 1) {
      throw Failure{ExitCode::limit,
                    "the matrix could not take all of " + path + ": fewer texts or a smaller --max-phrase need less"};
    }
  }

  int numberOfIDs() const { return Tier::maximalNumberOfIDs(matrix_.get()); }

  /// Items that the sub-matrix of this ID has learned: about one a byte of text. The root counts them, and its handle is the ID.
  long long itemsLearned(int id) const {
    auto* root = Tier::elementAt(matrix_.get(), id);
    return root == nullptr ? 0 : Tier::itemsBehind(root);
  }

  /// The same of all sub-matrices together. May be asked while a text is being learned.
  long long itemsLearned() const {
    long long sum = 0;
    for (int id = 0; id < numberOfIDs(); ++id) sum += itemsLearned(id);
    return sum;
  }

  void select(int id) { Tier::setCurrentID(matrix_.get(), id); }

  const char* language() const {
    static const char* const names[] = {"unknown language", "German", "English"};
    const int language = Tier::language(matrix_.get());
    return names[language == 1 || language == 2 ? language : 0];
  }

  void seed(long long value) { Tier::setRandomValue(matrix_.get(), Tier::currentID(matrix_.get()), value); }

  /// Makes the text the context of what is generated next; returns how many of its last items the sub-matrix knows together.
  int setContext(const std::string& text) {
    std::vector<int> items;
    for (const char byte : text) items.push_back(static_cast<unsigned char>(byte));
    Tier::setContext(matrix_.get(), items.data(), static_cast<int>(items.size()), 1);
    return Tier::lengthOfContext(matrix_.get());
  }

  /// The next byte; at the end of a sequence a line feed, as the library's own writer has it.
  char generate() {
    double probability = 0;
    double stopProbability = 0;
    const int* item = Tier::nextItem(matrix_.get(), &probability, &stopProbability);
    return item == nullptr ? '\n' : static_cast<char>(*item);
  }

 private:
  std::unique_ptr<typename Tier::Matrix, decltype(Tier::destroy)> matrix_;
};
