#include "music/text/ZQTextPhrases.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

namespace {

std::vector<int> numbersOf(const std::string& text) {
  std::vector<int> numbers;
  for (unsigned char c : text) numbers.push_back(c);
  return numbers;
}

/// The phrases of a text, joined by '|'.
std::string phrasesOf(const std::string& text) {
  const std::vector<int> numbers = numbersOf(text);
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

// A bar stands for the blank at which a text is cut.
TEST(TextPhrasesTest, AreCutAtTheEndsOfSentences) {
  for (std::string marked :
       {// nothing and white alone
        "", "abc  ",
        // marks that end a sentence, and those that don't
        "Ja!|Nein", "Ja;|Nein", "Ja.|Nein", "Ja? Nein", "Ja: Nein", "Ja, Nein",
        // what must follow a mark
        "a.b Cd.Ef", "Ja!\xA0Nein", "Ende! und", "Ende. 0 Uhr", "Ende.|1 Uhr", "Ende.|9 Uhr", "Ende. \"Ja", "Ende.|\xC4r",
        "Ende.|\xC0r", "Ende.|\xDEr", "Ende. \xDFr", "Ende. \xBFr", "Ende.|\x8Ar", "Ende. \x8Br", "Ende.|\x8Cr", "Ende.|\x95r",
        "Ende.|\x9Fr", "Ende. @", "Ende. [",
        // a mark at the end of the text, with and without white behind
        "Ende.",
        // dots of abbreviations, initials and ordinals
        "Dr.|Meier", "J. Meier", "von J. Meier", "3. Mai", "Nr.|13. Mai", "x3. Mai", "3x. Mai", "i.e. Mai", "ab-. Mai",
        "ab'. Mai", "\xC4r.|Mai", "\x80\x80.|Mai", "\x81\x81. Mai", "\xBF\xBF. Mai", "J!|Meier", "3;|Mai",
        // dots behind what closes a sentence
        "ja\".|Mai", "(3).|Mai", "ja...|Mai", "[3].|Mai", "{3}.|Mai", "ja>. Mai",
        // a dot at the first two places
        ".|Mai", "J. Mai", ").|Mai",
        // line ends
        "eins\nzwei", "eins\r\nzwei", "eins\n\rzwei", "eins\r\r\rzwei", "eins\r\n\rzwei", "eins\n \nzwei", "ab-\nc. Nein.|Ja",
        // several
        "Es war einmal.|Es ist nicht mehr! und doch.|Ja"}) {
    std::string text = marked;
    std::replace(text.begin(), text.end(), '|', ' ');
    EXPECT_EQ(phrasesOf(text), marked);
  }
}

TEST(TextPhrasesTest, AreCutAtBlankLinesAndLoseTheWhiteBetween) {
  const std::pair<std::string, std::string> cases[] = {{" \t\r\n\xA0", ""},
                                                       {"  abc", "abc"},
                                                       {"Ja! \xA0Nein", "Ja!|Nein"},
                                                       {"Ja!\nNein", "Ja!|Nein"},
                                                       {"Ende! ", "Ende!"},
                                                       {"Ende. \n ", "Ende."},
                                                       {"eins\n\nzwei", "eins|zwei"},
                                                       {"eins\r\n\r\nzwei", "eins|zwei"},
                                                       {"eins\n\n\n\nzwei\n", "eins|zwei\n"},
                                                       {"eins\n\n", "eins"}};
  for (const auto& [text, expected] : cases) EXPECT_EQ(phrasesOf(text), expected) << text;
}

TEST(TextPhrasesTest, LoseNothingButWhite) {
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

TEST(TextPhrasesTest, TakeOneWalkThroughALongLineOfAnything) {
  constexpr int length = 5'000'000;
  for (int value : {13, 10, 32, 46, 97, -1, 1 << 30}) {
    const std::vector<int> text(length, value);
    const zmatrix::TextPhrase phrase = zmatrix::nextTextPhrase(text, 0);
    EXPECT_EQ(phrase.end, length);
  }
  std::vector<int> lineEnds(length, 13);
  lineEnds.front() = 'a';
  EXPECT_EQ(zmatrix::nextTextPhrase(lineEnds, 0).end, length);
}

}  // namespace
