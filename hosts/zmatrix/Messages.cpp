#include "Messages.h"

#include <cstdio>

#include "Progress.h"

namespace {
Verbosity verbosity = Verbosity::usual;
}  // namespace

void setVerbosity(Verbosity wanted) {
  verbosity = wanted;
}

bool isVerbose() {
  return verbosity == Verbosity::verbose;
}

void say(const std::string& text) {
  Progress::clearAll();
  std::fprintf(stderr, "zmatrix: %s\n", text.c_str());
}

void note(const std::string& text) {
  if (verbosity != Verbosity::quiet) say(text);
}

void warn(const std::string& text) {
  note("warning: " + text);
}
