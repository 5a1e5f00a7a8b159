// The file of a model: where `learn` puts what it learned. The library replaces it as a whole or not at all.
#pragma once

#include <string>

#include "Matrix.h"

class ModelFile {
 public:
  /// Throws a Failure if nothing can be written at `path`, so that this is known before hours of learning, or if what is there is
  /// no model. A device, a pipe or standard output takes a model too.
  explicit ModelFile(const std::string& path);

  const std::string& name() const { return name_; }

  /// Throws a Failure if the matrix could not be saved; an interrupt removes what was written so far. Either way the file that
  /// was there stands.
  void save(Matrix& matrix);

 private:
  std::string name_;  ///< for messages
  std::string path_;
};

/// What is missing of a model that was loaded, in words: "cut off, 120 of 400 elements missing"; empty if it is whole.
std::string damageOf(Matrix& matrix);

/// Says on standard error what is missing of the model at `path`, unless the user wants quiet.
void warnIfDamaged(Matrix& matrix, const std::string& path);

/// The same where the user forces a verb to go on with what is left; else throws a Failure for a model that isn't whole.
void requireWhole(Matrix& matrix, const std::string& path, bool isForced);
