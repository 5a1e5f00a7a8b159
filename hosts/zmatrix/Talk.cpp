#include "Talk.h"

#include <cstdio>

#include "Progress.h"

namespace {
Talkativeness talkativeness = Talkativeness::usual;
}  // namespace

void setTalkativeness(Talkativeness wanted) {
  talkativeness = wanted;
}

bool isVerbose() {
  return talkativeness == Talkativeness::verbose;
}

void say(const std::string& text) {
  Progress::clearAll();
  std::fprintf(stderr, "zmatrix: %s\n", text.c_str());
}

void note(const std::string& text) {
  if (talkativeness != Talkativeness::quiet) say(text);
}

void warn(const std::string& text) {
  note("warning: " + text);
}
