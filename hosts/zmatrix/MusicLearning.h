// Learning files of music by one of the two readings: what will come of them is known before the first is learned.
#pragma once

#include <memory>
#include <set>
#include <string>

#include "Inputs.h"
#include "Matrix.h"
#include "Reading.h"

class MusicLearning {
 public:
  static std::unique_ptr<MusicLearning> of(Reading reading, const ReadingOptions& options);
  virtual ~MusicLearning() = default;

  /// Finds out what will be learned of a file and what not.
  virtual void look(const InputFile& input, const Matrix::MusicSettings& settings) = 0;
  virtual void learn(Matrix& matrix, const InputFile& input) = 0;
  /// Says what of the files was left out.
  virtual void tellOmissions() const = 0;
  /// Why nothing was learned, a reason after the other; empty for none.
  virtual std::string reasons() const = 0;

  /// What was seen that needs a sub-matrix of its own.
  const std::set<std::string>& kinds() const { return kinds_; }

 protected:
  std::set<std::string> kinds_;
};

std::unique_ptr<MusicLearning> makeClassicLearning();
std::unique_ptr<MusicLearning> makeScoreLearning(const ReadingOptions& options);
