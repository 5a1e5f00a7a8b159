#include "Options.h"

#include <limits>
#include <map>

#include "Messages.h"
#include "MusicCoding.h"
#include "Nearest.h"
#include "NumberCoding.h"
#include "OptionChecks.h"

const char* const exitCodes =
    "Exit codes: 0 done, 2 wrong usage, 3 an input can't be read or holds nothing to learn, 4 a limit (memory, matrix, disk),\n"
    "5 a model or a matrix is damaged.";

const CLI::Validator isNamed([](const std::string& name) { return std::string(name.empty() ? "no file is named" : ""); }, "");

namespace {

std::vector<std::string> namesOfCodings() {
  std::vector<std::string> names = namesOfMusicCodings();
  for (const std::string& name : namesOfNumberCodings()) names.push_back(name);
  return names;
}

void addMusicOptions(CLI::App& verb, LearningOptions& options) {
  static const std::map<std::string, Tracks> trackChoices = {
      {"single", Tracks::single}, {"merged", Tracks::merged}, {"both", Tracks::both}};
  verb.add_option("--grid", options.grid, "Round onsets to 1/N of a whole note; default 16")
      ->check(wholeNumber(1, 3072))
      ->option_text("N")
      ->group("Music");
  verb.add_option("--duration-grid", options.durationGrid, "Round durations to 1/N of a whole note; default 16")
      ->check(wholeNumber(1, 3072))
      ->option_text("N")
      ->group("Music");
  verb.add_option("--tracks", options.tracks,
                  "Learn each track by itself (single), all tracks as one (merged), or both; default both")
      ->transform(oneOf(trackChoices))
      ->option_text("single|merged|both")
      ->group("Music");
  verb.add_option("--skip-channel", options.skippedChannels, "Leave out a channel, 1 to 16 (10 has the drums); can be repeated")
      ->check(wholeNumber(1, 16))
      ->option_text("N")
      ->allow_extra_args(false)
      ->group("Music");
  addReadingOptions(verb, options.reading);
}

void addNumberOptions(CLI::App& verb, LearningOptions& options) {
  verb.add_option("--ocron-type", options.ocronType, "Alphabet of an ocron or gocron, 3 to 7; the default depends on --coding")
      ->check(wholeNumber(3, 7))
      ->option_text("N")
      ->group("Numbers");
  verb.add_option("--max-index", options.maxIndex,
                  "Largest coded number that the matrix accepts, default 500000; costs up to 8 bytes of memory per unit")
      ->check(wholeNumber(1, 134000000))
      ->option_text("N")
      ->group("Numbers");
  verb.add_flag("--skip-bad", options.skipsBad, "Leave out tokens that are not 32-bit integers, and numbers without a code")
      ->group("Numbers");
}

void addTextOptions(CLI::App& verb, LearningOptions& options) {
  addLevelOption(verb, options.level);
  addEncodingOption(verb, options.encoding,
                    "Encoding of the texts and of the result: utf-8, utf-16, utf-16le, utf-16be, windows-1252, iso-8859-1; by "
                    "default it is detected for each text, and the result is utf-8");
  verb.add_option("--max-words", options.maxWords,
                  "With --level words: longest run of words learned, 1 to 64; default 2, or 3 from 256 KiB of text on")
      ->check(wholeNumber(1, 64))
      ->option_text("N")
      ->group("Texts");
}

}  // namespace

void addReadingOptions(CLI::App& verb, ReadingOptions& options) {
  static const std::map<std::string, Reading> readings = {{"exact", Reading::exact}, {"classic", Reading::classic}};
  verb.add_option(
          "--reading", options.reading,
          "How files are read: exact (every note, as a score) or classic (the library's older rules, which leave much out); "
          "default: as the model was learned, or exact")
      ->transform(oneOf(readings))
      ->option_text("exact|classic")
      ->group("Music");
  verb.add_option("--grace-quanta", options.graceQuanta,
                  "Duration of the grace notes of a kern score, 3072 per quarter note; default 0")
      ->check(wholeNumber(0, 49152))
      ->option_text("N")
      ->group("Music");
  verb.add_flag("--no-percussion", options.leavesOutPercussion, "Leave out drums, percussion and effects")->group("Music");
}

void addKindOptions(CLI::App& verb, std::optional<Kind>& kind) {
  static const std::map<std::string, Kind> kinds = {
      {"text", Kind::text}, {"midi", Kind::midi}, {"kern", Kind::kern}, {"numbers", Kind::numbers}};
  verb.add_option("--as", kind, "Kind of the files; by default it is detected from their content")
      ->transform(oneOf(kinds))
      ->option_text("text|midi|kern|numbers");
}

void addLearningOptions(CLI::App& verb, LearningOptions& options, const std::string& what) {
  static const std::map<std::string, Tier> tiers = {{"full", Tier::full}, {"medium", Tier::medium}};
  verb.add_option("INPUT", options.inputs, what)->required()->option_text(" ");
  verb.add_flag("--recursive,-r", options.recursive, "Learn the files of subfolders too");
  addKindOptions(verb, options.as);
  verb.add_flag("--force", options.isForced,
                "Learn a file as text even if it looks binary; with --update, learn into a model that is damaged");
  verb.add_option("--tier", options.tier,
                  "medium learns sequences, full also gives words symbols; default medium, or full with --level words")
      ->transform(oneOf(tiers))
      ->option_text("full|medium");
  verb.add_option(
          "--max-phrase", options.maxPhrase,
          "Longest phrase learned, 1 to 1024 letters, notes or numbers; default 8, or 10 letters from 256 KiB of text on. "
          "Memory grows in proportion. With --level words it is the longest word, default 16")
      ->check(wholeNumber(1, 1024))
      ->option_text("N");
  verb.add_option("--coding", options.coding,
                  "What is learned of a note: " + listOf(namesOfMusicCodings()) +
                      "; default triple. What is learned of a number: " + listOf(namesOfNumberCodings()) + "; default difference")
      ->check(oneOf(namesOfCodings()))
      ->option_text("CODING")
      ->group("Music and numbers");
  addTextOptions(verb, options);
  addMusicOptions(verb, options);
  addNumberOptions(verb, options);
}

void addLevelOption(CLI::App& verb, std::optional<Level>& level) {
  static const std::map<std::string, Level> levels = {{"letters", Level::letters}, {"words", Level::words}};
  verb.add_option("--level", level, "Learn the text as a sequence of letters or of words; default letters")
      ->transform(oneOf(levels))
      ->option_text("letters|words")
      ->group("Texts");
}

void addGenerationOptions(CLI::App& verb, GenerationOptions& options) {
  static const std::map<std::string, Method> methods = {
      {"best", Method::best}, {"middle", Method::middle}, {"random", Method::random}};
  verb.add_option("--start", options.start,
                  "What to continue: a text, a MIDI or kern file, or numbers (\"1 1 2 3\"); it need not occur in the input")
      ->option_text("START");
  verb.add_option("--count", options.count,
                  "Number of items to generate: characters or words (default 1000), notes (200), numbers (100)")
      ->check(wholeNumber(0))
      ->option_text("N");
  verb.add_option("--seed", options.seed, "Seed of the random generator, 0 to 2147483647; default 31459")
      ->check(wholeNumber(0, 2147483647))
      ->option_text("N");
  verb.add_option("--method", options.method,
                  "How an item is chosen: drawn by probability (random), the most probable (best), the middle one of the list "
                  "(middle); default random")
      ->transform(oneOf(methods))
      ->option_text("best|middle|random");
  verb.add_option("--matrix", options.matrixID,
                  "ID of the sub-matrix to continue, as `zmatrix info` lists it; default: the one with the most notes")
      ->check(wholeNumber(0, std::numeric_limits<int>::max()))
      ->option_text("ID")
      ->group("Music");
  verb.add_option("--tempo", options.tempo,
                  "Tempo of the result in quarter notes per minute, 4 to 1000; default: the median of what was learned, or 120")
      ->check(CLI::Range(4.0, 1000.0))
      ->option_text("BPM")
      ->group("Music");
  verb.add_option("--sentences", options.sentences, "End after N sentences, or after --count items if that comes first")
      ->check(wholeNumber(1))
      ->option_text("N")
      ->group("Texts");
  verb.add_option("--lines", options.lines, "End after N lines, or after --count items if that comes first")
      ->check(wholeNumber(1))
      ->option_text("N")
      ->group("Texts")
      ->excludes("--sentences");
  verb.add_flag("--json", options.json, "Write one JSON object with the text and the figures of --verbose")->group("Texts");
  verb.add_option("--out,-o", options.out, "File to write; without it, or with -, standard output")
      ->check(isNamed)
      ->option_text("FILE");
}

void addMessageOptions(CLI::App& verb, MessageOptions& options) {
  verb.add_flag("--quiet,-q", options.quiet, "No progress, notes or warnings")->each([](const std::string&) {
    setVerbosity(Verbosity::quiet);
  });
  verb.add_flag("--verbose,-v", options.verbose,
                "Print more: errors and warnings of the library, the description stored in a model, the copied share of a text")
      ->each([](const std::string&) { setVerbosity(Verbosity::verbose); });
  verb.add_option("--debug", options.debugLevel, "Print the library's messages up to this level, 0 to 9, on standard error")
      ->check(wholeNumber(0, 9))
      ->option_text("LEVEL");
}
