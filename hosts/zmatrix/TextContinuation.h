// Continuing a text: choosing the sub-matrix, generating, and reporting on the result.
#pragma once

#include <memory>

#include "CopiedRuns.h"
#include "Material.h"
#include "Messages.h"
#include "TextEnd.h"
#include "TextSource.h"

class TextContinuation : public Continuation {
 public:
  /// Chooses the sub-matrix that knows the longest ending of the start; ties go to the one that learned most. Throws a Failure if
  /// no text was learned, if words are wanted but none were learned, or if a text of --against can't be read.
  TextContinuation(Matrix& matrix, Level level, const GenerationOptions& options);

  /// Names the language.
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
  long long mostItems() const;
  CopiedRuns::Shares compareWithTexts();
  std::string json() const;

  Matrix& matrix_;
  Level level_;
  const GenerationOptions& options_;
  std::vector<int> start_;
  TextEncoder encoder_;
  std::vector<int> context_;  ///< the part of the start that is used as the context
  int id_ = -1;               ///< the sub-matrix of the letters
  int known_ = 0;             ///< how many letters or words of the context it knows

  TextEnd end_;
  long long itemsWritten_ = 0;  ///< letters or words written
  std::vector<int> written_;    ///< the generated characters, the first million, for measuring copies
  std::string text_;            ///< for JSON
  CopiedRuns::Shares copied_{};
};
