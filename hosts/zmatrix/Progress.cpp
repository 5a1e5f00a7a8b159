#include "Progress.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "Output.h"

namespace {

constexpr std::size_t barWidth = 30;
constexpr std::size_t textWidth = 36;
constexpr std::size_t frameWidth = 10;  // blanks, brackets, percentage, and a last column that stays empty

Progress* drawing = nullptr;

bool isSet(const char* variable) {
  const char* const value = std::getenv(variable);
  return value != nullptr && *value != '\0';
}

bool isDumb() {
  const char* const terminal = std::getenv("TERM");
  return terminal != nullptr && std::strcmp(terminal, "dumb") == 0;
}

std::size_t columnsOfTerminal() {
  struct winsize size {};
  return ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0 ? size.ws_col : 80;
}

bool isContinuationByte(char byte) {
  return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
}

// The first `width` characters of a UTF-8 text, padded with blanks. Other text may come out shorter.
std::string fitted(const std::string& text, std::size_t width) {
  std::size_t end = 0;
  for (std::size_t characters = 0; end < text.size(); ++end) {
    if (!isContinuationByte(text[end]) && ++characters > width) break;
  }
  const std::string part = text.substr(0, end);
  const auto characters = static_cast<std::size_t>(std::count_if(part.begin(), part.end(), [](char byte) {  //
    return !isContinuationByte(byte);
  }));
  return part + std::string(width - characters, ' ');
}

}  // namespace

Progress::Progress(bool wanted, const std::string& results)
    : shown_(wanted && isatty(STDERR_FILENO) == 1 && !isSet("NO_COLOR") && !isDumb() && isFileOrDevNull(results)) {
}

Progress::~Progress() {
  clear();
}

void Progress::show(const std::string& what, double fraction) {
  if (!shown_) return;
  const std::size_t columns = columnsOfTerminal();
  if (columns < frameWidth + barWidth) return;
  const double part = std::clamp(fraction, 0.0, 1.0);
  const auto filled = static_cast<std::size_t>(part * barWidth);
  const std::size_t width = std::min(textWidth, columns - frameWidth - barWidth);
  const std::string line = fitted(what, width) + " [" + std::string(filled, '#') + std::string(barWidth - filled, '.') + "] " +
                           std::to_string(static_cast<int>(part * 100)) + "%";
  if (line == drawn_) return;
  if (drawing != this) clearAll();
  drawn_ = line;
  drawnWidth_ = width + frameWidth + barWidth - 1;
  drawing = this;
  std::fprintf(stderr, "\r%s", line.c_str());
  std::fflush(stderr);
}

void Progress::clear() {
  if (drawn_.empty()) return;
  std::fprintf(stderr, "\r%*s\r", static_cast<int>(drawnWidth_), "");
  std::fflush(stderr);
  drawn_.clear();
  drawing = nullptr;
}

void Progress::clearAll() {
  if (drawing != nullptr) drawing->clear();
}
