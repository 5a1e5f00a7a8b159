#include "sequence/ZQPreprocessing.h"

#include <gtest/gtest.h>

#include <climits>
#include <optional>
#include <random>
#include <string>
#include <vector>

#include "frame/ZQMemory.h"
#include "sequence/ZQInversePreprocessing.h"
#include "support/CapturedMessages.h"

namespace {

using Numbers = std::vector<int>;
using zmatrix::PreprocessingSettings;

/// The preprocessed sequence, or nothing for null.
std::optional<Numbers> preProcessed(const PreprocessingSettings& settings, const Numbers& original) {
  int length = -7;
  int* block = zmatrix::preProcessedSequence(settings, original, &length);
  if (block == nullptr) {
    EXPECT_EQ(length, 0);
    return std::nullopt;
  }
  Numbers result(block, block + length);
  systemFree(block);
  return result;
}

/// Runs the inverse over a whole preprocessed sequence, marker items left out, behind the given original items.
Numbers restored(const PreprocessingSettings& settings, Numbers original, Numbers preProcessedItems) {
  const auto c = static_cast<size_t>(settings.coordinateDimension);
  for (size_t i = 0; i < preProcessedItems.size(); i += c) {
    int* objex = &preProcessedItems[i];
    if (zmatrix::coordinatesOfMidiType(settings.preProcessingType) != 0 && objex[0] == ZQNotNote) continue;
    std::vector<const int*> items;
    for (size_t k = 0; k < original.size(); k += c) items.push_back(&original[k]);
    const auto before = zmatrix::PrecedingItems::inObjex(items.data(), static_cast<int>(items.size()));
    const int* next = zmatrix::nextOriginalObjex(settings, before, objex, "illegal");
    if (next == nullptr) return {};
    original.insert(original.end(), next, next + c);
  }
  return original;
}

Numbers numbersOf(const std::string& text) {
  Numbers numbers;
  for (unsigned char c : text) numbers.push_back(c);
  return numbers;
}

TEST(PreprocessingTest, TakesDifferencesOfEachCoordinateForItself) {
  const struct {
    int type, coordinateDimension;
    Numbers original;
    std::optional<Numbers> expected;
  } cases[] = {{0, 1, {5, -3}, Numbers{5, -3}},
               {0, 4, {5, -3}, Numbers{5, -3}},
               {1, 1, {1, 4, 9, 16}, Numbers{3, 5, 7}},
               {2, 1, {1, 4, 9, 16}, Numbers{2, 2}},
               {3, 1, {1, 4, 9, 16}, Numbers{0}},
               {4, 1, {1, 4, 9, 16}, std::nullopt},
               {2, 1, {1, 4}, std::nullopt},
               {1, 2, {1, 10, 4, 5}, Numbers{3, -5}},
               {1, 2, {1, 10, 4, 5, 9}, Numbers{3, -5, 5}},  // a ragged tail
               {1, 3, {1, 10}, std::nullopt},
               {1, 1, {INT_MIN, INT_MAX, INT_MIN}, Numbers{-1, 1}},
               {999, 1, Numbers(1001, 3), Numbers{0, 0}},
               {999, INT_MAX, Numbers(1001, 3), std::nullopt},
               {1, 0, {1, 2, 3}, std::nullopt}};
  for (const auto& test : cases)
    EXPECT_EQ(preProcessed({test.type, test.coordinateDimension, 4, 4}, test.original), test.expected) << test.type;
}

TEST(PreprocessingTest, RestoresDifferencesOfAnyOrder) {
  std::mt19937 random(1);
  for (int order : {0, 1, 2, 3, 7, 64, 999})
    for (int c : {1, 2, 3}) {
      Numbers original;
      for (int i = 0; i < (order + 20) * c; i++) original.push_back(static_cast<int>(random()));
      const PreprocessingSettings settings{order, c, 4, 4};
      const Numbers head(original.begin(), original.begin() + order * c);
      EXPECT_EQ(restored(settings, head, *preProcessed(settings, original)), original) << order << " " << c;
    }
}

TEST(PreprocessingTest, MakesPlainRunningTextOfLines) {
  const std::string nbsp = "\xA0", umlaut = "\xC4";  // no-break space; a capital umlaut
  const std::pair<std::string, std::string> cases[] = {{"foo-\nbar", "foobar"},
                                                       {"foo-\r\n  bar", "foobar"},
                                                       {"foo-\nBar", "foo-Bar"},
                                                       {"foo-\n" + umlaut, "foo-" + umlaut},
                                                       {"foo- bar", "foo- bar"},
                                                       {"foo-\n\nbar", "foo-\nbar"},
                                                       {"foo -\nbar", "foo bar"},
                                                       {"foo \n\n bar", "foo\nbar"},
                                                       {"foo \n bar", "foo bar"},
                                                       {"foo" + nbsp + "\tbar", "foo bar"},
                                                       {"a\nb\n\n\nc\r\n\r\nd", "a b\nc\nd"},
                                                       {" foo", " foo"},
                                                       {"\nfoo", " foo"},
                                                       {"\n\nfoo", "\nfoo"},
                                                       {"foo ", "foo "},
                                                       {"foo\n", "foo "},
                                                       {"foo\n\n", "foo\n"},
                                                       {"foo-\n", "foo-"},
                                                       {"\n", " "},
                                                       {"-\na", "a"}};
  zmatrix::CapturedMessages messages(9);
  for (const auto& [original, expected] : cases)
    EXPECT_EQ(preProcessed({1000, 1, 4, 4}, numbersOf(original)), numbersOf(expected)) << original;
  EXPECT_EQ(preProcessed({1000, 1, 4, 4}, {-5, 1000000, 0, 10, 0, 33}), (Numbers{32, 1000000, 32, 33}));
  EXPECT_EQ(messages.take(), "");
}

TEST(PreprocessingTest, CountsTimeByTheBarAndMarksTheBarLinesOfALongGap) {
  const struct {
    PreprocessingSettings settings;
    Numbers original, expected;
  } cases[] = {{{1002, 2, 4, 4}, {60, 0}, {}},
               {{1002, 2, 4, 4}, {60, 0, 61}, {}},
               {{1002, 2, 4, 4}, {60, 0, 62, 12288}, {127, 0, 2, 0}},
               {{1002, 2, 4, 4}, {60, 11000, 62, 13000}, {2, 712}},
               {{1002, 2, 3, 4}, {60, 0, 62, 9216}, {127, 0, 2, 0}},
               {{1002, 2, 4, 4}, {60, 100, 62, 12387}, {2, 99}},
               {{1002, 2, 4, 4}, {60, 100, 58, 30000}, {127, 0, 127, 0, -2, 5424}},
               {{1003, 3, 4, 4}, {60, 0, 10, 62, 12289, 20}, {127, 0, 0, 2, 1, 20}},
               {{1004, 4, 4, 4}, {60, 0, 10, 9, 62, 1, 20, 8, 40, 2, 30, 9}, {2, 1, 20, 8, 40, 2, 30, 9}},
               {{1004, 4, 4, 4}, {35, 0, 10, 9, 35, 5, 20, 9}, {35, 5, 20, 9}}};
  for (const auto& test : cases) EXPECT_EQ(preProcessed(test.settings, test.original), test.expected);
}

TEST(PreprocessingTest, RestoresNotesAndTimes) {
  std::mt19937 random(2);
  for (int c : {2, 3, 4})
    for (int nom : {3, 4}) {
      const PreprocessingSettings settings{1000 + c, c, nom, 4};
      Numbers original;
      int time = 0;
      for (int i = 0; i < 200; i++) {
        const int item[] = {static_cast<int>(random() % 60), time, static_cast<int>(random() % 5000),
                            static_cast<int>(random() % 12)};
        original.insert(original.end(), item, item + c);
        time += static_cast<int>(random() % 3) * static_cast<int>(random() % 4000);  // shorter than a bar; chords too
      }
      const Numbers head(original.begin(), original.begin() + c);
      EXPECT_EQ(restored(settings, head, *preProcessed(settings, original)), original) << c;
    }
  EXPECT_EQ(restored({1002, 2, 4, 4}, {60, 12000}, {1, 100}), (Numbers{60, 12000, 61, 12388}));  // the next bar
  EXPECT_EQ(restored({1002, 2, 4, 4}, {60, 12300}, {1, 12}), (Numbers{60, 12300, 61, 12300}));   // the same chord
}

TEST(PreprocessingTest, TakesABarOfNothingForFourFour) {
  const char* const message = "getPreprocessed Sequence: illegal values for timeSignature, assuming 4/4 time signature...\n";
  zmatrix::CapturedMessages messages(0);
  for (auto [nom, denom] : {std::pair{0, 0}, {0, 4}, {4, 0}, {-4, 4}, {4, -4}, {1, 20000}, {INT_MIN, 1}}) {
    EXPECT_EQ(preProcessed({1002, 2, nom, denom}, {60, 0, 62, 12288}), (Numbers{127, 0, 2, 0})) << nom << "/" << denom;
    EXPECT_EQ(messages.take(), message);
  }
  EXPECT_EQ(preProcessed({1002, 2, INT_MAX, 1}, {60, 0, 62, INT_MAX}), (Numbers{2, INT_MAX}));
  EXPECT_EQ(messages.take(), "");
}

TEST(PreprocessingTest, RefusesMoreBarLinesThanMemoryHolds) {
  zmatrix::CapturedMessages messages(0);
  EXPECT_EQ(preProcessed({1002, 2, 1, 12288}, {60, 0, 62, 1000001}), std::nullopt);
  EXPECT_EQ(messages.take(), "error from getPreprocessed Sequence: 1000001 bar markers for 1 items, at most 1000000 are made\n");
  EXPECT_EQ(preProcessed({1002, 2, 1, 12288}, {60, 0, 62, 1000000})->size(), 2000002u);
  EXPECT_EQ(preProcessed({1002, 2, 1, 12288}, {60, 0, 62, INT_MAX}), std::nullopt);
  EXPECT_EQ(preProcessed({1002, 2, 1, 12288}, {60, INT_MIN, 62, INT_MAX}), std::nullopt);
  EXPECT_EQ(preProcessed({1002, 2, 1, 12288}, {60, 0, 62, 1000})->size(), 2002u);
  zmatrix::largestAllocation = 100;
  EXPECT_EQ(preProcessed({1002, 2, 1, 12288}, {60, 0, 62, 1000}), std::nullopt);
  EXPECT_EQ(preProcessed({1, 1, 4, 4}, Numbers(100, 1)), std::nullopt);
  EXPECT_EQ(preProcessed({1000, 1, 4, 4}, Numbers(100, 1)), std::nullopt);
  EXPECT_EQ(preProcessed({1001, 1, 4, 4}, Numbers(100, 1)), std::nullopt);
  zmatrix::largestAllocation = static_cast<size_t>(-1);
}

TEST(PreprocessingTest, KnowsItsTypes) {
  const Numbers pair = {60, 0, 62, 1};
  int item[] = {3, 4};
  const int* const items[] = {pair.data()};
  const auto before = zmatrix::PrecedingItems::inObjex(items, 1);
  for (int type : {INT_MIN, -1, 1003, 1004, 1005, 1009, 1010, 1015, 1021, INT_MAX}) {  // 1003 and 1004: no pairs
    EXPECT_EQ(preProcessed({type, 2, 4, 4}, pair), std::nullopt) << type;
    EXPECT_EQ(zmatrix::nextOriginalObjex({type, 2, 4, 4}, before, item, ""), nullptr) << type;
  }
  for (int type : {1000, 1001}) {
    EXPECT_EQ(zmatrix::nextOriginalObjex({type, 2, 4, 4}, before, item, ""), item);
    EXPECT_EQ(item[0], 3);
  }
  EXPECT_EQ(zmatrix::nextOriginalObjex({0, 2, 4, 4}, before, nullptr, ""), nullptr);
  EXPECT_EQ(preProcessed({1001, 2, 4, 4}, pair), Numbers(4, 0));

  zmatrix::CapturedMessages messages(0);
  EXPECT_EQ(preProcessed({1, 1, 4, 4}, {}), std::nullopt);
  EXPECT_EQ(messages.take(), "Warning from getProcessedSequence: originalSequence is empty\n");
}

TEST(PreprocessingTest, Has64BitDifferences) {
  const auto run = [](int type, std::vector<long long> values, int* length) {
    long long* block = zmatrix::longLongPreProcessedSequence({type, 1, 4, 4}, values, length);
    std::vector<long long> result;
    if (block != nullptr) result.assign(block, block + *length);
    systemFree(block);
    return result;
  };
  int length = -7;
  EXPECT_EQ(run(1, {LLONG_MAX, LLONG_MIN, 1LL << 40}, &length), (std::vector<long long>{1, LLONG_MIN + (1LL << 40)}));
  EXPECT_EQ(run(0, {1LL << 40}, &length), std::vector<long long>{1LL << 40});
  EXPECT_EQ(run(1001, {7, 7, 7}, &length), std::vector<long long>(3, 0));
  EXPECT_EQ(run(2, {7, 7}, &length), std::vector<long long>{});
  EXPECT_EQ(length, 0);
  for (int type : {-1, 1000, 1002, 1004, 1005, 1011, 1015, 1021}) {
    length = -7;
    EXPECT_EQ(run(type, {1, 2, 3}, &length), std::vector<long long>{});
    EXPECT_EQ(length, -7) << type;  // untouched
  }
}

}  // namespace
