#include "Options.h"

#include <map>

const char* const exitCodes =
    "Exit codes: 0 done, 2 wrong usage, 3 an input can't be read or holds nothing to learn, 4 a limit (memory, matrix, disk),\n"
    "5 a self-test found damage.";

const CLI::Validator isNamed([](const std::string& name) { return std::string(name.empty() ? "no file is named" : ""); }, "");

void addLearningOptions(CLI::App& verb, LearningOptions& options, const std::string& what) {
  static const std::map<std::string, Tier> tiers = {{"full", Tier::full}, {"medium", Tier::medium}};
  verb.add_option("INPUT", options.inputs, what)->required()->option_text(" ");
  verb.add_flag("--recursive,-r", options.recursive, "Learn the .txt files of the folders below too");
  verb.add_option("--tier", options.tier,
                  "What the matrix can do: sequences (medium) or symbols for words as well (full); medium unless given, full for "
                  "words")
      ->transform(CLI::CheckedTransformer(tiers))
      ->option_text("full|medium");
  addLevelOption(verb, options.level);
  verb.add_option("--max-phrase", options.maxPhrase,
                  "Longest phrase learned, 1 to 1024 letters, 8 unless given: more keeps closer to the text, for memory in "
                  "proportion. With --level words it is the longest word, 16 unless given")
      ->check(CLI::Range(1, 1024))
      ->option_text("N");
  verb.add_option("--max-words", options.maxWords, "With --level words: longest run of words learned, 1 to 64, 3 unless given")
      ->check(CLI::Range(1, 64))
      ->option_text("N");
}

void addLevelOption(CLI::App& verb, std::optional<Level>& level) {
  static const std::map<std::string, Level> levels = {{"letters", Level::letters}, {"words", Level::words}};
  verb.add_option("--level", level, "What the text is a sequence of, letters unless given")
      ->transform(CLI::CheckedTransformer(levels))
      ->option_text("letters|words");
}

void addGenerationOptions(CLI::App& verb, GenerationOptions& options) {
  static const std::map<std::string, Method> methods = {
      {"best", Method::best}, {"middle", Method::middle}, {"random", Method::random}};
  verb.add_option("--start", options.start, "The text to continue; what was learned need not hold it")->option_text("TEXT");
  verb.add_option("--count", options.count, "Items to generate, bytes or words, 1000 unless given")
      ->check(CLI::NonNegativeNumber)
      ->option_text("N");
  verb.add_option("--seed", options.seed, "Start of the random draws, 0 to 2147483647; 31459 unless given")
      ->check(CLI::Range(0LL, 2147483647LL))
      ->option_text("N");
  verb.add_option("--method", options.method,
                  "How an item is chosen: by its probability (random), the most probable (best), the middle one of the possible "
                  "(middle); random unless given")
      ->transform(CLI::CheckedTransformer(methods))
      ->option_text("best|middle|random");
  verb.add_option("--out", options.out, "File to write; without it, or with -, standard output")
      ->check(isNamed)
      ->option_text("FILE");
}

void addTalkOptions(CLI::App& verb, TalkOptions& options) {
  verb.add_flag("--quiet,-q", options.quiet, "No progress, notes or warnings");
  verb.add_option("--debug", options.debugLevel, "Print the library's messages up to this level, 0 to 9, on standard error")
      ->check(CLI::Range(0, 9))
      ->option_text("LEVEL");
}
