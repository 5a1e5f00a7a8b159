// The interface between verbs and subjects. Verbs call a Material; TextMaterial, MusicMaterial and NumberMaterial implement it.
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

/// A continuation whose sub-matrix is chosen and whose start is read; write() generates it.
class Continuation {
 public:
  virtual ~Continuation() = default;
  /// What is continued, for a message.
  virtual std::string description() const = 0;
  /// Writes the start and the generated items. May be called once.
  virtual void write(Output& output, Progress& progress) = 0;
};

class Material {
 public:
  /// Throws a Failure for options that don't fit the subject. The options must outlive the Material.
  static std::unique_ptr<Material> of(Subject subject, const LearningOptions& options);
  virtual ~Material() = default;

  /// Throws a Failure if the output is unsuitable, such as a terminal for MIDI. Called before learning.
  virtual void requireFitting(const Output&) const {}
  /// An empty matrix prepared for these inputs. Throws a Failure if they can't be learned with these options.
  virtual std::unique_ptr<Matrix> makeMatrix(const std::vector<InputFile>& inputs, MessageLevel messageLevel) = 0;
  /// Applies the options to a matrix that has learned before. Throws a Failure for options that it can't change.
  virtual void adjust(Matrix& matrix, const std::vector<InputFile>& inputs) = 0;
  /// Returns the ID of the sub-matrix that learned the file; -1 if none or several did.
  virtual int learn(Matrix& matrix, const InputFile& input) = 0;
  /// Prints on stderr what was left out of the inputs, and why.
  virtual void printOmissions() const {}
  /// Why nothing was learned.
  virtual std::string nothingLearned() const = 0;
  /// The amount that the matrix has learned, in the unit of the subject: "1200 items".
  virtual std::string amountIn(Matrix& matrix) const = 0;
  /// Adds the subject's members to the description of a model: level, coding and the like.
  virtual void describe(Matrix& matrix, nlohmann::ordered_json& description) const = 0;
  /// For music, which has many sub-matrices, a row per sub-matrix; empty for other subjects.
  virtual nlohmann::ordered_json overview(Matrix&) const { return nlohmann::ordered_json::array(); }
  /// Throws a Failure if there is nothing to continue, or if the options don't fit. Matrix and options must outlive the result.
  virtual std::unique_ptr<Continuation> continuation(Matrix& matrix, const GenerationOptions& options) const = 0;
};

/// The subject of a matrix. A matrix of the base tier and an empty matrix count as texts.
Subject subjectOf(Matrix& matrix);

std::unique_ptr<Material> makeTextMaterial(const LearningOptions& options);
std::unique_ptr<Material> makeMusicMaterial(const LearningOptions& options);
std::unique_ptr<Material> makeNumberMaterial(const LearningOptions& options);

/// True if an option was given that doesn't apply to all subjects.
bool isLimitedToASubject(const LearningOptions& options);

/// Throws a Failure if an option was given that applies only to texts.
void refuseTextOptions(const GenerationOptions& options, const char* subject);

/// Throws the Failure of an option that can't be changed by --update.
[[noreturn]] void refuseUpdate(const std::string& reason);

/// "1 file", "3 files".
std::string countOf(long long number, const std::string& noun);
