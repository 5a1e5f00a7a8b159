// The file of a model: where `learn` puts what it learned. The library replaces it as a whole or not at all.
#pragma once

#include <string>

#include "Matrix.h"
#include "Options.h"

class ModelFile {
 public:
  /// Throws a Failure if nothing can be written at `path`, so that this is known before hours of learning, or if what is there is
  /// no model.
  explicit ModelFile(const std::string& path);

  /// Throws a Failure if the matrix could not be saved; an interrupt removes what was written so far. Either way the file that
  /// was there stands.
  void save(Matrix& matrix);

 private:
  std::string path_;
};

/// Says on standard error that a self-test found faults in what was loaded, unless the user wants quiet.
void warnOfDamage(const std::string& path, const TalkOptions& talk);
