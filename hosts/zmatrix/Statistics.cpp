#include "Statistics.h"

#include <sys/resource.h>

#include <algorithm>
#include <cstring>
#include <ctime>
#include <sstream>
#include <vector>

namespace {

struct Number {
  const char* name;
  int ZQMatrixProperties::*field;
  Tier since;
};

const Number counters[] = {
    {"elements", &ZQMatrixProperties::numberOfMatrixElements, Tier::base},
    {"written_elements", &ZQMatrixProperties::numberOfWriteElements, Tier::base},
    {"write_counts", &ZQMatrixProperties::numberOfWriteCounts, Tier::base},
    {"write_events", &ZQMatrixProperties::numberOfMatrixWriteEvents, Tier::base},
    {"delete_events", &ZQMatrixProperties::numberOfMatrixDeleteEvents, Tier::base},
    {"end_elements", &ZQMatrixProperties::numberOfEndElements, Tier::base},
    {"start_elements", &ZQMatrixProperties::numberOfStartElements, Tier::medium},
    {"rule_elements", &ZQMatrixProperties::numberOfRuleElements, Tier::medium},
    {"unique_rules", &ZQMatrixProperties::numberOfUniqueRuleElements, Tier::medium},
    {"overdetermined_rules", &ZQMatrixProperties::numberOfOverDeterminedRules, Tier::medium},
    {"dimension", &ZQMatrixProperties::currentDimension, Tier::base},
    {"max_phrase", &ZQMatrixProperties::maxPhraseLengthForUpdateWithSequence, Tier::medium},
    {"updates", &ZQMatrixProperties::updateIndex, Tier::medium},
    {"symbols", &ZQMatrixProperties::numberOfSymbols, Tier::full},
    {"last_symbol", &ZQMatrixProperties::newSymbol, Tier::full},
    {"level_up", &ZQMatrixProperties::currentMatrixIDLevelUp, Tier::full},
    {"level_down", &ZQMatrixProperties::currentMatrixIDLevelDown, Tier::full},
};

const Number settings[] = {
    {"format_version", &ZQMatrixProperties::softwareVersion, Tier::base},
    {"matrix_type", &ZQMatrixProperties::matrixType, Tier::base},
    {"allow_large_indices", &ZQMatrixProperties::allowLargeIndices, Tier::base},
    {"coordinate_dimension", &ZQMatrixProperties::coordinateDimension, Tier::base},
    {"maximal_index", &ZQMatrixProperties::maximalMatrixIndex, Tier::base},
    {"max_dimension", &ZQMatrixProperties::maxDimOfMatrix, Tier::base},
    {"is_finalized", &ZQMatrixProperties::isFinalized, Tier::base},
    {"is_read_only", &ZQMatrixProperties::memIsReadOnly, Tier::base},
    {"preprocessing", &ZQMatrixProperties::preProcessingType, Tier::medium},
    {"is_phrase_matrix", &ZQMatrixProperties::isPhraseMatrix, Tier::medium},
    {"successor_method", &ZQMatrixProperties::successorMethod, Tier::medium},
    {"skill_output_level", &ZQMatrixProperties::skillOutputLevel, Tier::medium},
    {"items_fed", &ZQMatrixProperties::totalLengthOfAllUpdateSequences, Tier::medium},
    {"kernel_length", &ZQMatrixProperties::lengthOfKernelPreProcessedSequence, Tier::medium},
    {"keeps_history", &ZQMatrixProperties::addUpdateInfo, Tier::medium},
};

// Symbols and numbers have the same matrix type. Symbols have a level below them, which only the full tier has.
const char* contentOf(const ZQMatrixProperties& record, Tier tier) {
  if (record.matrixType == ZQMatrixTypeANSIText) return "text";
  if (record.matrixType == ZQMatrixTypeIntegerSeries) {
    return tier == Tier::full && record.currentMatrixIDLevelDown >= 0 ? "symbols" : "numbers";
  }
  return record.matrixType == ZQMatrixTypeUndefined ? "anything" : "music";
}

std::string timeOf(unsigned int secondsSince1970) {
  const std::time_t time = secondsSince1970;
  std::tm parts{};
  char text[32] = "";
  if (gmtime_r(&time, &parts) != nullptr) std::strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%SZ", &parts);
  return text;
}

// The field has no zero byte if the name fills it.
std::string nameOfUpdateFile(const ZQMatrixProperties& record) {
  return {record.nameOfUpdateFile, strnlen(record.nameOfUpdateFile, sizeof record.nameOfUpdateFile)};
}

std::string cellOf(const Json& value) {
  return value.is_string() ? value.get<std::string>() : value.dump();
}

// The names of all members of the objects in a list, in the order of their first appearance.
std::vector<std::string> namesIn(const Json& list) {
  std::vector<std::string> names;
  for (const Json& entry : list) {
    for (const auto& member : entry.items()) {
      if (std::find(names.begin(), names.end(), member.key()) == names.end()) names.push_back(member.key());
    }
  }
  return names;
}

}  // namespace

Json statisticsOf(const ZQMatrixProperties& record, Tier tier) {
  Json statistics = {{"id", record.matrixID}, {"holds", contentOf(record, tier)}};
  if (record.matrixType == ZQMatrixTypeANSIText) statistics["language"] = languageOf(record);
  for (const Number& counter : counters) {
    if (tier >= counter.since) statistics[counter.name] = record.*counter.field;
  }
  return statistics;
}

Json settingsOf(const ZQMatrixProperties& record, Tier tier) {
  Json result = {{"saved", timeOf(record.timeStamp)}};
  for (const Number& setting : settings) {
    if (tier >= setting.since) result[setting.name] = record.*setting.field;
  }
  if (tier >= Tier::medium) {
    result["random_value"] = record.successorRandomValue;
    result["files_learned"] = Json::array();
    std::istringstream names(record.namesOfUpdateFiles != nullptr ? record.namesOfUpdateFiles : "");
    for (std::string name; std::getline(names, name);) result["files_learned"].push_back(name);
  }
  return result;
}

Json historyEntryOf(const ZQMatrixProperties& record, Tier tier) {
  return {{"saved", timeOf(record.timeStamp)},         {"id", record.matrixID},
          {"holds", contentOf(record, tier)},          {"updates", record.updateIndex},
          {"elements", record.numberOfMatrixElements}, {"write_counts", record.numberOfWriteCounts},
          {"file", nameOfUpdateFile(record)}};
}

Json sizeOf(const Matrix& matrix) {
  struct rusage usage {};
  getrusage(RUSAGE_SELF, &usage);
  return {{"block_size", matrix.blockSize()},
          {"maximal_stack", matrix.maximalStack()},
          {"peak_resident_bytes", usage.ru_maxrss * 1024LL}};
}

std::string jsonText(const Json& value) {
  return value.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

std::string membersOf(const Json& value) {
  std::size_t width = 0;
  for (const auto& member : value.items()) width = std::max(width, member.key().size());
  std::string table;
  for (const auto& member : value.items()) {
    table += member.key() + std::string(2 + width - member.key().size(), ' ') + cellOf(member.value()) + "\n";
  }
  return table;
}

std::string columnsOf(const Json& list) {
  const std::vector<std::string> names = namesIn(list);
  std::size_t nameWidth = 0;
  for (const std::string& name : names) nameWidth = std::max(nameWidth, name.size());
  std::string table;
  for (const std::string& name : names) {
    std::string line = name + std::string(nameWidth - name.size(), ' ');
    for (const Json& entry : list) {
      std::size_t width = 0;
      for (const auto& member : entry.items()) width = std::max(width, cellOf(member.value()).size());
      const std::string cell = entry.contains(name) ? cellOf(entry[name]) : "";
      line += std::string(2 + width - cell.size(), ' ') + cell;
    }
    table += line + "\n";
  }
  return table;
}

std::string linesOf(const Json& list) {
  const std::vector<std::string> names = namesIn(list);
  std::vector<std::string> lines(list.size() + 1);
  for (const std::string& name : names) {
    std::vector<std::string> cells = {name};
    for (const Json& entry : list) cells.push_back(entry.contains(name) ? cellOf(entry[name]) : "");
    std::size_t width = 0;
    for (const std::string& cell : cells) width = std::max(width, cell.size());
    for (std::size_t at = 0; at < cells.size(); ++at) {
      lines[at] += cells[at] + (name == names.back() ? "" : std::string(2 + width - cells[at].size(), ' '));
    }
  }
  std::string table;
  for (const std::string& line : lines) table += line + "\n";
  return table;
}
