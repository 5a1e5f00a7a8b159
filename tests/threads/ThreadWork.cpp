#include "threads/ThreadWork.h"

#include <zmatrix/zmatrix.h>
#include <zmatrix/zq.h>

#include <algorithm>
#include <vector>

#include "support/TestFolder.h"

namespace zmatrix {

namespace {

const std::string examples = ZMATRIX_EXAMPLES;
constexpr int itemsGenerated = 300;
constexpr int charactersLearned = 3000;

class Work {
 public:
  Work(int seed, const std::string& folder) : seed_(seed), folder_(folder + "/") {
    zq_setMessageFunction(hear, this);
    heard_ = &result_;
    setMatrixProgressDisplayFunction([](progressCallBackData_tag* data) {
      if (data->progressItem == data->progressItemCount) *heard_ += data->progressText;
    });
  }
  ~Work() {
    setMatrixProgressDisplayFunction(nullptr);
    zq_setMessageFunction(nullptr, nullptr);
  }

  std::string result() {
    for (size_t at; (at = result_.find(folder_)) != std::string::npos;) result_.erase(at, folder_.size());
    return result_;
  }

  void learnText() {
    ZQMatrixMedium* matrix = createAndInitMatrixMedium();
    s_setMatrixDebugOn_Medium(matrix, 0);
    s_setGlobalDefaultMatrixPropertiesForANSIText_Medium(matrix);
    s_setGlobalMaxPhraseLengthForUpdateWithSequence_Medium(matrix, 6);
    const std::vector<int> text = charactersOf("harbour.txt");
    note("text", s_updateMatrixWithLongANSISequence_Medium(matrix, text.data(), static_cast<int>(text.size())));
    generate(matrix);
    matrix = savedAndLoaded(matrix, "text.zmatrix");
    int written = 0, ended = 0;
    note("test", s_performMatrixLinearTest_Medium(matrix, &written, &ended, 0));
    generate(matrix);
    deleteMatrixMedium(matrix);
  }

  void learnWords() {
    ZQMatrix* matrix = createAndInitMatrix();
    s_setMaxNumberOfMatrices(matrix, 8);
    s_setMatrixAILevel(matrix, 1);
    s_setGlobalSymbolDefaultMatrixPropertiesForSymbols(matrix);
    s_setGlobalDefaultMatrixPropertiesForANSIText(matrix);
    s_setGlobalMaxPhraseLengthForUpdateWithSequence(matrix, 8);
    const std::vector<int> text = charactersOf("muehle.txt");
    const auto length = static_cast<int>(text.size());
    note("words", zq_prepareMatrixForText(matrix, text.data(), length, "words"));
    note("words", zq_updateMatrixWithWordsOfLongANSISequence(matrix, text.data(), length, nullptr));
    note("words", s_saveMatrixToDisk(matrix, (folder_ + "words.zmatrix").c_str()));
    for (int id = 0; id < 4; id++) {
      s_setCurrentMatrixID(matrix, id);
      s_setSuccessorRandomValue(matrix, id, seed_);
      int items[itemsGenerated];
      noteItems(items, zq_readItems(matrix, itemsGenerated, items, nullptr, nullptr));
    }
    deleteMatrix(matrix);
  }

  /// As ocrons, which need the table of primes and the thread's own parameters.
  void learnNumbers() {
    gocronParametersTag parameters = *zq_getGlobalGocronParameters();
    parameters.ocronType = 3 + seed_ % 3;
    zq_setGlobalGocronParameters(&parameters);
    ZQMatrixMedium* matrix = createAndInitMatrixMedium();
    s_setGlobalDefaultMatrixPropertiesForIntegerSeries_Medium(matrix);
    s_setGlobalPreProcessingType_Medium(matrix, ZQPreProcessingTypeOcron);
    s_setGlobalMaxPhraseLengthForUpdateWithSequence_Medium(matrix, 12);
    s_applyGlobalMatrixProperties_Medium(matrix);
    s_applyGlobalGocronParametersToMatrix_Medium(matrix);
    std::vector<int> numbers;
    for (int n = 2 + seed_; n < 400; n += 3) numbers.push_back(n);
    note("numbers", s_updateMatrixWithLongINTSequence_Medium(matrix, numbers.data(), static_cast<int>(numbers.size())));
    int count = 0, sigma = 0;
    const tagPrimeFact* factors = zq_getPrimeFactors(360 + seed_, &count, &sigma, 0);
    for (int i = 1; factors != nullptr && i <= count; i++) note("factor", factors[i].prime);
    note("sigma", zq_sigma4(1000 + seed_));
    generate(matrix);
    matrix = savedAndLoaded(matrix, "numbers.zmatrix");
    generate(matrix);
    deleteMatrixMedium(matrix);
  }

  void learnMusic() {
    ZQMatrixMedium* matrix = createAndInitMatrixMedium();
    s_setGlobalDefaultMatrixPropertiesForMIDIElementsTriple_NDMT_Medium(matrix);
    s_setGlobalMaxPhraseLengthForUpdateWithSequence_Medium(matrix, 6);
    int notes = 0;
    note("midi", s_updateMatrixWithMIDIFile_Medium(matrix, (examples + "/tide.mid").c_str(), &notes));
    note("kern", s_updateMatrixWithKERNFile_Medium(matrix, (examples + "/canon.krn").c_str(), &notes));
    const std::string path = folder_ + "new.mid";
    s_setCurrentMatrixID_Medium(matrix, 0);
    s_setSuccessorRandomValue_Medium(matrix, 0, seed_);
    note("written", zq_readMidiObjexsAndWriteToMidiFile_Medium(matrix, 60, path.c_str(), &notes));
    result_ += TestFolder::contentOf(path);
    deleteMatrixMedium(matrix);
  }

 private:
  static void hear(int, const char* text, void* work) { static_cast<Work*>(work)->result_ += text; }

  std::vector<int> charactersOf(const char* example) const {
    const std::string text =
        TestFolder::contentOf(examples + "/" + example).substr(static_cast<size_t>(100 * seed_), charactersLearned);
    std::vector<int> characters(text.size());
    std::transform(text.begin(), text.end(), characters.begin(), [](char c) { return static_cast<unsigned char>(c); });
    return characters;
  }

  void note(const char* what, int number) { result_ += std::string(what) + " " + std::to_string(number) + "\n"; }
  void noteItems(const int* items, int count) {
    for (int i = 0; i < count; i++) result_ += std::to_string(items[i]) + " ";
  }

  void generate(ZQMatrixMedium* matrix) {
    s_initializeKernelSequenceWithOriginalSequence_Medium(matrix, nullptr, 0, 1);
    s_setSuccessorRandomValue_Medium(matrix, 0, seed_);
    int items[itemsGenerated];
    for (int i = 0; i < 4; i++) noteItems(items, zq_readItems_Medium(matrix, itemsGenerated, items, nullptr, nullptr));
  }

  ZQMatrixMedium* savedAndLoaded(ZQMatrixMedium* matrix, const char* name) {
    const std::string path = folder_ + name;
    note("saved", s_saveMatrixToDisk_Medium(matrix, path.c_str()));
    deleteMatrixMedium(matrix);
    return createAndInitMatrixMediumWithFile(path.c_str(), 0);
  }

  static thread_local std::string* heard_;
  const int seed_;
  const std::string folder_;
  std::string result_;
};

thread_local std::string* Work::heard_ = nullptr;

}  // namespace

std::string workOfThread(int seed, const std::string& folder) {
  Work work(seed, folder);
  work.learnText();
  work.learnWords();
  work.learnNumbers();
  work.learnMusic();
  return work.result();
}

}  // namespace zmatrix
