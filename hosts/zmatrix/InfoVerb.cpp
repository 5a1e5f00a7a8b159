// `zmatrix info`: what stands in a model file: header, records, history.
#include <filesystem>
#include <memory>
#include <string>

#include "Material.h"
#include "ModelFile.h"
#include "Options.h"
#include "Output.h"
#include "Reopenable.h"
#include "Statistics.h"
#include "Verbs.h"

namespace {

struct InfoOptions {
  std::string model;
  bool json = false;
  TalkOptions talk;
};

const char* const examples = R"(
Of music the table has a line for each sub-matrix, --json everything. Counts of rules are those of the last self-test, if there was one; `zmatrix check MODEL` tests the model and counts anew.

Examples:
  zmatrix info novel.zmatrix
  zmatrix info novel.zmatrix --json | jq '.history[].file'

)";

Json describe(Matrix& matrix, const std::string& path) {
  std::error_code error;
  const Matrix::Header header = matrix.header();
  Json result = {{"file", path},
                 {"bytes", std::filesystem::file_size(path, error)},
                 {"tier", nameOf(matrix.tier())},
                 {"subject", nameOf(subjectOf(matrix))}};
  const LearningOptions none;
  const std::unique_ptr<Material> material = Material::of(subjectOf(matrix), none);
  material->describe(matrix, result);
  if (const std::string damage = damageOf(matrix); !damage.empty()) result["damage"] = damage;
  result["description"] = header.description;
  result["format_version"] = header.formatVersion;
  result["updates"] = header.updates;
  result["ids_reserved"] = matrix.numberOfIDs();
  result["ids_in_use"] = header.idsInUse;
  result.update(sizeOf(matrix));
  const Json overview = material->overview(matrix);
  if (!overview.empty()) result["tracks"] = overview;
  result["matrices"] = Json::array();
  for (int id = 0; id < matrix.numberOfIDs(); ++id) {
    if (!matrix.isOccupied(id)) continue;
    Json record = statisticsOf(matrix.record(id), matrix.tier());
    if (record.value("rule_elements", 0) == 0) {  // no self-test has counted them
      for (const char* count : {"rule_elements", "unique_rules", "overdetermined_rules"}) record.erase(count);
    }
    record.update(settingsOf(matrix.record(id), matrix.tier()));
    result["matrices"].push_back(record);
  }
  result["history"] = Json::array();
  for (const ZQMatrixProperties* record : matrix.history()) result["history"].push_back(historyEntryOf(*record, matrix.tier()));
  return result;
}

// Of music, which has many sub-matrices, a line each; of others everything.
std::string tableOf(Json description) {
  const Json tracks = description.value("tracks", Json::array());
  description.erase("tracks");
  Json matrices = description["matrices"];
  const Json history = description["history"];
  description.erase("matrices");
  description.erase("history");
  std::string files;
  for (Json& matrix : matrices) {
    for (const Json& file : matrix.value("files_learned", Json::array())) {
      files += matrix["id"].dump() + "  " + file.get<std::string>() + "\n";
    }
    matrix.erase("files_learned");
  }
  std::string text = membersOf(description);
  if (!tracks.empty())
    return text + "\n" + linesOf(tracks) + (history.empty() ? "" : "\nhistory, the oldest first:\n" + linesOf(history));
  if (!matrices.empty()) text += "\n" + columnsOf(matrices);
  if (!files.empty()) text += "\nfiles learned, by the ID that learned them:\n" + files;
  if (!history.empty()) text += "\nhistory, the oldest first:\n" + linesOf(history);
  return text;
}

void runInfo(const InfoOptions& options) {
  keepStandardOutputForResults();
  const std::string path = reopenable(options.model);
  const std::unique_ptr<Matrix> matrix = Matrix::load(path, options.talk.loudness());
  warnIfDamaged(*matrix, nameOfArgument(options.model));
  Output output("");
  const Json description = describe(*matrix, path);
  output.write(options.json ? jsonText(description) : tableOf(description));
  output.commit();
}

}  // namespace

void addInfoVerb(CLI::App& app) {
  const auto options = std::make_shared<InfoOptions>();
  CLI::App* verb = app.add_subcommand("info", "Tell what a model file holds");
  verb->add_option("MODEL", options->model, "A matrix file of any tier; - is standard input")->required()->option_text(" ");
  verb->add_flag("--json", options->json, "Print JSON instead of tables");
  addTalkOptions(*verb, options->talk);
  verb->footer(std::string(examples) + exitCodes);
  verb->callback([options] { runInfo(*options); });
}
