// Learning files of music by one of the two readings. look() is called for all files before the first is learned.
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

  /// Determines what will be learned of a file and what will be left out.
  virtual void look(const InputFile& input, const Matrix::MusicSettings& settings) = 0;
  virtual void learn(Matrix& matrix, const InputFile& input) = 0;
  /// Prints what was left out of the files.
  virtual void printOmissions() const = 0;
  /// Why nothing was learned, the reasons separated by semicolons; empty if there are none.
  virtual std::string reasons() const = 0;

  /// The kinds of tracks or runs that look() found; each needs a sub-matrix of its own.
  const std::set<std::string>& kinds() const { return kinds_; }

 protected:
  std::set<std::string> kinds_;
};

std::unique_ptr<MusicLearning> makeClassicLearning();
std::unique_ptr<MusicLearning> makeScoreLearning(const ReadingOptions& options);
