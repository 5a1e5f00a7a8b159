// Asked by links, the question how often shorter paths decide a path has the answer that a search from the root gives: for items
// of one, two and three integers, for paths that were only passed through, and after deletions that broke the way of a link.
#include <gtest/gtest.h>

#include <random>
#include <string>

#include "sequence/ZQSuffixLinks.h"
#include "support/TierUnderTest.h"

namespace {

using Access = zmatrix::TierUnderTest<ZQMatrixMedium>;

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
    std::vector<int> sequence;
    for (int i = 0; i < 240 * c(); ++i) sequence.push_back(below(GetParam().numberOfValues));
    for (int start = 0; start + c() <= static_cast<int>(sequence.size()); start += c()) {
      for (int end = start + c(); end <= static_cast<int>(sequence.size()) && end <= start + 7 * c(); end += c()) {
        if (!GetParam().writesAllPhrases && below(3) == 0) continue;
        ASSERT_EQ(Access::write(*matrix, std::vector<int>(sequence.begin() + start, sequence.begin() + end), 1, 0, 0, 0), 1);
      }
    }
  }

  std::vector<int> pathOf(int position) const {
    std::vector<int> path;
    for (; position >= matrix->getMaxNumberOfMatrices();
         position += matrix->elementAt(position)->getOffsetToElementInPrevDimension()) {
      path.insert(path.begin(), matrix->elementAt(position)->getIndexInDimension());
    }
    return path;
  }

  /// All elements, each by its links and by its vector; how many there are of each answer.
  std::vector<int> compare(const zmatrix::ZQSuffixLinks& links) {
    std::vector<int> answers(3, 0);
    for (int position = matrix->getMaxNumberOfMatrices(); position <= matrix->getMaximalStack(); ++position) {
      if (matrix->elementAt(position) == nullptr) continue;
      EXPECT_TRUE(links.isKnown(position));
      const std::vector<int> path = pathOf(position);
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

TEST_P(SuffixLinksTest, AnswerAsASearchFromTheRoot) {
  writePhrases();
  zmatrix::ZQSuffixLinks links;
  ASSERT_TRUE(links.build(*matrix));
  for (int round = 0; round < 4; ++round) {
    for (int answer : compare(links)) EXPECT_GT(answer, 0);
    for (int i = 0; i < 60; ++i) {
      const int position = matrix->getMaxNumberOfMatrices() + below(matrix->getMaximalStack());
      if (matrix->elementAt(position) == nullptr) continue;
      const std::vector<int> path = pathOf(position);
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
