#include "Options.h"

#include <limits>
#include <map>

#include "MusicCoding.h"
#include "Nearest.h"
#include "NumberCoding.h"
#include "OptionChecks.h"
#include "Talk.h"

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
  verb.add_option("--grid", options.grid, "Notes begin on multiples of a whole note's Nth, 16 unless given")
      ->check(wholeNumber(1, 3072))
      ->option_text("N")
      ->group("Music");
  verb.add_option("--duration-grid", options.durationGrid, "Notes last multiples of a whole note's Nth, 16 unless given")
      ->check(wholeNumber(1, 3072))
      ->option_text("N")
      ->group("Music");
  verb.add_option("--tracks", options.tracks,
                  "Learn each track by itself (single), all as one (merged), or both; both unless given")
      ->transform(oneOf(trackChoices))
      ->option_text("single|merged|both")
      ->group("Music");
  verb.add_option("--skip-channel", options.skippedChannels, "Leave out a channel, 1 to 16 (10 is the drums); can be repeated")
      ->check(wholeNumber(1, 16))
      ->option_text("N")
      ->allow_extra_args(false)
      ->group("Music");
  addReadingOptions(verb, options.reading);
}

void addNumberOptions(CLI::App& verb, LearningOptions& options) {
  verb.add_option("--ocron-type", options.ocronType, "Alphabet of an ocron or gocron, 3 to 7; unless given the coding's own")
      ->check(wholeNumber(3, 7))
      ->option_text("N")
      ->group("Numbers");
  verb.add_option("--max-index", options.maxIndex,
                  "Largest coded number that the matrix takes, 500000 unless given: more costs up to 8 bytes of memory each")
      ->check(wholeNumber(1, 134000000))
      ->option_text("N")
      ->group("Numbers");
  verb.add_flag("--skip-bad", options.skipsBad, "Leave out what is no integer of 32 bits, or has no form in the coding")
      ->group("Numbers");
}

void addTextOptions(CLI::App& verb, LearningOptions& options) {
  addLevelOption(verb, options.level);
  addEncodingOption(verb, options.encoding,
                    "How texts are spelled: utf-8, utf-16, utf-16le, utf-16be, windows-1252, iso-8859-1; unless given told by "
                    "each file. What is written is utf-8 unless given");
  verb.add_option("--max-words", options.maxWords,
                  "With --level words: longest run of words learned, 1 to 64; 2 unless given, 3 from 256 KiB of text on")
      ->check(wholeNumber(1, 64))
      ->option_text("N")
      ->group("Texts");
}

}  // namespace

void addReadingOptions(CLI::App& verb, ReadingOptions& options) {
  static const std::map<std::string, Reading> readings = {{"exact", Reading::exact}, {"classic", Reading::classic}};
  verb.add_option(
          "--reading", options.reading,
          "How files are read: exactly, as scores, or by the classic rules, which leave much out; exact unless given, or as "
          "the model was learned")
      ->transform(oneOf(readings))
      ->option_text("exact|classic")
      ->group("Music");
  verb.add_option("--grace-quanta", options.graceQuanta,
                  "How long grace notes of a kern score last, 3072 a quarter note; 0 unless given: they take no time")
      ->check(wholeNumber(0, 49152))
      ->option_text("N")
      ->group("Music");
  verb.add_flag("--no-percussion", options.leavesOutPercussion, "Leave out drums, percussion and effects")->group("Music");
}

void addKindOptions(CLI::App& verb, std::optional<Kind>& kind) {
  static const std::map<std::string, Kind> kinds = {
      {"text", Kind::text}, {"midi", Kind::midi}, {"kern", Kind::kern}, {"numbers", Kind::numbers}};
  verb.add_option("--as", kind, "What the files hold, which their content tells unless given")
      ->transform(oneOf(kinds))
      ->option_text("text|midi|kern|numbers");
}

void addLearningOptions(CLI::App& verb, LearningOptions& options, const std::string& what) {
  static const std::map<std::string, Tier> tiers = {{"full", Tier::full}, {"medium", Tier::medium}};
  verb.add_option("INPUT", options.inputs, what)->required()->option_text(" ");
  verb.add_flag("--recursive,-r", options.recursive, "Learn the files of the folders below too");
  addKindOptions(verb, options.as);
  verb.add_flag("--force", options.isForced,
                "Learn a file that looks like no text as one, and with --update learn on into what is left of a damaged model");
  verb.add_option("--tier", options.tier,
                  "What the matrix can do: sequences (medium) or symbols for words as well (full); medium unless given, full for "
                  "words")
      ->transform(oneOf(tiers))
      ->option_text("full|medium");
  verb.add_option(
          "--max-phrase", options.maxPhrase,
          "Longest phrase learned, 1 to 1024 letters, notes or numbers, 8 unless given (10 letters from 256 KiB of text on): "
          "more keeps closer to the input, for memory in proportion. With --level words it is the longest word, 16 unless given")
      ->check(wholeNumber(1, 1024))
      ->option_text("N");
  verb.add_option("--coding", options.coding,
                  "What of a note is learned: " + listOf(namesOfMusicCodings()) +
                      "; triple unless given. What of a number: " + listOf(namesOfNumberCodings()) + "; difference unless given")
      ->check(oneOf(namesOfCodings()))
      ->option_text("CODING")
      ->group("Music and numbers");
  addTextOptions(verb, options);
  addMusicOptions(verb, options);
  addNumberOptions(verb, options);
}

void addLevelOption(CLI::App& verb, std::optional<Level>& level) {
  static const std::map<std::string, Level> levels = {{"letters", Level::letters}, {"words", Level::words}};
  verb.add_option("--level", level, "What the text is a sequence of, letters unless given")
      ->transform(oneOf(levels))
      ->option_text("letters|words")
      ->group("Texts");
}

void addGenerationOptions(CLI::App& verb, GenerationOptions& options) {
  static const std::map<std::string, Method> methods = {
      {"best", Method::best}, {"middle", Method::middle}, {"random", Method::random}};
  verb.add_option("--start", options.start,
                  "What to continue; what was learned need not hold it: a text, a MIDI file, or numbers (\"1 1 2 3\")")
      ->option_text("START");
  verb.add_option("--count", options.count,
                  "Items to generate: characters or words (1000 unless given), notes (200), numbers (100)")
      ->check(wholeNumber(0))
      ->option_text("N");
  verb.add_option("--seed", options.seed, "Start of the random draws, 0 to 2147483647; 31459 unless given")
      ->check(wholeNumber(0, 2147483647))
      ->option_text("N");
  verb.add_option("--method", options.method,
                  "How an item is chosen: by its probability (random), the most probable (best), the middle one of the possible "
                  "(middle); random unless given")
      ->transform(oneOf(methods))
      ->option_text("best|middle|random");
  verb.add_option("--matrix", options.matrixID,
                  "The sub-matrix to continue, by the ID that `zmatrix info` tells; unless given the one with the most notes")
      ->check(wholeNumber(0, std::numeric_limits<int>::max()))
      ->option_text("ID")
      ->group("Music");
  verb.add_option("--tempo", options.tempo,
                  "Quarter notes a minute of the tune, 4 to 1000; unless given the median of what was learned, or 120")
      ->check(CLI::Range(4.0, 1000.0))
      ->option_text("BPM")
      ->group("Music");
  verb.add_option("--sentences", options.sentences, "End with the Nth sentence; --count then only bounds what is written")
      ->check(wholeNumber(1))
      ->option_text("N")
      ->group("Texts");
  verb.add_option("--lines", options.lines, "End with the Nth line")
      ->check(wholeNumber(1))
      ->option_text("N")
      ->group("Texts")
      ->excludes("--sentences");
  verb.add_flag("--json", options.json, "Write one JSON object: the text, and what --verbose says of it")->group("Texts");
  verb.add_option("--out,-o", options.out, "File to write; without it, or with -, standard output")
      ->check(isNamed)
      ->option_text("FILE");
}

void addTalkOptions(CLI::App& verb, TalkOptions& options) {
  verb.add_flag("--quiet,-q", options.quiet, "No progress, notes or warnings")->each([](const std::string&) {
    setTalkativeness(Talkativeness::quiet);
  });
  verb.add_flag("--verbose,-v", options.verbose,
                "Say more: what the library remarked on, what a model's file says of itself, what share of a text is copied")
      ->each([](const std::string&) { setTalkativeness(Talkativeness::verbose); });
  verb.add_option("--debug", options.debugLevel, "Print the library's messages up to this level, 0 to 9, on standard error")
      ->check(wholeNumber(0, 9))
      ->option_text("LEVEL");
}
