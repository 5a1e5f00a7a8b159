// What a verb learns and continues: texts, music or numbers, a class each (TextMaterial, MusicMaterial, NumberMaterial), so that
// verbs say what is done and materials how.
#pragma once

#include <memory>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "Inputs.h"
#include "Matrix.h"
#include "Options.h"
#include "Output.h"
#include "Progress.h"

/// What will be said next, chosen and ready to be written.
class Continuation {
 public:
  virtual ~Continuation() = default;
  /// For the line that says what is continued.
  virtual std::string description() const = 0;
  /// Writes the start and what comes next. To be called once.
  virtual void write(Output& output, Progress& progress) = 0;
};

class Material {
 public:
  /// Throws a Failure for options that don't fit the subject or each other. The options have to live as long.
  static std::unique_ptr<Material> of(Subject subject, const LearningOptions& options);
  virtual ~Material() = default;

  /// Refuses a result that its output can't take, before anything is learned.
  virtual void requireFitting(const Output&) const {}
  /// An empty matrix, made ready for these inputs. Throws a Failure if they can't be learned in this way.
  virtual std::unique_ptr<Matrix> makeMatrix(const std::vector<InputFile>& inputs, Loudness loudness) = 0;
  /// Throws a Failure for options that a matrix which has learned before can't take, and lets it have the others.
  virtual void adjust(Matrix& matrix, const std::vector<InputFile>& inputs) = 0;
  /// Returns the ID that learned the file; -1 if none did, or not one alone.
  virtual int learn(Matrix& matrix, const InputFile& input) = 0;
  /// Says on standard error what of the inputs was left out, and why.
  virtual void tellOmissions() const {}
  /// Why nothing was learned.
  virtual std::string nothingLearned() const = 0;
  /// What the matrix holds, in the subject's unit: "1200 items".
  virtual std::string amountIn(Matrix& matrix) const = 0;
  /// What stands beside "tier" in the description of a model: the level, or the coding.
  virtual void describe(Matrix& matrix, nlohmann::ordered_json& description) const = 0;
  /// A line for each sub-matrix where there may be many, for people; empty for subjects that have few.
  virtual nlohmann::ordered_json overview(Matrix&) const { return nlohmann::ordered_json::array(); }
  /// Throws a Failure if there is nothing to continue, or if the options don't fit. They have to live as long.
  virtual std::unique_ptr<Continuation> continuation(Matrix& matrix, const GenerationOptions& options) const = 0;
};

/// The subject of what a matrix holds. One of the base tier, or one that is empty, counts as texts.
Subject subjectOf(Matrix& matrix);

std::unique_ptr<Material> makeTextMaterial(const LearningOptions& options);
std::unique_ptr<Material> makeMusicMaterial(const LearningOptions& options);
std::unique_ptr<Material> makeNumberMaterial(const LearningOptions& options);

/// True if an option was given that is for one subject, or for two of the three.
bool isLimitedToASubject(const LearningOptions& options);

/// Throws a Failure if an option was given that only the continuation of a text has.
void refuseTextOptions(const GenerationOptions& options, const char* subject);

/// Throws the Failure of an option that a model which has learned before can't take.
[[noreturn]] void refuseUpdate(const std::string& reason);
/// Refuses an update with another coding than the model's, of which null is one that the command has no name for.
void requireCoding(const std::optional<std::string>& wanted, const char* ofModel);

/// "1 file", "3 files".
std::string countOf(long long number, const std::string& noun);
