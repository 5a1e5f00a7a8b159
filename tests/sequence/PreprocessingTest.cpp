// Preprocessing of sequences and its inverse, for differences, texts and notes.
#include "sequence/ZQPreprocessing.h"

#include <gtest/gtest.h>

#include <climits>
#include <iterator>
#include <optional>
#include <random>
#include <sstream>

#include "sequence/ZQInversePreprocessing.h"
#include "support/CapturedMessages.h"
#include "support/KeptText.h"
#include "support/Vectors.h"

using zmatrix::systemFree;
using zmatrix::ZQNotNote;

namespace {

using zmatrix::PreprocessingSettings;
using zmatrix::taken;
using zmatrix::Vector;

/// The preprocessed sequence, or nothing for null.
std::optional<Vector> preProcessed(const PreprocessingSettings& settings, const Vector& original) {
  int length = -7;
  int* block = zmatrix::preProcessedSequence(settings, original, &length);
  if (block != nullptr) return taken(block, length);
  EXPECT_EQ(length, 0);
  return std::nullopt;
}

/// Appends the inverse of a preprocessed sequence without its marker items to the given original items.
Vector restored(const PreprocessingSettings& settings, Vector original, Vector preProcessedItems) {
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

TEST(PreprocessingTest, CodesSequences) {
  zmatrix::CapturedMessages messages(0);
  zmatrix::expectKeptCases("preprocessing.txt", [&messages](const std::string& line) {
    std::istringstream words(line);
    PreprocessingSettings settings{};
    words >> settings.preProcessingType >> settings.coordinateDimension >> settings.midiTimeSignatureNom >>
        settings.midiTimeSignatureDenom;
    const auto result = preProcessed(settings, Vector(std::istream_iterator<int>(words), {}));
    std::string output = result ? "of " + std::to_string(result->size()) + ":" : "null";
    for (const int number : result.value_or(Vector())) output += " " + std::to_string(number);
    return output + "\n" + messages.take();
  });
  EXPECT_EQ(preProcessed({999, 1, 4, 4}, Vector(1001, 3)), (Vector{0, 0}));
  EXPECT_EQ(preProcessed({999, INT_MAX, 4, 4}, Vector(1001, 3)), std::nullopt);
}

TEST(PreprocessingTest, RestoresDifferencesOfAnyOrder) {
  std::mt19937 random(1);
  for (int order : {0, 1, 2, 3, 7, 64, 999})
    for (int c : {1, 2, 3}) {
      Vector original;
      for (int i = 0; i < (order + 20) * c; i++) original.push_back(static_cast<int>(random()));
      const PreprocessingSettings settings{order, c, 4, 4};
      const Vector head(original.begin(), original.begin() + order * c);
      EXPECT_EQ(restored(settings, head, *preProcessed(settings, original)), original) << order << " " << c;
    }
}

TEST(PreprocessingTest, JoinsLinesToRunningText) {
  zmatrix::CapturedMessages messages(9);
  zmatrix::expectKeptCases("running_text.txt", [](const std::string& text) {
    const Vector numbers = *preProcessed({1000, 1, 4, 4}, zmatrix::valuesOf(text));
    return "'" + std::string(numbers.begin(), numbers.end()) + "'";
  });
  EXPECT_EQ(preProcessed({1000, 1, 4, 4}, {-5, 1000000, 0, 10, 0, 33}), (Vector{32, 1000000, 32, 33}));
  EXPECT_EQ(messages.take(), "");
}

TEST(PreprocessingTest, RestoresNotesAndTimes) {
  std::mt19937 random(2);
  for (int c : {2, 3, 4})
    for (int nom : {3, 4}) {
      const PreprocessingSettings settings{1000 + c, c, nom, 4};
      Vector original;
      int time = 0;
      for (int i = 0; i < 200; i++) {
        const int item[] = {static_cast<int>(random() % 60), time, static_cast<int>(random() % 5000),
                            static_cast<int>(random() % 12)};
        original.insert(original.end(), item, item + c);
        time += static_cast<int>(random() % 3) * static_cast<int>(random() % 4000);  // less than a bar, sometimes 0
      }
      const Vector head(original.begin(), original.begin() + c);
      EXPECT_EQ(restored(settings, head, *preProcessed(settings, original)), original) << c;
    }
  EXPECT_EQ(restored({1002, 2, 4, 4}, {60, 12000}, {1, 100}), (Vector{60, 12000, 61, 12388}));  // the next bar
  EXPECT_EQ(restored({1002, 2, 4, 4}, {60, 12300}, {1, 12}), (Vector{60, 12300, 61, 12300}));   // the same chord
}

TEST(PreprocessingTest, RefusesSequencesWithoutMemory) {
  EXPECT_EQ(preProcessed({1002, 2, 1, 12288}, {60, 0, 62, 1000000})->size(), 2000002u);
  EXPECT_EQ(preProcessed({1002, 2, 1, 12288}, {60, 0, 62, 1000})->size(), 2002u);
  zmatrix::largestAllocation = 100;
  EXPECT_EQ(preProcessed({1002, 2, 1, 12288}, {60, 0, 62, 1000}), std::nullopt);
  EXPECT_EQ(preProcessed({1, 1, 4, 4}, Vector(100, 1)), std::nullopt);
  EXPECT_EQ(preProcessed({1000, 1, 4, 4}, Vector(100, 1)), std::nullopt);
  EXPECT_EQ(preProcessed({1001, 1, 4, 4}, Vector(100, 1)), std::nullopt);
  zmatrix::largestAllocation = static_cast<size_t>(-1);
}

TEST(PreprocessingTest, RefusesUnknownTypes) {
  const Vector pair = {60, 0, 62, 1};
  int item[] = {3, 4};
  const int* const items[] = {pair.data()};
  const auto before = zmatrix::PrecedingItems::inObjex(items, 1);
  for (int type : {INT_MIN, -1, 1003, 1004, 1005, 1009, 1010, 1015, 1021, INT_MAX}) {  // 1003 and 1004: no pairs
    EXPECT_EQ(zmatrix::nextOriginalObjex({type, 2, 4, 4}, before, item, ""), nullptr) << type;
  }
  for (int type : {1000, 1001}) {
    EXPECT_EQ(zmatrix::nextOriginalObjex({type, 2, 4, 4}, before, item, ""), item);
    EXPECT_EQ(item[0], 3);
  }
  EXPECT_EQ(zmatrix::nextOriginalObjex({0, 2, 4, 4}, before, nullptr, ""), nullptr);
}

TEST(PreprocessingTest, ComputesDifferencesOf64Bits) {
  const auto run = [](int type, std::vector<long long> values, int* length) {
    return taken(zmatrix::longLongPreProcessedSequence({type, 1, 4, 4}, values, length), *length);
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
    EXPECT_EQ(length, -7) << type;  // unchanged
  }
}

}  // namespace
