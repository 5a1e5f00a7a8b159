// The degeneration feed: learned pairs, refusals, dry runs, and a run that is stopped and continued. The feed writes to the
// working directory, so each case runs in a folder of its own.
#include <filesystem>
#include <map>

#include "numbers/ZQPrimes.h"
#include "support/TestFolder.h"
#include "support/TierTest.h"

namespace {

using zmatrix::Vector;
using Numbers = std::vector<std::vector<std::string>>;

template <class Matrix>
class DegenerationFeedTest : public zmatrix::TierTest<Matrix> {
 public:
  DegenerationFeedTest() {
    prepare();
    std::filesystem::current_path(folder.path());
  }
  ~DegenerationFeedTest() override { std::filesystem::current_path(home); }

  /// Sets two sub-matrices up for the characters of ocrons.
  void prepare() {
    this->matrix->setMaxNumberOfMatrices(4);
    for (int id : {1, 0}) {
      this->matrix->setCurrentMatrixID(id);
      this->matrix->setDefaultMatrixPropertiesForIntegerSeries(nullptr);
      this->info()->setPreProcessingType(0);
      this->info()->setMaximalMatrixIndex(300);
      this->info()->setIncludeOverdeterminedRules(1);
    }
  }
  int feed(const Numbers& numbers, const char* end = "\n", int dryRun = 0, int autoSave = 0) {
    std::vector<std::vector<char*>> forms;
    std::vector<char**> pointers;
    Vector levels;
    for (const auto& number : numbers) {
      auto& list = forms.emplace_back();
      for (const auto& form : number) list.push_back(form == "null" ? nullptr : const_cast<char*>(form.c_str()));
      levels.push_back(static_cast<int>(number.size()));
    }
    for (auto& list : forms) pointers.push_back(list.empty() ? nullptr : list.data());
    const auto length = static_cast<int>(numbers.size());
    return this->matrix->feedMatrixWithDegenerationOcronData(levels.data(), length, pointers.data(), 4, end, length, dryRun,
                                                             autoSave, &numberFed);
  }
  /// Expects that a sub-matrix has learned exactly the substrings of these texts, with their numbers of occurrences.
  void expectLearned(int id, const std::vector<std::string>& texts) {
    std::map<std::string, int> substrings;
    for (const std::string& text : texts)
      for (size_t begin = 0; begin < text.size(); begin++)
        for (size_t length = 1; begin + length <= text.size(); length++) substrings[text.substr(begin, length)]++;
    this->matrix->setCurrentMatrixID(id);
    EXPECT_EQ(this->info()->getNumberOfWriteElements(), static_cast<int>(substrings.size())) << id;
    for (const auto& [text, count] : substrings) {
      const auto* element = this->elementOf(Vector(text.begin(), text.end()));
      EXPECT_EQ(element != nullptr ? element->getWriteCount() : 0, count) << id << text;
    }
  }
  /// Counters of both sub-matrices, write counts and symbols of all elements.
  Vector stored() {
    Vector counts;
    for (int id : {0, 1}) {
      this->matrix->setCurrentMatrixID(id);
      for (const int count : this->counters()) counts.push_back(count);
    }
    for (const auto& record : this->records()) {
      counts.push_back(record.writeCount);
      counts.push_back(record.symbolID);
    }
    return counts;
  }

  zmatrix::TestFolder folder;
  std::filesystem::path home = std::filesystem::current_path();
  int numberFed = -7;
};

TYPED_TEST_SUITE(DegenerationFeedTest, zmatrix::LearningTiers);

TYPED_TEST(DegenerationFeedTest, RefusesWrongArgumentsAndSkipsWrongOcrons) {
  int* levels = &this->numberFed;
  EXPECT_EQ(this->matrix->feedMatrixWithDegenerationOcronData(nullptr, 1, nullptr, 4, "\n", 1, 0, 0, levels), -1);
  this->take();
  char form[] = "2", *forms[] = {form}, **numbers[] = {forms};
  const int one = 1;
  EXPECT_EQ(this->matrix->feedMatrixWithDegenerationOcronData(&one, 1, numbers, 8, "\n", 1, 0, 0, levels), -1);
  EXPECT_TRUE(this->told("feedMatrixWithDegenerationOcronData: wrong ocronType 8\n"));
  EXPECT_EQ(this->matrix->feedMatrixWithDegenerationOcronData(&one, 1, numbers, 4, "\n", 2, 0, 0, levels), -1);
  EXPECT_TRUE(this->told("feedMatrixWithDegenerationOcronData: lastGoodIndex > arrayLength 1\n"));
  EXPECT_EQ(
      this->feed({{"null", "2"}, {}, {"2", "null"}, {std::string(1023, '2')}, {std::string(600, '2'), std::string(600, 'P')}}),
      1);
  const std::string printed = this->take();
  for (const char* message :
       {"degenerationOcrons[0][0] = NULL\n", "degenerationOcrons[1] = NULL\n", "degenerationOcrons[2][1] = NULL\n",
        "feedMatrixWithDegenerationOcronData: ocron length exceeds 1024\n", "####################################\n"})
    EXPECT_NE(printed.find(message), std::string::npos) << message;
  this->expectLearned(0, {"2\n"});
  EXPECT_EQ(this->feed({{"2"}}, ""), 1);
  EXPECT_TRUE(this->told("feedMatrixWithDegenerationOcronData: error ocron for matrix feed has no EOO symbol\n"));
}

TYPED_TEST(DegenerationFeedTest, DryRunsSaveAndStop) {
  const std::string line = "Matrix feeded with ocron rules up to up to number: 0, degen-level: 2\n";
  this->folder.put("matrixTerminate", "");
  const Vector before = this->stored();
  EXPECT_EQ(this->feed({{"22", "2*"}, {"2P"}}, "\n", 1, 1), 1);  // a dry run
  EXPECT_EQ(this->numberFed, 1);
  EXPECT_TRUE(this->told("feedMatrixWithDegenerationOcronData: terminated by signal file matrixTerminate\n" + line));
  EXPECT_EQ(this->stored(), before);
  EXPECT_EQ(this->folder.contentOf("autoSave.txt"), line);
  EXPECT_GT(std::filesystem::file_size("autoSave.phr"), 1000u);
}

TYPED_TEST(DegenerationFeedTest, AStoppedRunContinuesWithTheSameResult) {
  Numbers numbers;
  for (int n = 0; n < 40; n++)
    numbers.push_back(
        {std::string(static_cast<size_t>(n % 5 + 1), '2') + "P", std::string(static_cast<size_t>(n % 3 + 1), 'P') + "2*", "2"});
  this->folder.put("matrixTerminate", "");
  for (size_t fed = 0; fed < numbers.size(); fed += static_cast<size_t>(this->numberFed)) {
    if (fed >= 5) std::filesystem::remove("matrixTerminate");
    ASSERT_EQ(this->feed(Numbers(numbers.begin() + static_cast<long>(fed), numbers.end())), 1);
    EXPECT_EQ(this->numberFed, fed < 5 ? 1 : 35);
  }
  const Vector broken = this->stored();
  this->makeAnew();
  this->prepare();
  EXPECT_EQ(this->feed(numbers), 1);
  EXPECT_EQ(this->stored(), broken);
}

}  // namespace
