// `zmatrix check`: learns text files, has the matrix test itself and prints what it holds.
#include <cstdio>
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

Examples:
  zmatrix check novel.txt
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

Json report(Matrix& matrix, const std::vector<InputFile>& inputs, Progress& progress) {
  std::uintmax_t bytes = 0;
  for (const InputFile& input : inputs) bytes += input.size;
  Json report = {{"tier", nameOf(matrix.tier())}, {"sound", true}, {"files", inputs.size()}, {"bytes", bytes}};
  Json matrices = Json::array();
  for (int id = 0; id < matrix.numberOfIDs(); ++id) {
    if (matrix.record(id).numberOfMatrixElements == 0) continue;
    progress.show("testing", static_cast<double>(id) / matrix.numberOfIDs());
    matrices.push_back(testedStatistics(matrix, id));
    if (!matrices.back()["scan_sound"] || !matrices.back()["walk_sound"]) report["sound"] = false;
  }
  report.update(sizeOf(matrix));
  report["matrices"] = matrices;
  return report;
}

std::string tableOfReport(Json report) {
  const Json matrices = report["matrices"];
  report.erase("matrices");
  return tableOf(Json::array({report})) + "\n" + tableOf(matrices);
}

void runCheck(const CheckOptions& options) {
  keepStandardOutputForResults();
  const std::vector<InputFile> inputs = findTextFiles(options.learning.inputs, options.learning.recursive);
  Output output("");
  Progress progress(options.talk.showsProgress());
  const std::unique_ptr<Matrix> matrix =
      Matrix::create(options.learning.tier, options.talk.loudness(), options.learning.maxPhrase);
  learnFiles(*matrix, inputs, progress);

  const Json result = report(*matrix, inputs, progress);
  progress.clear();
  output.write(options.json ? jsonText(result) : tableOfReport(result));
  output.commit();
  if (result["matrices"].empty()) throw Failure{ExitCode::badInput, "nothing to learn: the input holds no text"};
  if (!result["sound"]) throw Failure{ExitCode::damaged, "the matrix is damaged: a self-test found faults"};
}

}  // namespace

void addCheckVerb(CLI::App& app) {
  const auto options = std::make_shared<CheckOptions>();
  CLI::App* verb = app.add_subcommand("check", "Learn texts and let the matrix test itself");
  addLearningOptions(*verb, options->learning);
  verb->add_flag("--json", options->json, "Print JSON instead of a table");
  addTalkOptions(*verb, options->talk);
  verb->footer(std::string(examples) + exitCodes);
  verb->callback([options] { runCheck(*options); });
}
