#include "Inputs.h"

#include <algorithm>
#include <fstream>
#include <random>
#include <sstream>

#include "frame/ZQMemory.h"
#include "music/text/ZQTextPhrases.h"
#include "sequence/ZQPreprocessing.h"

using zmatrix::systemFree;

namespace bench {

namespace {

std::string readFile(const std::string& fileName) {
  std::ifstream file(fileName, std::ios::binary);
  std::stringstream content;
  content << file.rdbuf();
  return content.str();
}

std::vector<int> preprocessed(std::span<const int> phrase) {
  zmatrix::PreprocessingSettings settings;
  settings.preProcessingType = ZQPreProcessingTypeANSIText;
  int length = 0;
  int* values = zmatrix::preProcessedSequence(settings, phrase, &length);
  std::vector<int> result(values, values + length);
  systemFree(values);
  return result;
}

}  // namespace

long long Input::getNumberOfPhrases() const {
  long long number = 0;
  for (const std::vector<int>& piece : pieces) {
    const long long items = static_cast<long long>(piece.size()) / coordinateDimension;
    for (long long length = 1; length <= std::min<long long>(items, phraseLimit); length++) number += items - length + 1;
  }
  return number;
}

std::string readText(const std::string& fileName) {
  if (!fileName.empty()) return readFile(fileName);
  return readFile(ZMATRIX_EXAMPLES "/harbour.txt") + "\n\n" + readFile(ZMATRIX_EXAMPLES "/muehle.txt");
}

Input textInput(const std::string& text, size_t length, int phraseLimit) {
  Input input;
  input.name = "limit:" + std::to_string(phraseLimit) + "/size:" + std::to_string(length / 1000);
  input.phraseLimit = phraseLimit;
  for (size_t i = 0; i < std::min(length, text.size()); i++) input.original.push_back(static_cast<unsigned char>(text[i]));
  const std::span<const int> all(input.original);
  for (int position = 0; position < static_cast<int>(all.size());) {
    const zmatrix::TextPhrase phrase = zmatrix::nextTextPhrase(all, position);
    if (phrase.end > phrase.start)
      input.pieces.push_back(
          preprocessed(all.subspan(static_cast<size_t>(phrase.start), static_cast<size_t>(phrase.end - phrase.start))));
    position = phrase.end;
  }
  return input;
}

Input tripleInput(int numberOfItems, int phraseLimit) {
  constexpr int spacing = 192, longestRepeat = 16;
  Input input;
  input.name = "limit:" + std::to_string(phraseLimit) + "/size:" + std::to_string(numberOfItems / 1000);
  input.isText = false;
  input.coordinateDimension = 3;
  input.phraseLimit = phraseLimit;
  std::vector<int>& values = input.original;
  std::mt19937 random(1);
  const auto below = [&random](int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); };
  while (static_cast<int>(values.size()) < 3 * numberOfItems) {
    const int items = static_cast<int>(values.size()) / 3, run = std::min(1 + below(longestRepeat), numberOfItems - items);
    const bool repeats = items > longestRepeat && below(2) == 0;
    const int source = repeats ? below(items - longestRepeat) : 0;
    for (int i = 0; i < run; i++) {
      const auto from = static_cast<size_t>(source + i) * 3;
      if (repeats)
        for (size_t k = 0; k < 3; k++) values.push_back(values[from + k]);
      else
        for (int value : {below(49) - 24, spacing * below(64), spacing * (1 + below(16))}) values.push_back(value);
    }
  }
  input.pieces.push_back(values);
  return input;
}

}  // namespace bench
