// The kernel extended item by item compared with the kernel of the whole sequence, in all codings. The items include runs of
// white space, hyphens at line ends, bar markers and intervals that look like markers, which change the preprocessed form further
// back.
#include "sequence/ZQKernel.h"

#include <gtest/gtest.h>

#include <iterator>
#include <random>

#include "flat/ZQMatrixCreators.h"
#include "sequence/ZQItemPreprocessing.h"
#include "support/Vectors.h"

namespace {

using zmatrix::PreprocessingSettings;
using zmatrix::Vector;

constexpr PreprocessingSettings codings[] = {{0, 1},          {0, 3},    {1, 1},          {2, 2},
                                             {3, 1},          {1000, 1}, {1002, 2, 4, 4}, {1003, 3, 3, 4},
                                             {1004, 4, 4, 4}, {1001, 1}, {1002, 2, 0, 4}};

class Material {
 public:
  explicit Material(const PreprocessingSettings& settings, unsigned seed) : settings_(settings), dice_(seed) {}

  Vector item() {
    if (settings_.preProcessingType == 1000) return {"aaaaeennt  \n-"[below(13)]};
    if (zmatrix::coordinatesOfMidiType(settings_.preProcessingType) == 0) {
      Vector values;
      for (int k = 0; k < settings_.coordinateDimension; ++k) values.push_back(below(3));
      return values;
    }
    time_ += below(8) == 0 ? 9216 * (1 + below(3)) + 3072 : 3072 * below(3);
    Vector note = {below(20) == 0 ? 187 : 60 + below(2), time_, 3072, below(2) * 9};
    note.resize(static_cast<size_t>(settings_.coordinateDimension));
    return note;
  }
  Vector items(int number) {
    Vector all;
    for (int i = 0; i < number; ++i) {
      const Vector next = item();
      all.insert(all.end(), next.begin(), next.end());
    }
    return all;
  }

 private:
  int below(int limit) { return static_cast<int>(dice_() % static_cast<unsigned>(limit)); }

  PreprocessingSettings settings_;
  std::mt19937 dice_;
  int time_ = 0;
};

Vector preProcessed(const PreprocessingSettings& settings, const Vector& original) {
  int length = 0;
  return zmatrix::taken(zmatrix::preProcessedSequence(settings, original, &length), length);
}

TEST(ItemPreprocessingTest, AddsTheItemThatTheWholeSequenceAdds) {
  for (const PreprocessingSettings& settings : codings) {
    int added = 0;
    Material material(settings, 7);
    for (int script = 0; script < 200; ++script) {
      Vector original;
      for (int i = 0; i < 12; ++i) {
        const Vector before = original.empty() ? Vector() : preProcessed(settings, original);
        const bool wasWhole = zmatrix::isPreProcessedFormOf(settings, original, before);
        const Vector next = material.item();
        original.insert(original.end(), next.begin(), next.end());
        int item[4];
        if (!wasWhole || !zmatrix::preProcessedItem(settings, original, item)) continue;
        Vector expected = before;
        expected.insert(expected.end(), item, item + settings.coordinateDimension);
        ASSERT_EQ(expected, preProcessed(settings, original)) << settings.preProcessingType;
        ++added;
      }
    }
    EXPECT_EQ(added > 200, settings.preProcessingType != 1001 && settings.midiTimeSignatureNom != 0)
        << settings.preProcessingType;
  }
}

TEST(ItemPreprocessingTest, TakesDifferencesOfTheHighestOrder) {
  const PreprocessingSettings settings{ZQPreProcessingTypeHighestDifference, 1};
  const Vector original = Material(settings, 5).items(ZQPreProcessingTypeHighestDifference + 1);
  int item = 0;
  ASSERT_TRUE(zmatrix::preProcessedItem(settings, original, &item));
  EXPECT_EQ(Vector{item}, preProcessed(settings, original));
}

class KernelTest : public testing::Test {
 protected:
  struct State {
    Vector original, preProcessed;
    Vector rows;  ///< of both, with what lies behind the items in use
    bool operator==(const State&) const = default;
  };

  static ZQMatrixMedium* learned(const PreprocessingSettings& settings, int longestPhrase) {
    ZQMatrixMedium* matrix = createAndInitMatrixMedium();
    ZQMatrixMediumInfo& info = *matrix->getMatrixInfo();
    const int typeOfCoordinates[] = {0, 2, 1, 4, 5};
    const bool isMidi = zmatrix::coordinatesOfMidiType(settings.preProcessingType) != 0;
    info.setMatrixType(isMidi ? typeOfCoordinates[settings.coordinateDimension] : settings.preProcessingType >= 1000 ? 3 : 2);
    info.setCoordinateDimension(settings.coordinateDimension);
    info.setPreProcessingType(settings.preProcessingType);
    info.setMidiTimeSignatureNom(settings.midiTimeSignatureNom);
    info.setMidiTimeSignatureDenom(settings.midiTimeSignatureDenom);
    info.setIsPhraseMatrix(1);
    info.setMaxPhraseLengthForUpdateWithSequence(longestPhrase);
    info.setSkillOutputLevel(longestPhrase);
    info.setEnableStopItem(0);
    const Vector items = Material(settings, 3).items(600);
    EXPECT_EQ(matrix->updateMatrixWithLongINTSequenceExt(items.data(), 600, info.getMatrixType(), settings.coordinateDimension,
                                                         settings.preProcessingType, 0),
              1);
    return matrix;
  }

  static Vector rowsOf(ZQMatrixMediumInfo& info) {
    Vector values;
    for (int** rows : {info.getKernelOriginalSequence(), info.getKernelPreProcessedSequence()}) {
      for (int k = 0; k < info.getCoordinateDimension(); ++k) values.insert(values.end(), rows[k], rows[k] + 32);
    }
    return values;
  }

  static State stateOf(ZQMatrixMedium& matrix) {
    const auto flat = [&](int* (ZQMatrixMediumInfo::*copy)(int*, int*)) {
      int length = 0;
      return zmatrix::taken((matrix.getMatrixInfo()->*copy)(&length, nullptr), length);
    };
    return {flat(&ZQMatrixMediumInfo::getKernelOriginalSequenceFlatIndexVector),
            flat(&ZQMatrixMediumInfo::getKernelPreProcessedSequenceIndexVector), rowsOf(*matrix.getMatrixInfo())};
  }
};

TEST_F(KernelTest, ItemByItemItIsTheKernelOfTheWhole) {
  for (const PreprocessingSettings& settings : codings) {
    if (settings.preProcessingType == 1001) continue;
    for (int longestPhrase : {3, 9}) {
      ZQMatrixMedium* pushed = learned(settings, longestPhrase);
      ZQMatrixMedium* set = learned(settings, longestPhrase);
      Material material(settings, 11);
      const Vector start = material.items(6);
      for (ZQMatrixMedium* matrix : {pushed, set}) {
        matrix->initializeKernelSequenceWithOriginalSequence(start.data(), static_cast<int>(start.size()), 1);
      }
      for (int i = 0; i < 300; ++i) {
        Vector whole = stateOf(*set).original;
        ASSERT_EQ(stateOf(*pushed), stateOf(*set)) << settings.preProcessingType << " at " << i;
        const int handle = pushed->getMatrixInfo()->getKernelMatrixHandle();
        ASSERT_EQ(pushed->updateAndGetMatrixKernelHandle(), stateOf(*pushed).preProcessed.empty() ? -1 : handle);
        pushed->getMatrixInfo()->setKernelMatrixHandle(handle);
        const Vector next = material.item();
        whole.insert(whole.end(), next.begin(), next.end());
        zmatrix::ZQKernel(*pushed).push(next.data(), pushed->getMatrixInfo()->getLengthOfKernelOriginalSequence());
        set->initializeKernelSequenceWithOriginalSequence(whole.data(), static_cast<int>(whole.size()), 0);
      }
      deleteMatrixMedium(pushed);
      deleteMatrixMedium(set);
    }
  }
}

}  // namespace
