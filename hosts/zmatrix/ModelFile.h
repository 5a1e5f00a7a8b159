// The model file that `learn` writes. The library replaces it as a whole or not at all.
#pragma once

#include <string>

#include "Matrix.h"

class ModelFile {
 public:
  /// Throws a Failure if `path` can't be written, so that this is known before learning, or if it is a non-empty file that is not
  /// a model. A device, a pipe and standard output are allowed.
  explicit ModelFile(const std::string& path);

  const std::string& name() const { return name_; }

  /// Throws a Failure if the matrix can't be saved. An interrupt removes the temporary file. In both cases an existing file is
  /// unchanged.
  void save(Matrix& matrix);

 private:
  std::string name_;  ///< for messages
  std::string path_;
};

/// What is missing of a loaded model: "cut off, 120 of 400 elements missing"; empty if it is whole.
std::string damageOf(Matrix& matrix);

/// Prints on stderr what is missing of the model at `path`, unless --quiet is set.
void warnIfDamaged(Matrix& matrix, const std::string& path);

/// Throws a Failure if the model is damaged; with `isForced` only warns.
void requireWhole(Matrix& matrix, const std::string& path, bool isForced);
