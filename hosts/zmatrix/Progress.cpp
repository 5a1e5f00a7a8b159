#include "Progress.h"

#include <unistd.h>

#include <algorithm>
#include <cstdio>

namespace {
constexpr int barWidth = 30;
constexpr int textWidth = 36;
}  // namespace

Progress::Progress(bool wanted) : shown_(wanted && isatty(STDERR_FILENO) == 1) {
}

Progress::~Progress() {
  clear();
}

void Progress::show(const std::string& what, double fraction) {
  if (!shown_) return;
  const int filled = static_cast<int>(std::clamp(fraction, 0.0, 1.0) * barWidth);
  const int percent = static_cast<int>(std::clamp(fraction, 0.0, 1.0) * 100);
  std::string text = what.substr(0, textWidth);
  text.resize(textWidth, ' ');
  std::string line =
      text + " [" + std::string(filled, '#') + std::string(barWidth - filled, '.') + "] " + std::to_string(percent) + "%";
  if (line == drawn_) return;
  drawn_ = line;
  std::fprintf(stderr, "\r%s", line.c_str());
  std::fflush(stderr);
}

void Progress::clear() {
  if (drawn_.empty()) return;
  std::fprintf(stderr, "\r%*s\r", static_cast<int>(drawn_.size()), "");
  std::fflush(stderr);
  drawn_.clear();
}
