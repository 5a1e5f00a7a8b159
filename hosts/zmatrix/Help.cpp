#include "Help.h"

#include <sstream>

namespace {
constexpr std::size_t lineWidth = 70;  // with the 30 columns of option names, 100 in all
}  // namespace

std::string Help::make_option_desc(const CLI::Option* option) const {
  std::istringstream words(CLI::Formatter::make_option_desc(option));
  std::string text;
  std::size_t width = 0;
  for (std::string word; words >> word;) {
    const bool fits = width + 1 + word.size() <= lineWidth;
    if (!text.empty()) text += fits ? ' ' : '\n';
    width = (fits && !text.empty() ? width + 1 : 0) + word.size();
    text += word;
  }
  return text;
}
