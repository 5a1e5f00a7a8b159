#include "OptionChecks.h"

#include <algorithm>
#include <charconv>

#include "Nearest.h"

namespace {

bool readNumber(const std::string& text, long long& number) {
  const char* const end = text.data() + text.size();
  const auto [stopped, fault] = std::from_chars(text.data(), end, number);
  return fault == std::errc() && stopped == end;
}

std::string shown(const std::string& value) {
  return value.empty() ? "an empty value" : value;
}

}  // namespace

CLI::Validator wholeNumber(long long low, long long high) {
  const bool isBounded = high != std::numeric_limits<long long>::max();
  const std::string range = "from " + std::to_string(low) + (isBounded ? " to " + std::to_string(high) : " up");
  return {[=](std::string& text) {
            long long number = 0;
            const bool fits = readNumber(text, number) && number >= low && number <= high;
            return fits ? std::string() : shown(text) + " is not a whole number " + range;
          },
          ""};
}

CLI::Validator oneOf(const std::vector<std::string>& names) {
  std::string description;
  for (const std::string& name : names) description += (description.empty() ? "" : "|") + name;
  return {[names](std::string& text) {
            if (std::find(names.begin(), names.end(), text) != names.end()) return std::string();
            return shown(text) + " is not one of " + listOf(names) + suggestionOf(names, text);
          },
          description};
}
