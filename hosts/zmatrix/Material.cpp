#include "Material.h"

#include <utility>

#include "Failure.h"

namespace {

struct SubjectOption {
  const char* name;
  bool isGiven;
  std::vector<Subject> subjects;
};

std::vector<SubjectOption> subjectOptions(const LearningOptions& options) {
  return {{"--level", options.level.has_value(), {Subject::texts}},
          {"--max-words", options.maxWords.has_value(), {Subject::texts}},
          {"--encoding", options.encoding.has_value(), {Subject::texts}},
          {"--coding", options.coding.has_value(), {Subject::music, Subject::numbers}},
          {"--grid", options.grid.has_value(), {Subject::music}},
          {"--duration-grid", options.durationGrid.has_value(), {Subject::music}},
          {"--tracks", options.tracks.has_value(), {Subject::music}},
          {"--skip-channel", !options.skippedChannels.empty(), {Subject::music}},
          {"--reading", options.reading.reading.has_value(), {Subject::music}},
          {"--grace-quanta", options.reading.graceQuanta.has_value(), {Subject::music}},
          {"--no-percussion", options.reading.leavesOutPercussion, {Subject::music}},
          {"--ocron-type", options.ocronType.has_value(), {Subject::numbers}},
          {"--max-index", options.maxIndex.has_value(), {Subject::numbers}},
          {"--skip-bad", options.skipsBad, {Subject::numbers}}};
}

// Throws a Failure that names the first given option of another subject.
void requireOptionsOf(Subject subject, const LearningOptions& options) {
  for (const SubjectOption& option : subjectOptions(options)) {
    bool fits = !option.isGiven;
    for (const Subject allowed : option.subjects) fits = fits || allowed == subject;
    if (!fits) throw Failure{ExitCode::usage, std::string(option.name) + " does not apply to " + nameOf(subject)};
  }
}

}  // namespace

std::unique_ptr<Material> Material::of(Subject subject, const LearningOptions& options) {
  requireOptionsOf(subject, options);
  if (subject == Subject::music) return makeMusicMaterial(options);
  if (subject == Subject::numbers) return makeNumberMaterial(options);
  return makeTextMaterial(options);
}

Subject subjectOf(Matrix& matrix) {
  for (int id = 0; id < matrix.numberOfIDs(); ++id) {
    if (!matrix.isOccupied(id)) continue;
    const ZQMatrixProperties& record = matrix.record(id);
    if (record.matrixType == ZQMatrixTypeANSIText) return Subject::texts;
    if (record.matrixType == ZQMatrixTypeIntegerSeries) {
      // with a level below it, the series are symbols of words
      if (matrix.tier() != Tier::full || record.currentMatrixIDLevelDown < 0) return Subject::numbers;
    }
    if (record.matrixType == ZQMatrixTypeMIDINoteAndQuanta || record.matrixType == ZQMatrixTypeMIDITriple_NDMT ||
        record.matrixType == ZQMatrixTypeMIDIGMQuadruple_NDMTS) {
      return Subject::music;
    }
  }
  return Subject::texts;
}

bool isLimitedToASubject(const LearningOptions& options) {
  for (const SubjectOption& option : subjectOptions(options)) {
    if (option.isGiven) return true;
  }
  return false;
}

void refuseTextOptions(const GenerationOptions& options, const char* subject) {
  const std::pair<const char*, bool> given[] = {
      {"--level", options.level.has_value()},       {"--sentences", options.sentences.has_value()},
      {"--lines", options.lines.has_value()},       {"--against", !options.against.empty()},
      {"--encoding", options.encoding.has_value()}, {"--json", options.json}};
  for (const auto& [name, isGiven] : given) {
    if (isGiven) throw Failure{ExitCode::usage, std::string(name) + " does not apply to " + subject};
  }
}

void refuseUpdate(const std::string& reason) {
  throw Failure{ExitCode::usage, reason + "; without --update a new model is made"};
}

std::string countOf(long long number, const std::string& noun) {
  return std::to_string(number) + " " + noun + (number == 1 ? "" : "s");
}
