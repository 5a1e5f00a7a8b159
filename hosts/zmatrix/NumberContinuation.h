// Continuing a series of integers.
#pragma once

#include <optional>
#include <vector>

#include "Material.h"

/// The numbers of --start. Throws a Failure if it holds anything else.
std::vector<int> numbersOfStart(const std::string& start);

class NumberContinuation : public Continuation {
 public:
  /// Without a start it continues the series that was learned last. Throws a Failure if nothing was learned.
  NumberContinuation(Matrix& matrix, const GenerationOptions& options);

  /// Names the coding.
  std::string description() const override;
  void write(Output& output, Progress& progress) override;

 private:
  int nextNumber();
  int decodedNumber();
  int nextStoredItem();

  Matrix& matrix_;
  const GenerationOptions& options_;
  Matrix::NumberSettings settings_;
  std::vector<int> start_;
  std::vector<int> stored_;  ///< for arithmetic codings: the start and the items so far, as the matrix stores them
};
