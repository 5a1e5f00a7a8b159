// What the values of options may be, and errors that say so.
#pragma once

#include <CLI/CLI.hpp>
#include <limits>
#include <map>
#include <string>
#include <vector>

/// Without `high` there is no upper bound but that of 64 bits.
CLI::Validator wholeNumber(long long low, long long high = std::numeric_limits<long long>::max());

/// One of these names; its description is the names with | between them, which is where completions find them.
CLI::Validator oneOf(const std::vector<std::string>& names);

/// The same for names that stand for values of an enumeration, to be used as a transform.
template <class Value>
CLI::Validator oneOf(const std::map<std::string, Value>& values) {
  std::vector<std::string> names;
  names.reserve(values.size());
  for (const auto& [name, value] : values) names.push_back(name);
  const CLI::Validator isName = oneOf(names);
  return {[values, isName](std::string& text) {
            std::string fault = isName(text);
            if (fault.empty()) text = std::to_string(static_cast<int>(values.at(text)));
            return fault;
          },
          isName.get_description()};
}
