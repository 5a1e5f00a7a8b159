// `zmatrix check`: learns files or loads a model, runs the self-tests and prints counters.
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
#include "ModelFile.h"
#include "Options.h"
#include "Output.h"
#include "Progress.h"
#include "Reopenable.h"
#include "Statistics.h"
#include "TextFile.h"
#include "Verbs.h"

namespace {

struct CheckOptions {
  LearningOptions learning;
  MessageOptions messages;
  bool json = false;
};

const char* const examples = R"(
Two self-tests run on each sub-matrix that is not empty. The scan goes through all slots and follows each written element to its root; the
walk goes down from the root. Both recount and compare with the stored counters. If a test finds a fault, the exit code is 5.
A single INPUT may be a model file made by `zmatrix learn`; then that model is tested.

Examples:
  zmatrix check novel.txt
  zmatrix check novel.zmatrix
  zmatrix check letters/ --recursive --tier full --json | jq '.matrices[].elements'

)";

// The tests run before the statistics are read, because only the tests count the rules.
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

// The matrix to test, and the members of the report that say where it comes from.
struct Tested {  // NOLINT(bugprone-exception-escape): the destructor of Json allocates memory
  std::unique_ptr<Matrix> matrix;
  std::unique_ptr<Material> material;
  Json origin;
  std::map<int, int> unknownWords;  ///< words of the learned texts without a symbol, by matrix ID
};

bool namesAModel(const LearningOptions& options) {
  const auto model = std::find_if(options.inputs.begin(), options.inputs.end(),
                                  [](const std::string& input) { return isMatrixFile(reopenable(input)); });
  if (model == options.inputs.end()) return false;
  if (options.inputs.size() > 1)
    throw Failure{ExitCode::usage, *model + " is a model; it can't be checked together with other inputs"};
  if (options.tier || options.maxPhrase || options.recursive || options.as || isLimitedToASubject(options)) {
    throw Failure{ExitCode::usage, *model + " is a model; options for learning don't apply"};
  }
  return true;
}

Tested loadModel(const CheckOptions& options) {
  const std::string path = reopenable(options.learning.inputs[0]);
  Tested tested;
  tested.matrix = Matrix::load(path, options.messages.messageLevel());
  tested.material = Material::of(subjectOf(*tested.matrix), options.learning);
  std::error_code error;
  tested.origin = {{"file", path}, {"bytes", std::filesystem::file_size(path, error)}};
  if (const std::string damage = damageOf(*tested.matrix); !damage.empty()) {
    tested.origin["sound"] = false;
    tested.origin["damage"] = damage;
  }
  return tested;
}

Tested learnInputs(const CheckOptions& options, Progress& progress) {
  const std::vector<InputFile> inputs = findInputs(options.learning.inputs, options.learning.recursive, options.learning.as);
  Tested tested;
  tested.material = Material::of(subjectOf(inputs), options.learning);
  tested.matrix = tested.material->makeMatrix(inputs, options.messages.messageLevel());
  const std::vector<int> ids = learnFiles(*tested.material, *tested.matrix, inputs, progress, options.messages.quiet);
  std::uintmax_t bytes = 0;
  for (std::size_t at = 0; at < inputs.size(); ++at) {
    bytes += inputs[at].size;
    if (inputs[at].kind != Kind::text || tested.matrix->tier() != Tier::full || ids[at] < 0) continue;
    tested.unknownWords[ids[at]] +=
        tested.matrix->countUnknownWords(ids[at], readText(inputs[at], options.learning.encoding, true).items);
  }
  tested.origin = {{"files", inputs.size()}, {"bytes", bytes}};
  return tested;
}

Json reportOf(const Tested& tested, Progress& progress) {
  Matrix& matrix = *tested.matrix;
  Json report = {{"tier", nameOf(matrix.tier())}, {"subject", nameOf(subjectOf(matrix))}};
  tested.material->describe(matrix, report);
  report["sound"] = true;
  report.update(tested.origin);
  Json matrices = Json::array();
  for (int id = 0; id < matrix.numberOfIDs(); ++id) {
    if (!matrix.isOccupied(id)) continue;
    progress.show("testing", static_cast<double>(id) / matrix.numberOfIDs());
    Json statistics = testedStatistics(matrix, id);
    if (!statistics["scan_sound"] || !statistics["walk_sound"]) report["sound"] = false;
    if (tested.unknownWords.count(id) != 0) statistics["unknown_symbols"] = tested.unknownWords.at(id);
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
  Progress progress(options.messages.showsProgress(), "");
  const Tested tested = isOfModel ? loadModel(options) : learnInputs(options, progress);
  const Json report = reportOf(tested, progress);
  progress.clear();
  output.write(options.json ? jsonText(report) : tableOfReport(report));
  output.commit();
  if (report["matrices"].empty() && !isOfModel) throw Failure{ExitCode::badInput, tested.material->nothingLearned()};
  if (!report["sound"])
    throw Failure{ExitCode::damaged, "the matrix is damaged: " + report.value("damage", "a self-test found faults")};
}

}  // namespace

void addCheckVerb(CLI::App& app) {
  const auto options = std::make_shared<CheckOptions>();
  CLI::App* verb = app.add_subcommand("check", "Learn files or load a model, and run the self-tests");
  addLearningOptions(*verb, options->learning,
                     "Files of one kind (text, MIDI and kern, numbers), folders of them, or one model file; - is standard input");
  verb->add_flag("--json", options->json, "Print JSON instead of a table");
  addMessageOptions(*verb, options->messages);
  verb->footer(std::string(examples) + exitCodes);
  verb->callback([options] { runCheck(*options); });
}
