// How often shorter paths determine a path: suffix links and a search from the root must agree, for items of one to three
// integers, for paths without a write, and after deletions that break a link's path.
#include <random>
#include <string>

#include "sequence/ZQSuffixLinks.h"
#include "support/TierUnderTest.h"

namespace {

using Access = zmatrix::TierUnderTest<ZQMatrixMedium>;
using zmatrix::Vector;

struct Case {
  int coordinateDimension, numberOfValues;
  bool writesAllPhrases;
};

class SuffixLinksTest : public testing::TestWithParam<Case> {
 public:
  SuffixLinksTest() : matrix(Access::create()), random(5) { matrix->getMatrixInfo()->setCoordinateDimension(c()); }
  ~SuffixLinksTest() override { Access::destroy(matrix); }

  int c() const { return GetParam().coordinateDimension; }
  int below(int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); }

  void writePhrases() {
    Vector sequence;
    for (int i = 0; i < 240 * c(); ++i) sequence.push_back(below(GetParam().numberOfValues));
    for (int start = 0; start + c() <= static_cast<int>(sequence.size()); start += c()) {
      for (int end = start + c(); end <= static_cast<int>(sequence.size()) && end <= start + 7 * c(); end += c()) {
        if (!GetParam().writesAllPhrases && below(3) == 0) continue;
        ASSERT_EQ(Access::write(*matrix, Vector(sequence.begin() + start, sequence.begin() + end), 1, 0, 0, 0), 1);
      }
    }
  }

  Vector pathOf(int position) const {
    Vector path;
    for (; position >= matrix->getMaxNumberOfMatrices();
         position += matrix->elementAt(position)->getOffsetToElementInPrevDimension()) {
      path.insert(path.begin(), matrix->elementAt(position)->getIndexInDimension());
    }
    return path;
  }

  /// Compares both answers for all elements, and returns how many elements have each answer.
  Vector compare(const zmatrix::ZQSuffixLinks& links) {
    Vector answers(3, 0);
    for (int position = matrix->getMaxNumberOfMatrices(); position <= matrix->getMaximalStack(); ++position) {
      if (matrix->elementAt(position) == nullptr) continue;
      EXPECT_TRUE(links.isKnown(position));
      const Vector path = pathOf(position);
      const int length = static_cast<int>(path.size());
      EXPECT_EQ(links.depthOf(position), length);
      const int expected = matrix->isDeterminedUpToTwice(path.data(), length);
      EXPECT_EQ(matrix->isDeterminedUpToTwice(links, position), expected) << "at " << position << ", length " << length;
      ++answers[static_cast<size_t>(expected)];
    }
    return answers;
  }

  ZQMatrixMedium* matrix;
  std::mt19937 random;
};

TEST_P(SuffixLinksTest, AgreeWithASearchFromTheRoot) {
  writePhrases();
  zmatrix::ZQSuffixLinks links;
  ASSERT_TRUE(links.build(*matrix));
  for (int round = 0; round < 4; ++round) {
    for (int answer : compare(links)) EXPECT_GT(answer, 0);
    for (int i = 0; i < 60; ++i) {
      const int position = matrix->getMaxNumberOfMatrices() + below(matrix->getMaximalStack());
      if (matrix->elementAt(position) == nullptr) continue;
      const Vector path = pathOf(position);
      matrix->deleteMatrixElement(path.data(), static_cast<int>(path.size()), below(2));
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Items, SuffixLinksTest,
                         testing::Values(Case{1, 5, true}, Case{1, 5, false}, Case{2, 3, true}, Case{2, 3, false},
                                         Case{3, 2, false}),
                         [](const testing::TestParamInfo<Case>& named) {
                           return "Of" + std::to_string(named.param.coordinateDimension) +
                                  (named.param.writesAllPhrases ? "WithAllPhrases" : "WithGaps");
                         });

}  // namespace
