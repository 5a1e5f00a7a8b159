// The options that several verbs share, told once: what is learned and how, how it is continued, how much is said meanwhile.
#pragma once

#include <CLI/CLI.hpp>
#include <optional>
#include <string>
#include <vector>

#include "Matrix.h"

/// What was not given is decided by the level, or by the model that is learned into.
struct LearningOptions {
  std::vector<std::string> inputs;
  bool recursive = false;
  std::optional<Tier> tier;
  std::optional<Level> level;
  std::optional<int> maxPhrase;
  std::optional<int> maxWords;
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

/// Refuses an empty name, as an unset variable of a script gives.
extern const CLI::Validator isNamed;

/// `what` tells what INPUT may be.
void addLearningOptions(CLI::App& verb, LearningOptions& options,
                        const std::string& what =
                            "Text files, or folders whose .txt "
                            "files are learned");
void addGenerationOptions(CLI::App& verb, GenerationOptions& options);
void addLevelOption(CLI::App& verb, std::optional<Level>& level);
void addTalkOptions(CLI::App& verb, TalkOptions& options);

/// The last lines of a verb's help.
extern const char* const exitCodes;
