// `zmatrix info`: prints the header, records and history of a model file.
#include <algorithm>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

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
  MessageOptions messages;
};

const char* const examples = R"(
--verbose adds the description that the library stores in the file. For music the table has one line per sub-matrix; --json prints
everything. Counts of rules are those of the last self-test and missing if there was none; `zmatrix check MODEL` recounts them.

Examples:
  zmatrix info novel.zmatrix
  zmatrix info novel.zmatrix --json | jq '.history[].file'

)";

// The library stores music with a description of the track before the name:
// "MatID0: 4/4, Monophon, Undefined, Piano (track1): tune.mid".
std::string nameWithoutFolder(const std::string& learned) {
  const std::size_t end = learned.rfind("MatID", 0) == 0 ? learned.find("): ") : std::string::npos;
  return std::filesystem::path(end == std::string::npos ? learned : learned.substr(end + 3)).filename().string();
}

// For example "learned from a.txt and 2 more files, last on 2026-11-22T00:15:10Z".
std::string summaryOf(const Json& matrices) {
  std::vector<std::string> files;
  std::string lastSaved;
  for (const Json& matrix : matrices) {
    lastSaved = std::max(lastSaved, matrix.value("saved", ""));
    for (const Json& file : matrix.value("files_learned", Json::array())) {
      const std::string name = nameWithoutFolder(file.get<std::string>());
      if (std::find(files.begin(), files.end(), name) == files.end()) files.push_back(name);
    }
  }
  if (matrices.empty()) return "learned nothing";
  if (files.empty()) return "saved on " + lastSaved;
  if (files.size() == 1) return "learned from " + files[0] + " on " + lastSaved;
  return "learned from " + files[0] + " and " + countOf(static_cast<long long>(files.size()) - 1, "more file") + ", last on " +
         lastSaved;
}

Json describe(Matrix& matrix, const std::string& path, bool isVerbose) {
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
  result["description"] = "";
  if (isVerbose) result["stored_description"] = header.description;
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
    if (record.value("rule_elements", 0) == 0) {  // no self-test has run
      for (const char* count : {"rule_elements", "unique_rules", "overdetermined_rules"}) record.erase(count);
    }
    record.update(settingsOf(matrix.record(id), matrix.tier()));
    result["matrices"].push_back(record);
  }
  result["description"] = summaryOf(result["matrices"]);
  result["history"] = Json::array();
  for (const ZQMatrixProperties* record : matrix.history()) result["history"].push_back(historyEntryOf(*record, matrix.tier()));
  return result;
}

// Music has many sub-matrices, so it gets one line per sub-matrix instead of the columns of all settings.
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
  const std::unique_ptr<Matrix> matrix = Matrix::load(path, options.messages.messageLevel());
  warnIfDamaged(*matrix, nameOfArgument(options.model));
  Output output("");
  const Json description = describe(*matrix, path, options.messages.verbose);
  output.write(options.json ? jsonText(description) : tableOf(description));
  output.commit();
}

}  // namespace

void addInfoVerb(CLI::App& app) {
  const auto options = std::make_shared<InfoOptions>();
  CLI::App* verb = app.add_subcommand("info", "Print what a model file holds");
  verb->add_option("MODEL", options->model, "A matrix file of any tier; - is standard input")->required()->option_text(" ");
  verb->add_flag("--json", options->json, "Print JSON instead of tables");
  addMessageOptions(*verb, options->messages);
  verb->footer(std::string(examples) + exitCodes);
  verb->callback([options] { runInfo(*options); });
}
