#include "Statistics.h"

#include <sys/resource.h>

#include <algorithm>
#include <vector>

namespace {

struct Counter {
  const char* name;
  int ZQMatrixProperties::*field;
  Tier since;
};

const Counter counters[] = {
    {"elements", &ZQMatrixProperties::numberOfMatrixElements, Tier::medium},
    {"written_elements", &ZQMatrixProperties::numberOfWriteElements, Tier::medium},
    {"write_counts", &ZQMatrixProperties::numberOfWriteCounts, Tier::medium},
    {"write_events", &ZQMatrixProperties::numberOfMatrixWriteEvents, Tier::medium},
    {"delete_events", &ZQMatrixProperties::numberOfMatrixDeleteEvents, Tier::medium},
    {"end_elements", &ZQMatrixProperties::numberOfEndElements, Tier::medium},
    {"start_elements", &ZQMatrixProperties::numberOfStartElements, Tier::medium},
    {"rule_elements", &ZQMatrixProperties::numberOfRuleElements, Tier::medium},
    {"unique_rules", &ZQMatrixProperties::numberOfUniqueRuleElements, Tier::medium},
    {"overdetermined_rules", &ZQMatrixProperties::numberOfOverDeterminedRules, Tier::medium},
    {"dimension", &ZQMatrixProperties::currentDimension, Tier::medium},
    {"max_phrase", &ZQMatrixProperties::maxPhraseLengthForUpdateWithSequence, Tier::medium},
    {"updates", &ZQMatrixProperties::updateIndex, Tier::medium},
    {"symbols", &ZQMatrixProperties::numberOfSymbols, Tier::full},
    {"last_symbol", &ZQMatrixProperties::newSymbol, Tier::full},
    {"level_up", &ZQMatrixProperties::currentMatrixIDLevelUp, Tier::full},
    {"level_down", &ZQMatrixProperties::currentMatrixIDLevelDown, Tier::full},
};

const char* contentOf(const ZQMatrixProperties& record) {
  if (record.matrixType == ZQMatrixTypeANSIText) return "text";
  if (record.matrixType == ZQMatrixTypeIntegerSeries) return record.currentMatrixIDLevelDown >= 0 ? "symbols" : "integers";
  return record.matrixType == ZQMatrixTypeUndefined ? "anything" : "music";
}

std::string cellOf(const Json& value) {
  return value.is_string() ? value.get<std::string>() : value.dump();
}

}  // namespace

Json statisticsOf(const ZQMatrixProperties& record, Tier tier) {
  Json statistics = {{"id", record.matrixID}, {"holds", contentOf(record)}};
  if (record.matrixType == ZQMatrixTypeANSIText) statistics["language"] = languageOf(record);
  for (const Counter& counter : counters) {
    if (tier >= counter.since) statistics[counter.name] = record.*counter.field;
  }
  return statistics;
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

std::string tableOf(const Json& list) {
  std::vector<std::string> names;
  for (const Json& entry : list) {
    for (const auto& member : entry.items()) {
      if (std::find(names.begin(), names.end(), member.key()) == names.end()) names.push_back(member.key());
    }
  }
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
