// `zmatrix check`: learns text files, or loads a model, has the matrix test itself and prints what it holds.
#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "Failure.h"
#include "Inputs.h"
#include "Learning.h"
#include "Options.h"
#include "Output.h"
#include "Progress.h"
#include "Statistics.h"
#include "Verbs.h"

namespace {

struct CheckOptions {
  LearningOptions learning;
  TalkOptions talk;
  bool json = false;
};

const char* const examples = R"(
Two tests run on each sub-matrix that holds anything: the scan goes through all slots and follows each element to its root, the
walk goes down from the root; both count anew and compare. Faults are told on standard error, and the run ends with code 5.
A single INPUT may be a model that `zmatrix learn` made: then that is tested.

Examples:
  zmatrix check novel.txt
  zmatrix check novel.zmatrix
  zmatrix check letters/ --recursive --tier full --json | jq '.matrices[].elements'

)";

// The tests come before the statistics, since the rules are counted by them alone.
Json testedStatistics(Matrix& matrix, int id) {
  const Matrix::TestResult scan = matrix.scan(id);
  const Matrix::TestResult walk = matrix.walk(id);
  Json statistics = statisticsOf(matrix.record(id), matrix.tier());
  for (const auto& [name, result] : {std::pair("scan", scan), std::pair("walk", walk)}) {
    statistics[std::string(name) + "_sound"] = result.isSound;
    statistics[std::string(name) + "_written_elements"] = result.writtenElements;
    statistics[std::string(name) + "_end_elements"] = result.endElements;
  }
  return statistics;
}

// The matrix to test, and what is said of where it comes from.
struct Subject {
  std::unique_ptr<Matrix> matrix;
  Json origin;
  std::map<int, int> unknownWords;  ///< of the texts that were learned, by the ID that learned them
};

bool namesAModel(const LearningOptions& options) {
  const auto model = std::find_if(options.inputs.begin(), options.inputs.end(), isMatrixFile);
  if (model == options.inputs.end()) return false;
  if (options.inputs.size() > 1) throw Failure{ExitCode::usage, *model + " is a model: it is tested alone"};
  if (options.tier || options.level || options.maxPhrase || options.maxWords || options.recursive) {
    throw Failure{ExitCode::usage, *model + " is a model: options for learning don't apply"};
  }
  return true;
}

Subject loadModel(const CheckOptions& options) {
  const std::string& path = options.learning.inputs[0];
  Subject subject;
  subject.matrix = Matrix::load(path, options.talk.loudness());
  std::error_code error;
  subject.origin = {{"file", path}, {"bytes", std::filesystem::file_size(path, error)}};
  return subject;
}

Subject learnTexts(const CheckOptions& options, Progress& progress) {
  const std::vector<InputFile> inputs = findTextFiles(options.learning.inputs, options.learning.recursive);
  Subject subject;
  subject.matrix = makeMatrix(options.learning, options.talk.loudness());
  const std::vector<int> ids = learnFiles(*subject.matrix, inputs, progress);
  std::uintmax_t bytes = 0;
  for (std::size_t at = 0; at < inputs.size(); ++at) {
    bytes += inputs[at].size;
    if (subject.matrix->tier() != Tier::full || ids[at] < 0) continue;
    subject.unknownWords[ids[at]] += subject.matrix->countUnknownWords(ids[at], readFile(inputs[at].path));
  }
  subject.origin = {{"files", inputs.size()}, {"bytes", bytes}};
  return subject;
}

Json reportOf(const Subject& subject, Progress& progress) {
  Matrix& matrix = *subject.matrix;
  Json report = {{"tier", nameOf(matrix.tier())}, {"level", matrix.hasWords() ? "words" : "letters"}, {"sound", true}};
  report.update(subject.origin);
  Json matrices = Json::array();
  for (int id = 0; id < matrix.numberOfIDs(); ++id) {
    if (!matrix.isOccupied(id)) continue;
    progress.show("testing", static_cast<double>(id) / matrix.numberOfIDs());
    Json statistics = testedStatistics(matrix, id);
    if (!statistics["scan_sound"] || !statistics["walk_sound"]) report["sound"] = false;
    if (subject.unknownWords.count(id) != 0) statistics["unknown_symbols"] = subject.unknownWords.at(id);
    matrices.push_back(statistics);
  }
  report.update(sizeOf(matrix));
  report["matrices"] = matrices;
  return report;
}

std::string tableOfReport(Json report) {
  const Json matrices = report["matrices"];
  report.erase("matrices");
  return membersOf(report) + "\n" + columnsOf(matrices);
}

void runCheck(const CheckOptions& options) {
  keepStandardOutputForResults();
  const bool isOfModel = namesAModel(options.learning);
  Output output("");
  Progress progress(options.talk.showsProgress());
  const Subject subject = isOfModel ? loadModel(options) : learnTexts(options, progress);
  const Json report = reportOf(subject, progress);
  progress.clear();
  output.write(options.json ? jsonText(report) : tableOfReport(report));
  output.commit();
  if (report["matrices"].empty() && !isOfModel) throw Failure{ExitCode::badInput, "nothing to learn: the input holds no text"};
  if (!report["sound"]) throw Failure{ExitCode::damaged, "the matrix is damaged: a self-test found faults"};
}

}  // namespace

void addCheckVerb(CLI::App& app) {
  const auto options = std::make_shared<CheckOptions>();
  CLI::App* verb = app.add_subcommand("check", "Learn texts, or load a model, and let the matrix test itself");
  addLearningOptions(*verb, options->learning, "Text files, folders whose .txt files are learned, or one model file");
  verb->add_flag("--json", options->json, "Print JSON instead of a table");
  addTalkOptions(*verb, options->talk);
  verb->footer(std::string(examples) + exitCodes);
  verb->callback([options] { runCheck(*options); });
}
