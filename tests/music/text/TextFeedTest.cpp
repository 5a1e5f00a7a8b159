// Feeding texts and writing generated ones: phrases, files, folders, a sub-matrix for each language.
#include <sstream>

#include "music/text/ZQTextWriter.h"
#include "support/Account.h"
#include "support/TierTest.h"

using zmatrix::ZQDebugChannel;

namespace {

using zmatrix::valuesOf;
using zmatrix::Vector;
using Texts = std::vector<std::string>;

/// A matrix whose global settings and first sub-matrix are for texts.
class TextFeedTest : public zmatrix::TierTest<ZQMatrixMedium> {
 public:
  TextFeedTest() {
    matrix->setGlobalDefaultMatrixPropertiesForANSIText();
    matrix->setDefaultMatrixPropertiesForANSIText(nullptr);
    take();
  }
  int feed(const std::string& text) {
    const Vector values = valuesOf(text);
    return matrix->updateMatrixWithLongANSISequence(values.data(), static_cast<int>(values.size()));
  }
  int feedFile(const std::string& name, int maxLength = 0) {
    return matrix->updateMatrixWithANSIFile(name.c_str(), &length, maxLength);
  }
  /// The learned phrases, from the messages.
  Texts learned() {
    Texts phrases;
    std::istringstream lines(take());
    for (std::string line; std::getline(lines, line);) {
      if (line.starts_with("update with--> ")) phrases.push_back(line.substr(15));
    }
    return phrases;
  }

  int length = -7;
  zmatrix::TestFolder folder;
};

TEST_F(TextFeedTest, LearnsPhraseByPhrase) {
  info()->setAddUpdateInfo(1);
  EXPECT_EQ(feed("Ja. Nein. vielleicht"), 1);
  EXPECT_EQ(learned(), (Texts{"Ja.", "Nein. vielleicht"}));
  EXPECT_EQ(exist(valuesOf("Nein. vielleicht")), 3);
  EXPECT_EQ(feed(""), 1);
  EXPECT_EQ(feed("  \n "), 1);
  EXPECT_EQ(learned(), Texts{""});
  EXPECT_EQ(matrix->getMatrixFileHeader()->getNumberOfMatrixUpdates(), 3);
  EXPECT_EQ(info()->getUpdateIndex(), 3);
  EXPECT_EQ(info()->getHasBeenChanged(), 1);

  info()->setUsePhrasesForUpdateMatrixWithLongANSIText(0);
  EXPECT_EQ(feed("Ja. Nein"), 1);
  EXPECT_EQ(feed(""), 1);
  EXPECT_EQ(exist(valuesOf("a. N")), 2);
  EXPECT_EQ(learned(), Texts{});
}

TEST_F(TextFeedTest, WarnsAboutSettingsThatDoNotSuitTexts) {
  ZQDebugChannel::globalDebugLevel = 0;
  matrix->setCurrentMatrixID(1);
  EXPECT_EQ(feed("Ja"), 0);
  EXPECT_EQ(take(), "error from updateMatrixWithLongANSISequence: matrixType (0) is not 3\n");
  info()->setMatrixType(ZQMatrixTypeANSIText);
  info()->setIsPhraseMatrix(1);
  info()->setUseStartOfSequence(0);
  info()->setUseEndOfSequence(0);
  EXPECT_EQ(feed("Ja"), 1);
  EXPECT_EQ(take(),
            "warning from updateMatrixWithLongANSISequence: useEndOfSequence(0) is not 1\n"
            "warning from updateMatrixWithLongANSISequence: useStartOfSequence(0) is not 1\n"
            "warning from updateMatrixWithLongANSISequence: preProcessingType(0) is not 1000\n");
}

TEST_F(TextFeedTest, SelectsTheSubMatrixOfTheLanguage) {
  const std::string german = folder.put("german.txt", "das ist es"), english = folder.put("english.txt", "this is it");
  info()->setMatrixType(0);
  matrix->setCurrentMatrixID(3);
  zmatrix::Account tell([this] { return take(); }, folder.path());
  const auto feed = [&](const std::string& step, const std::string& name, int maxLength = 0) {
    const int result = feedFile(name, maxLength);
    Vector languages, updates;
    for (int id = 0; id < 4; ++id) languages.push_back(matrix->getMatrixInfo(id)->getLanguage());
    for (int id = 0; id < 4; ++id) updates.push_back(matrix->getMatrixInfo(id)->getUpdateIndex());
    tell(step, result, length, matrix->getCurrentMatrixID(), matrix->getNumberOfMatrices(), languages, updates);
  };
  feed("German", german);
  EXPECT_STREQ(matrix->getMatrixDescription(),
               "Producer: 64-Bit Mac OS, lattix01.exe (CPP-Version), ANSI teext read fromFile ***************");
  EXPECT_STREQ(matrix->getMatrixInfo(0)->getNameOfUpdateFile(), german.c_str());
  EXPECT_EQ(matrix->getMatrixInfo(0)->getNamesOfUpdateFiles(), german + "\n");

  matrix->setGlobalIsPhraseMatrix(0);
  ZQDebugChannel::globalDebugLevel = 0;
  feed("four bytes, language of the whole file", english, 4);
  EXPECT_EQ(matrix->updateMatrixWithANSIFile(german.c_str(), nullptr, 0), 1);
  for (const int language : {4, 3, 5}) {
    matrix->setGlobalLanguage(language);
    feed("as language " + std::to_string(language), german);
  }
}

TEST_F(TextFeedTest, AFileThatCannotBeReadChangesNothing) {
  ZQDebugChannel::globalDebugLevel = 0;
  matrix->setCurrentMatrixID(1);
  for (const std::string& name : {folder.path(), folder.path() + "/absent"}) {
    EXPECT_EQ(feedFile(name), 0);
    EXPECT_EQ(take(), "updateMatrixWithANSI: cannot open " + name + "...\n");
    EXPECT_EQ(length, 0);
  }
  length = -7;
  EXPECT_EQ(matrix->updateMatrixWithANSIFile(nullptr, &length, 0), 0);
  EXPECT_EQ(length, 0);
  EXPECT_EQ(matrix->getCurrentMatrixID(), 1);
  EXPECT_EQ(matrix->getMatrixFileHeader()->getNumberOfMatrixUpdates(), 0);
  EXPECT_EQ(feedFile(folder.put("empty.txt", "")), 1);
  EXPECT_EQ(length, 0);
  EXPECT_EQ(matrix->getMatrixInfo(0)->getLanguage(), 0);
  EXPECT_EQ(matrix->getMatrixInfo(0)->getUpdateIndex(), 1);
}

TEST_F(TextFeedTest, LearnsTheFilesOfADirectoryInOrder) {
  for (const char* name : {"c.txt", "a.txt", "b.TXT", "sub/d.txt", "e.text"}) folder.put(name, name);
  folder.put("bad.txt", "\xFF.");
  for (int id = 0; id < 4; ++id) matrix->getMatrixInfo(id)->setMaximalMatrixIndex(200);
  length = 4;  // the limit for each file
  EXPECT_EQ(matrix->updateMatrixWithANSIFiles(folder.path().c_str(), 0, &length), 1);
  EXPECT_EQ(learned(), (Texts{"a.tx", "b.TX", "\xFF.", "c.tx"})) << "a failing file doesn't stop the others";
  EXPECT_EQ(length, 14);
  length = 0;
  EXPECT_EQ(matrix->updateMatrixWithANSIFiles(folder.path().c_str(), 1, &length), 1);
  EXPECT_EQ(learned().size(), 5u);
  EXPECT_EQ(length, 26);
  EXPECT_EQ(matrix->updateMatrixWithANSIFiles(nullptr, 1, &length), 1);
  EXPECT_EQ(length, 0);
}

class TextWriterTest : public TextFeedTest {
 public:
  int write(int numberOfObjex) { return matrix->readAnsiObjexsAndWriteToAnsiFile(numberOfObjex, file.c_str()); }
  void expectRefusal(int result, const std::string& message) {
    ZQDebugChannel::globalDebugLevel = 0;
    EXPECT_EQ(write(1), result) << message;
    EXPECT_EQ(take(), message);
  }

  std::string file = folder.path() + "/out.txt";
};

TEST_F(TextWriterTest, WritesContextAndItems) {
  feed("Wow");
  info()->setSuccessorMethod(ZQSuccessorMethodMostProbable);
  info()->setRestartWithTrueStartItem(0);
  const int start[] = {'W'};
  take();
  EXPECT_EQ(write(1), 1);
  EXPECT_TRUE(told("readAnsiObjexsAndWriteToAnsiFile: Warning: empty kernel sequence, initializing from root\n"));
  matrix->initializeKernelSequenceWithOriginalSequence(start, 1, 1);
  EXPECT_EQ(write(3), 1);
  EXPECT_EQ(zmatrix::TestFolder::contentOf(file), "Wow\n") << "the end of the learned text is written as a line feed";
  matrix->setCurrentMatrixID(1);
  matrix->setDefaultMatrixPropertiesForANSIText(nullptr);
  info()->setSuccessorMethod(ZQSuccessorMethodMostProbable);
  const int values[] = {255, 256};
  matrix->updateMatrixWithLongANSISequence(values, 2);
  take();
  EXPECT_EQ(write(2), 1);
  EXPECT_EQ(zmatrix::TestFolder::contentOf(file), std::string("\xFF\0\n", 3));
  EXPECT_TRUE(told("readAnsiObjexsAndWriteToAnsiFile: illegal value: 256\n"));
  info()->setSkillOutputLevel(1);
  for (const int number : {0, -1, INT_MIN}) {
    EXPECT_EQ(write(number), 1);
    EXPECT_EQ(zmatrix::TestFolder::contentOf(file), "");
  }
  EXPECT_TRUE(told("readAnsiObjexsAndWriteToAnsiFile: Warning: very low skill outputlevel\n"));
}

TEST_F(TextWriterTest, RefusesWrongMatricesAndFiles) {
  info()->setPreProcessingType(2);
  expectRefusal(-2, "readAnsiObjexsAndWriteToAnsiFile: matrix is empty!\n");
  TierTest::write({1});
  take();
  expectRefusal(-3, "readAnsiObjexsAndWriteToAnsiFile: matrix has wrong preProcessingType: 2\n");
  matrix->setCurrentMatrixID(1);
  expectRefusal(-1, "error: readAnsiObjexsAndWriteToAnsiFile: matrix is not ANSI type: 0\n");
  info()->setMatrixType(ZQMatrixTypeANSIText);
  TierTest::write({1});
  take();
  expectRefusal(-4, "readAnsiObjexsAndWriteToAnsiFile: matrix is corrupted!\n");  // no phrase matrix
  matrix->setCurrentMatrixID(2);
  matrix->setDefaultMatrixPropertiesForANSIText(nullptr);
  TierTest::write({1});
  take();
  file = folder.path() + "/absent/out.txt";
  expectRefusal(-5, "readAnsiObjexsAndWriteToAnsiFile: could not open ansifile " + file + " for writing\n");
  EXPECT_EQ(matrix->readAnsiObjexsAndWriteToAnsiFile(1, nullptr), -5);
  EXPECT_EQ(zmatrix::readAnsiObjexsAndWriteToAnsiFileIn<zmatrix::CharacterOutput>(static_cast<ZQMatrixMedium*>(nullptr), 1,
                                                                                  file.c_str()),
            0);
}

}  // namespace
