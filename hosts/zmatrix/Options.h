// The options that several verbs share: learning, generating, and messages.
#pragma once

#include <CLI/CLI.hpp>
#include <optional>
#include <string>
#include <vector>

#include "Kind.h"
#include "Matrix.h"
#include "Reading.h"
#include "TextEncoding.h"

/// An option that was not given gets its default from the subject and the level, or from the model that is updated.
struct LearningOptions {
  std::vector<std::string> inputs;
  bool recursive = false;
  std::optional<Kind> as;
  bool isForced = false;
  std::optional<Tier> tier;
  std::optional<int> maxPhrase;

  // texts
  std::optional<Level> level;
  std::optional<int> maxWords;
  std::optional<Encoding> encoding;

  // music and numbers
  std::optional<std::string> coding;

  // music
  std::optional<int> grid;
  std::optional<int> durationGrid;
  std::optional<Tracks> tracks;
  std::vector<int> skippedChannels;  ///< 1 to 16
  ReadingOptions reading;

  // numbers
  std::optional<int> ocronType;
  std::optional<int> maxIndex;
  bool skipsBad = false;
};

struct GenerationOptions {
  std::string start;
  std::optional<long long> count;
  long long seed = 31459;
  Method method = Method::random;
  std::optional<int> matrixID;  ///< music
  std::optional<double> tempo;  ///< music
  ReadingOptions reading;       ///< of the start; `continue` copies it from its learning options
  std::string out;

  // texts
  std::optional<Level> level;               ///< `continue` copies it from its learning options
  std::optional<Encoding> encoding;         ///< of the result; `continue` copies it from its learning options
  std::optional<Encoding> encodingOfTexts;  ///< of the texts in `against`
  std::optional<long long> sentences;
  std::optional<long long> lines;
  std::vector<std::string> against;  ///< the texts that the result is compared with
  bool json = false;
};

struct MessageOptions {
  bool quiet = false;
  bool verbose = false;
  int debugLevel = 0;

  MessageLevel messageLevel() const { return {quiet ? -1 : debugLevel}; }
  bool showsProgress() const { return !quiet && debugLevel == 0; }
};

/// Refuses an empty file name, such as an unset shell variable gives.
extern const CLI::Validator isNamed;

/// `what` is the help text of INPUT.
void addLearningOptions(
    CLI::App& verb, LearningOptions& options,
    const std::string& what = "Files of one kind (text, MIDI and kern, numbers), or folders of them; - is standard input");
void addGenerationOptions(CLI::App& verb, GenerationOptions& options);
void addLevelOption(CLI::App& verb, std::optional<Level>& level);
/// Adds the options for reading MIDI and kern files.
void addReadingOptions(CLI::App& verb, ReadingOptions& options);
void addKindOptions(CLI::App& verb, std::optional<Kind>& kind);
void addMessageOptions(CLI::App& verb, MessageOptions& options);

/// The last lines of each verb's help.
extern const char* const exitCodes;
