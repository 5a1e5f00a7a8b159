// The options that several verbs share, told once: what is learned and how, how it is continued, how much is said meanwhile.
#pragma once

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

#include "Matrix.h"

struct LearningOptions {
  std::vector<std::string> inputs;
  bool recursive = false;
  Tier tier = Tier::medium;
  int maxPhrase = 8;
};

struct GenerationOptions {
  std::string start;
  long long count = 1000;
  long long seed = 31459;
  Method method = Method::random;
  std::string out;
};

struct TalkOptions {
  bool quiet = false;
  int debugLevel = 0;

  Loudness loudness() const { return {quiet ? -1 : debugLevel}; }
  bool showsProgress() const { return !quiet && debugLevel == 0; }
};

void addLearningOptions(CLI::App& verb, LearningOptions& options);
void addGenerationOptions(CLI::App& verb, GenerationOptions& options);
void addTalkOptions(CLI::App& verb, TalkOptions& options);

/// The last lines of a verb's help.
extern const char* const exitCodes;
