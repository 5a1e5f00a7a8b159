// Learning files of music by one of the two readings: what will come of them is known before the first is learned.
#pragma once

#include <map>
#include <memory>
#include <set>
#include <string>

#include "Inputs.h"
#include "Material.h"
#include "Matrix.h"
#include "Reading.h"
#include "Talk.h"

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
  using Counts = std::map<std::string, long long>;  ///< by reason

  static void tell(const Counts& counts, const char* noun) {
    for (const auto& [reason, count] : counts) note("left out " + countOf(count, noun) + ": " + reason);
  }
  static void addReasons(std::string& why, const Counts& counts, const char* noun) {
    for (const auto& [reason, count] : counts) why += (why.empty() ? "" : "; ") + countOf(count, noun) + ": " + reason;
  }

  std::set<std::string> kinds_;
};

std::unique_ptr<MusicLearning> makeClassicLearning();
std::unique_ptr<MusicLearning> makeScoreLearning(const ReadingOptions& options);
