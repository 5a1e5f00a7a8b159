// Validators for the values of options, and their error messages.
#pragma once

#include <CLI/CLI.hpp>
#include <limits>
#include <map>
#include <string>
#include <vector>

/// Accepts an integer from `low` to `high`; without `high` up to the largest 64-bit integer.
CLI::Validator wholeNumber(long long low, long long high = std::numeric_limits<long long>::max());

/// Accepts one of these names. Its description is the names joined by |, from which OptionTable reads the choices.
CLI::Validator oneOf(const std::vector<std::string>& names);

/// The same for the names of an enumeration's values, to be used as a transform.
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
