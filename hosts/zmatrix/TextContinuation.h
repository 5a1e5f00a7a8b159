// Continuing a text: choosing the sub-matrix that knows the start best, and writing what that says.
#pragma once

#include "Material.h"

class TextContinuation : public Continuation {
 public:
  /// Chooses the sub-matrix that knows the longest ending of the start, of equals the one that learned most. Throws a Failure if
  /// no text was learned, or no words where words are wanted.
  TextContinuation(Matrix& matrix, Level level, const GenerationOptions& options);

  /// The language.
  std::string description() const override { return languageOf(matrix_.record(id_)); }
  void write(Output& output, Progress& progress) override;

 private:
  void goTo(int id);
  std::vector<int> nextWord();

  Matrix& matrix_;
  Level level_;
  const GenerationOptions& options_;
  const std::vector<int> start_;
  TextEncoder encoder_;
  int id_ = -1;              ///< the sub-matrix of the letters
  bool needsBlank_ = false;  ///< between the word written last and the next
};
