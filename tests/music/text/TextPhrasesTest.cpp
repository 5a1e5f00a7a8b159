// Splitting texts into phrases.
#include "music/text/ZQTextPhrases.h"

#include <random>

#include "support/KeptText.h"
#include "support/Vectors.h"

namespace {

/// The phrases of a text, joined by '|'.
std::string phrasesOf(const std::string& text) {
  const zmatrix::Vector numbers = zmatrix::valuesOf(text);
  std::string phrases;
  for (int position = 0; position < static_cast<int>(numbers.size());) {
    const zmatrix::TextPhrase phrase = zmatrix::nextTextPhrase(numbers, position);
    if (phrase.end > phrase.start) {
      if (!phrases.empty()) phrases += '|';
      phrases += text.substr(static_cast<size_t>(phrase.start), static_cast<size_t>(phrase.end - phrase.start));
    }
    EXPECT_GT(phrase.end, position) << text;
    if (phrase.end <= position) break;
    position = phrase.end;
  }
  return phrases;
}

TEST(TextPhrasesTest, AreCutAtSentencesAndBlankLines) {
  zmatrix::expectKeptCases("text_phrases.txt", phrasesOf);
}

TEST(TextPhrasesTest, LoseOnlyWhiteSpace) {
  std::mt19937 random(5);
  const std::string alphabet = "aBc1 .!;\n\r\xA0\"";
  for (int round = 0; round < 300; round++) {
    std::vector<int> text;
    for (int i = 0; i < 60; i++) text.push_back(static_cast<unsigned char>(alphabet[random() % alphabet.size()]));
    int position = 0;
    while (position < 60) {
      const zmatrix::TextPhrase phrase = zmatrix::nextTextPhrase(text, position);
      for (int i = position; i < phrase.start; i++)
        EXPECT_TRUE(text[static_cast<size_t>(i)] < 33 || text[static_cast<size_t>(i)] == 160);
      ASSERT_GT(phrase.end, position);
      position = phrase.end;
    }
    EXPECT_EQ(position, 60);
  }
}

}  // namespace
