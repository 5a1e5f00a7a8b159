// Continuing a start: choosing the sub-matrix that knows it best, and writing what that says.
#pragma once

#include "Matrix.h"
#include "Options.h"
#include "Output.h"
#include "Progress.h"

class Continuation {
 public:
  /// Chooses the sub-matrix that knows the longest ending of the start, of equals the one that learned most. Throws a Failure if
  /// no text was learned, or no words where words are wanted.
  Continuation(Matrix& matrix, Level level, const GenerationOptions& options);

  /// The sub-matrix of the letters.
  int id() const { return id_; }
  /// Writes the start and what comes next. To be called once.
  void write(Output& output, Progress& progress);

 private:
  void goTo(int id);
  std::string nextWord();

  Matrix& matrix_;
  Level level_;
  const GenerationOptions& options_;
  int id_ = -1;
  bool needsBlank_ = false;  ///< between the word written last and the next
};
