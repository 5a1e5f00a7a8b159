// The feed and the writer on a stand-in for a matrix that remembers what it was told to learn, and that can be made to fail.
#include "music/ZQTextFeed.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <string>
#include <vector>

#include "music/ZQTextWriter.h"
#include "settings/ZQMatrixFileHeader.h"
#include "settings/ZQMatrixMediumInfo.h"
#include "support/CapturedMessages.h"
#include "support/TestFolder.h"

namespace {

using Texts = std::vector<std::string>;

class RecordingMatrix {
 public:
  explicit RecordingMatrix(int numberOfInfos = 3) : infos(static_cast<size_t>(numberOfInfos)) {
    header.initFileHeader(1);
    header._setMaxNumberOfMatrices(numberOfInfos);
    header.setNumberOfMatrices(1);
    for (int i = 0; i < numberOfInfos; i++) infos[static_cast<size_t>(i)].initMatrixInfo(i);
  }
  ~RecordingMatrix() {
    for (ZQMatrixMediumInfo& info : infos) info.deInitMatrixInfo();
    header.deInitFileHeader();
  }

  ZQMatrixMediumInfo* getMatrixInfo() { return &infos[static_cast<size_t>(currentMatrixID)]; }
  ZQMatrixFileHeader* getMatrixFileHeader() { return &header; }
  int getCurrentMatrixID() const { return currentMatrixID; }
  void setCurrentMatrixID(int id) { currentMatrixID = id; }
  int getMaxNumberOfMatrices() const { return header.getMaxNumberOfMatrices(); }
  int getNumberOfMatrices() const { return header.getNumberOfMatrices(); }
  void setNumberOfMatrices(int number) { header.setNumberOfMatrices(number); }
  int getNextFreeMatrixID() {
    for (size_t i = 0; i < infos.size(); i++)
      if (infos[i].isEmpty()) return static_cast<int>(i);
    return -1;
  }
  int getGlobalMatrixType() const { return header.getGlobalMatrixType(); }
  int getGlobalLanguage() const { return header.getGlobalLanguage(); }
  int getGlobalPreProcessingType() const { return header.getGlobalPreProcessingType(); }
  int checkGlobalMatrixPropertiesForANSIText() { return globalPropertiesAreFit ? 1 : 0; }
  void applyGlobalMatrixProperties() { applyText("applied"); }
  void setDefaultMatrixPropertiesForANSIText(const char* name) { applyText(std::string("default for ") + name); }
  void setMatrixDescription(const char* text) { header.setMatrixDescription(text); }
  int updateNumberOfAppendedMatrices() { return ++appendedUpdates; }
  int getLanguageIDFromAnsiFile(const char* name) { return zmatrix::languageOfTextFile(name); }
  int getMatrixIDForLanguage(int type, int language, int preProcessing) {
    return zmatrix::getMatrixIDForLanguageIn(this, type, language, preProcessing);
  }
  int updateMatrixWithLongANSISequence(const int* text, int length) {
    return zmatrix::updateMatrixWithLongANSISequenceIn(this, text, length);
  }
  int updateMatrixWithANSIFile(const char* name, int* length, int maxLength) {
    return zmatrix::updateMatrixWithANSIFileIn(this, name, length, maxLength);
  }

  int** createKernelOriginalSequenceInitialValuesObjexVector(int* count, int* dimension) {
    *count = static_cast<int>(context.size());
    *dimension = 1;
    if (context.empty()) return nullptr;
    auto** objex = static_cast<int**>(systemMalloc(context.size() * sizeof(int*)));
    for (size_t i = 0; i < context.size(); i++) objex[i] = &context[i];
    return objex;
  }
  int* readObjexFromMatrix(double*, double*) {
    const size_t i = numberOfReads++;
    return i < items.size() && items[i] != noItem ? &items[i] : nullptr;
  }

  int update(std::span<const int> phrase, int preProcessingType) {
    std::string text;
    for (int value : phrase) text += static_cast<char>(value);
    learned.push_back(std::to_string(currentMatrixID) + ":" + text);
    lastPreProcessingType = preProcessingType;
    return text.find("FAIL") != std::string::npos ? -1 : 1;
  }

  static constexpr int noItem = INT_MIN;
  std::vector<ZQMatrixMediumInfo> infos;
  ZQMatrixFileHeader header;
  int currentMatrixID = 0;
  bool globalPropertiesAreFit = true;
  int appendedUpdates = 0;
  int lastPreProcessingType = -1;
  Texts learned, applied;
  std::vector<int> context, items;
  size_t numberOfReads = 0;

 private:
  void applyText(const std::string& how) {
    applied.push_back(std::to_string(currentMatrixID) + " " + how);
    getMatrixInfo()->setMatrixType(ZQMatrixTypeANSIText);
    getMatrixInfo()->setPreProcessingType(ZQPreProcessingTypeANSIText);
  }
};

}  // namespace

template <>
struct zmatrix::TextTier<RecordingMatrix> {
  static constexpr const char* updateDescription = "fed by %d";
  static int updateWithPhrase(RecordingMatrix* matrix, std::span<const int> phrase, int preProcessingType) {
    return matrix->update(phrase, preProcessingType);
  }
  static int updateLevelAbove(RecordingMatrix*, const int*, int length, int result) {
    return result > 0 ? 1000 + length : result;
  }
};

namespace {

/// A matrix whose globals ask for text.
class TextFeed : public testing::Test {
 protected:
  void SetUp() override {
    matrix.header.setGlobalMatrixType(ZQMatrixTypeANSIText);
    matrix.header.setGlobalPreProcessingType(ZQPreProcessingTypeANSIText);
  }

  int feed(const std::string& text) {
    std::vector<int> numbers;
    for (unsigned char character : text) numbers.push_back(character);
    return zmatrix::updateMatrixWithLongANSISequenceIn(&matrix, numbers.data(), static_cast<int>(numbers.size()));
  }

  void makeCurrentATextMatrix() {
    matrix.applyGlobalMatrixProperties();
    matrix.applied.clear();
  }

  int length = -7;
  RecordingMatrix matrix;
  zmatrix::TestFolder folder;
};

TEST_F(TextFeed, LearnsPhraseByPhrase) {
  makeCurrentATextMatrix();
  matrix.getMatrixInfo()->setAddUpdateInfo(1);
  EXPECT_EQ(feed("Ja. Nein. vielleicht"), 1);
  EXPECT_EQ(matrix.learned, (Texts{"0:Ja.", "0:Nein. vielleicht"}));
  EXPECT_EQ(matrix.lastPreProcessingType, 1000);
  EXPECT_EQ(feed(""), 1);
  EXPECT_EQ(feed("  \n "), 1);
  EXPECT_EQ(matrix.learned.size(), 2u);
  EXPECT_EQ(matrix.header.getNumberOfMatrixUpdates(), 3);
  EXPECT_EQ(matrix.getMatrixInfo()->getUpdateIndex(), 3);
  EXPECT_EQ(matrix.getMatrixInfo()->getHasBeenChanged(), 1);
  EXPECT_EQ(matrix.appendedUpdates, 3);

  matrix.getMatrixInfo()->setUsePhrasesForUpdateMatrixWithLongANSIText(0);
  matrix.learned.clear();
  EXPECT_EQ(feed("Ja. Nein"), 1);
  EXPECT_EQ(feed(""), 1);
  EXPECT_EQ(matrix.learned, Texts{"0:Ja. Nein"});
}

TEST_F(TextFeed, StopsAtAPhraseThatFailsAndCountsNothing) {
  makeCurrentATextMatrix();
  EXPECT_EQ(feed("Ja. Nein FAIL. Doch"), -1);
  EXPECT_EQ(matrix.learned, (Texts{"0:Ja.", "0:Nein FAIL."}));
  EXPECT_EQ(matrix.header.getNumberOfMatrixUpdates(), 0);
  EXPECT_EQ(matrix.getMatrixInfo()->getHasBeenChanged(), 0);
  EXPECT_EQ(zmatrix::updateMatrixWithLongANSISequenceIn(&matrix, nullptr, 5), 0);
  EXPECT_EQ(zmatrix::updateMatrixWithLongANSISequenceIn(&matrix, nullptr, 0), 1);
  EXPECT_EQ(zmatrix::updateMatrixWithLongANSISequenceIn(&matrix, nullptr, INT_MIN), 1);
}

TEST_F(TextFeed, WarnsAboutSettingsThatSuitNoText) {
  zmatrix::CapturedMessages messages(0);
  EXPECT_EQ(feed("Ja"), 0);
  EXPECT_EQ(messages.take(), "error from updateMatrixWithLongANSISequence: matrixType (0) is not 3\n");
  auto* info = matrix.getMatrixInfo();
  info->setMatrixType(ZQMatrixTypeANSIText);
  info->setUseStartOfSequence(0);
  info->setUseEndOfSequence(0);
  EXPECT_EQ(feed("Ja"), 1);
  EXPECT_EQ(messages.take(),
            "warning from updateMatrixWithLongANSISequence: useEndOfSequence(0) is not 1\n"
            "warning from updateMatrixWithLongANSISequence: useStartOfSequence(0) is not 1\n"
            "warning from updateMatrixWithLongANSISequence: preProcessingType(0) is not 1000\n");
}

TEST_F(TextFeed, ShowsEachPhraseBeforeItIsLearned) {
  makeCurrentATextMatrix();
  zmatrix::CapturedMessages messages(1);
  feed(std::string(2000, 'x') + "\n\nb\xE4");
  EXPECT_EQ(messages.take(), "update with--> " + std::string(1024, 'x') + "\nupdate with--> b\xE4\n");
  ZQDebugChannel::globalDebugOutputDevice = 3;
  testing::internal::CaptureStdout();
  feed("b\xE4");
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "update with--> b\x84\n");  // standard output speaks the other code page
  EXPECT_EQ(messages.take(), "update with--> b\xE4\n");
  ZQDebugChannel::globalDebugLevel = 0;
  feed("b");
  EXPECT_EQ(messages.take(), "");
}

TEST_F(TextFeed, FindsASubMatrixForTheLanguageOfAFile) {
  const std::string german = folder.put("german.txt", "das ist es"), english = folder.put("english.txt", "this is it");
  matrix.currentMatrixID = 2;
  EXPECT_EQ(matrix.updateMatrixWithANSIFile(german.c_str(), &length, 0), 1010);
  EXPECT_EQ(length, 10);
  EXPECT_EQ(matrix.currentMatrixID, 2);
  EXPECT_EQ(matrix.infos[0].getLanguage(), 1);
  EXPECT_STREQ(matrix.header.getMatrixDescription(), "fed by 64");
  EXPECT_STREQ(matrix.infos[0].getNameOfUpdateFile(), german.c_str());
  EXPECT_EQ(matrix.infos[0].getNamesOfUpdateFiles(), german + "\n");
  matrix.infos[0].incrementNumberOfWriteElements();

  matrix.globalPropertiesAreFit = false;
  zmatrix::CapturedMessages messages(0);
  EXPECT_EQ(matrix.updateMatrixWithANSIFile(english.c_str(), &length, 4), 1004);
  EXPECT_EQ(messages.take(),
            "updateMatrixWithANSIFile: checkGlobalMatrixPropertiesForAnsiText() failed. Applying default values\n");
  EXPECT_EQ(matrix.header.getNumberOfMatrices(), 2);
  EXPECT_EQ(matrix.infos[1].getLanguage(), 2);  // told from the whole file, not from what the cap left
  matrix.infos[1].incrementNumberOfWriteElements();
  EXPECT_EQ(matrix.updateMatrixWithANSIFile(german.c_str(), nullptr, 0), 1010);  // the same language again
  EXPECT_EQ(matrix.learned, (Texts{"0:das ist es", "1:this", "0:das ist es"}));
  EXPECT_EQ(matrix.applied, (Texts{"0 applied", "1 default for " + english, "0 default for " + german}));

  matrix.header.setGlobalLanguage(4);
  EXPECT_EQ(matrix.updateMatrixWithANSIFile(german.c_str(), &length, 0), 1010);
  EXPECT_EQ(matrix.infos[2].getLanguage(), 4);
  matrix.infos[2].incrementNumberOfWriteElements();
  messages.take();
  matrix.header.setGlobalLanguage(3);
  EXPECT_EQ(matrix.updateMatrixWithANSIFile(german.c_str(), &length, 0), 0);
  EXPECT_EQ(messages.take(), "updateMatrixWithANSIFile (" + german +
                                 "): could not find a free matrixID for languageID 3\n"
                                 "please restart and set maxNumberOfMatrices to a value > 3!\n");
  EXPECT_EQ(matrix.currentMatrixID, 2);
}

TEST_F(TextFeed, LeavesEverythingForAFileThatCannotBeRead) {
  matrix.currentMatrixID = 1;
  zmatrix::CapturedMessages messages(0);
  for (const std::string& name : {folder.path(), folder.path() + "/absent"}) {
    EXPECT_EQ(matrix.updateMatrixWithANSIFile(name.c_str(), &length, 0), 0);
    EXPECT_EQ(messages.take(), "updateMatrixWithANSI: cannot open " + name + "...\n");
  }
  EXPECT_EQ(matrix.updateMatrixWithANSIFile(nullptr, &length, 0), 0);
  EXPECT_EQ(length, -7);
  EXPECT_EQ(matrix.currentMatrixID, 1);
  EXPECT_EQ(matrix.learned, Texts{});
  EXPECT_EQ(matrix.updateMatrixWithANSIFile(folder.put("empty.txt", "").c_str(), &length, 0), 1000);
  EXPECT_EQ(length, 0);
  EXPECT_EQ(matrix.infos[0].getLanguage(), 0);
  EXPECT_EQ(matrix.infos[0].getUpdateIndex(), 1);
}

TEST_F(TextFeed, WorksThroughADirectoryInOrder) {
  for (const char* name : {"c.txt", "a.txt", "b.TXT", "sub/d.txt", "e.text"}) folder.put(name, name);
  folder.put("bad.txt", "FAIL");
  length = 4;  // a cap for each file
  EXPECT_EQ(zmatrix::updateMatrixWithANSIFilesIn(&matrix, folder.path().c_str(), 0, &length), 1);
  EXPECT_EQ(matrix.learned, (Texts{"0:a.tx", "0:b.TX", "0:FAIL", "0:c.tx"}));
  EXPECT_EQ(length, 16);
  length = 0;
  EXPECT_EQ(zmatrix::updateMatrixWithANSIFilesIn(&matrix, folder.path().c_str(), 1, &length), 1);
  EXPECT_EQ(matrix.learned.size(), 9u);
  EXPECT_EQ(length, 28);
  EXPECT_EQ(zmatrix::updateMatrixWithANSIFilesIn(&matrix, nullptr, 1, &length), 1);
  EXPECT_EQ(length, 0);
}

class TextWriter : public TextFeed {
 protected:
  void SetUp() override {
    TextFeed::SetUp();
    makeCurrentATextMatrix();
    matrix.getMatrixInfo()->setIsPhraseMatrix(1);
    matrix.getMatrixInfo()->incrementNumberOfWriteElements();
  }

  int write(int numberOfObjex) { return zmatrix::readAnsiObjexsAndWriteToAnsiFileIn(&matrix, numberOfObjex, file.c_str()); }

  std::string file = folder.path() + "/out.txt";
};

TEST_F(TextWriter, WritesContextAndItems) {
  matrix.context = {'W', 'o', 0x100 + ':'};
  matrix.items = {'a', RecordingMatrix::noItem, 300, -1, 255};
  zmatrix::CapturedMessages messages(1);
  EXPECT_EQ(write(6), 1);
  EXPECT_EQ(zmatrix::TestFolder::contentOf(file), "Wo:a\n\x2C\n\xFF\n\xFF\n");
  EXPECT_EQ(messages.take(),
            "readAnsiObjexsAndWriteToAnsiFile: Warning: empty kernel sequence, initializing from root\n"
            "readAnsiObjexsAndWriteToAnsiFile: illegal value: 300\n"
            "readAnsiObjexsAndWriteToAnsiFile: illegal value: -1\n");
  matrix.getMatrixInfo()->setSkillOutputLevel(1);
  for (int number : {0, -1, INT_MIN}) {
    EXPECT_EQ(write(number), 1);
    EXPECT_EQ(zmatrix::TestFolder::contentOf(file), "Wo:");
  }
  EXPECT_NE(messages.take().find("readAnsiObjexsAndWriteToAnsiFile: Warning: very low skill outputlevel\n"), std::string::npos);
}

TEST_F(TextWriter, RefusesInItsOrder) {
  zmatrix::CapturedMessages messages(0);
  const auto expect = [&](int result, const std::string& message) {
    EXPECT_EQ(write(1), result) << message;
    EXPECT_EQ(messages.take(), message);
  };
  file = folder.path() + "/absent/out.txt";
  expect(-5, "readAnsiObjexsAndWriteToAnsiFile: could not open ansifile " + file + " for writing\n");
  EXPECT_EQ(zmatrix::readAnsiObjexsAndWriteToAnsiFileIn(&matrix, 1, nullptr), -5);
  messages.take();
  matrix.infos[1].setMatrixType(ZQMatrixTypeANSIText);
  matrix.infos[1].setPreProcessingType(ZQPreProcessingTypeANSIText);
  matrix.currentMatrixID = 1;
  expect(-2, "readAnsiObjexsAndWriteToAnsiFile: matrix is empty!\n");
  matrix.infos[1].incrementNumberOfWriteElements();
  expect(-4, "readAnsiObjexsAndWriteToAnsiFile: matrix is corrupted!\n");  // no phrase matrix
  matrix.infos[2].setMatrixType(ZQMatrixTypeANSIText);
  matrix.infos[2].setPreProcessingType(2);
  matrix.infos[2].incrementNumberOfWriteElements();
  matrix.currentMatrixID = 2;
  expect(-3, "readAnsiObjexsAndWriteToAnsiFile: matrix has wrong preProcessingType: 2\n");

  RecordingMatrix untyped;
  EXPECT_EQ(zmatrix::readAnsiObjexsAndWriteToAnsiFileIn(&untyped, 1, file.c_str()), -1);
  EXPECT_EQ(messages.take(), "error: readAnsiObjexsAndWriteToAnsiFile: matrix is not ANSI type: 0\n");
  for (int id : {-1, 3, INT_MAX}) {
    matrix.currentMatrixID = id;
    expect(0, "");
  }
  EXPECT_EQ(zmatrix::readAnsiObjexsAndWriteToAnsiFileIn<RecordingMatrix>(nullptr, 1, file.c_str()), 0);
}

}  // namespace
