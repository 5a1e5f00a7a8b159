// Continuing a text: choosing the sub-matrix that knows the start best, writing what it says, and telling what was written.
#pragma once

#include <memory>

#include "CopiedRuns.h"
#include "Material.h"
#include "Talk.h"
#include "TextEnd.h"
#include "TextSource.h"

class TextContinuation : public Continuation {
 public:
  /// Chooses the sub-matrix that knows the longest ending of the start, of equals the one that learned most. Throws a Failure if
  /// no text was learned, or no words where words are wanted, or if a text to compare with can't be read.
  TextContinuation(Matrix& matrix, Level level, const GenerationOptions& options);

  /// The language.
  std::string description() const override { return languageOf(matrix_.record(id_)); }
  void write(Output& output, Progress& progress) override;

 private:
  void choose();
  std::string remark() const;
  void report() const;
  void goTo(int id, const std::vector<int>& start);
  bool isMeasured() const { return isVerbose() || options_.json || !options_.against.empty(); }
  std::unique_ptr<TextSource> source(SureCopies* copies);
  void put(const std::vector<int>& characters, Output& output);
  long long mostPieces() const;
  CopiedRuns::Shares compareWithTexts();
  std::string json() const;

  Matrix& matrix_;
  Level level_;
  const GenerationOptions& options_;
  std::vector<int> start_;
  TextEncoder encoder_;
  std::vector<int> context_;  ///< what of the start decides how it goes on
  int id_ = -1;               ///< the sub-matrix of the letters
  int known_ = 0;             ///< how many letters or words of the context it knows

  TextEnd end_;
  long long pieces_ = 0;      ///< letters or words written
  std::vector<int> written_;  ///< behind the start, as far as it is compared
  std::string text_;          ///< for JSON
  CopiedRuns::Shares copied_{};
};
