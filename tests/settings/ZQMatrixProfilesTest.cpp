#include "settings/ZQMatrixProfiles.h"

#include <gtest/gtest.h>

#include <string>

#include "settings/ZQMatrixSettingTable.h"
#include "support/CapturedMessages.h"

namespace {

using zmatrix::CapturedMessages;
using zmatrix::Profile;
using zmatrix::Setting;

constexpr Profile allProfiles[] = {Profile::Symbols,
                                   Profile::MIDIElementsCDim2NoteNumberAndQuanta,
                                   Profile::MIDIElementsCDim2NoteNumberAndModQuanta,
                                   Profile::MIDIElementsTriple_NDMT,
                                   Profile::MIDIElementsGMQuadruple_NDMTS,
                                   Profile::ANSIText,
                                   Profile::IntegerSeries};
// One letter per profile, in their order, for the tables below.
constexpr char letters[] = "SQMTGAI";

struct SubMatrix {
  SubMatrix() {
    header.initFileHeader(2);
    record.initMatrixInfo(0);
  }
  ZQMatrixProperties& block() { return *header.getGlobalMatrixProperties(); }

  ZQMatrixFileHeader header;
  ZQMatrixInfo record;
};

std::string summary(const ZQMatrixProperties& values) {
  std::string text;
  for (int value : {values.coordinateDimension, values.matrixType, values.preProcessingType, values.useEndOfSequence,
                    values.usePhrasesForUpdateMatrixWithLongANSIText, values.enableStopItem, values.successorMethod,
                    values.maxPhraseLengthForUpdateWithSequence, values.midiTimeSignatureNom, values.midiTimeSignatureDenom,
                    values.restartWithTrueStartItem, values.keepSymbolsWhenRemoveOverdeterminedElements, values.isPhraseMatrix,
                    values.midiNoteOnQuantization, values.memorySearchMethod}) {
    text += std::to_string(value) + " ";
  }
  return text;
}

TEST(Profiles, SetTheValuesOfTheirColumn) {
  // Phrase length 50 and both flags of the full tier's field show what a profile leaves alone.
  const struct {
    const char* inRecord;
    const char* inBlock;
  } expected[] = {
      {"1 2 0 0 0 1 3 64 0 0 1 0 1 16 1 ", "1 2 0 0 0 1 3 64 0 0 1 0 1 16 1 "},
      {"2 1 1 1 0 1 3 64 4 4 1 1 1 16 1 ", "2 1 1 1 0 1 3 64 4 4 1 1 1 16 1 "},
      {"2 1 1002 1 0 1 3 64 4 4 1 1 1 16 1 ", "2 1 1002 1 0 1 3 64 4 4 1 1 1 16 1 "},
      {"3 4 1003 1 0 1 3 64 4 4 1 1 1 16 1 ", "3 4 1003 1 0 1 3 64 4 4 1 1 1 16 1 "},
      {"4 5 1004 1 0 1 3 64 4 4 1 0 1 16 1 ", "4 5 1004 1 0 1 3 64 4 4 1 0 1 16 1 "},
      {"1 3 1000 1 1 1 3 64 0 0 1 1 1 16 1 ", "1 3 1000 1 1 1 3 64 0 0 1 1 1 16 1 "},
      {"1 2 1 0 0 0 1 50 0 0 1 0 1 16 1 ", "1 2 1 0 0 0 1 50 0 0 0 0 1 16 1 "},
  };
  for (Profile profile : allProfiles) {
    SubMatrix matrix;
    const bool isSymbols = profile == Profile::Symbols;
    const bool isSeries = profile == Profile::IntegerSeries;
    const int keepBefore = isSymbols || isSeries ? 1 : 0;
    matrix.record.setMaxPhraseLengthForUpdateWithSequence(50);
    matrix.record.setKeepSymbolsWhenRemoveOverdeterminedElements(keepBefore);
    matrix.record.setMidiNoteOnQuantization(3);
    matrix.record.setMemorySearchMethod(0);
    matrix.record.setGocronQValue(9);
    matrix.record.getMidiChannelFilterArray()[15] = 1;
    matrix.block().gocronQValue = 9;
    zmatrix::setDefaultMatrixProperties(profile, matrix.record, matrix.header, "file");
    EXPECT_EQ(summary(*matrix.record.getGlobalMatrixInfoParameters()), expected[static_cast<int>(profile)].inRecord)
        << zmatrix::nameOf(profile);
    EXPECT_STREQ(matrix.record.getNameOfUpdateFile(), "file");
    EXPECT_STREQ(matrix.record.getNamesOfUpdateFiles(), "file\n");
    EXPECT_EQ(matrix.record.getMidiChannelFilterArray()[15], 0);
    EXPECT_EQ(matrix.record.getGocronQValue(), isSeries ? 4 : 9);
    EXPECT_EQ(matrix.block().gocronQValue, isSymbols ? 4 : 9) << "the symbols' go into the header";

    matrix.block().gocronQValue = 9;
    matrix.block().maxPhraseLengthForUpdateWithSequence = 50;
    matrix.block().keepSymbolsWhenRemoveOverdeterminedElements = keepBefore;
    matrix.header.setGlobalNameOfUpdateFile("file");
    zmatrix::setGlobalDefaultMatrixPropertiesOfFullTier(profile, matrix.header);
    EXPECT_EQ(summary(matrix.block()), expected[static_cast<int>(profile)].inBlock) << zmatrix::nameOf(profile);
    EXPECT_STREQ(matrix.header.getGlobalNameOfUpdateFile(), "");
    EXPECT_EQ(matrix.block().gocronQValue, isSymbols || isSeries ? 4 : 9);

    CapturedMessages messages(1);
    EXPECT_EQ(zmatrix::checkMatrixProperties(profile, matrix.record), 1) << zmatrix::nameOf(profile);
    EXPECT_EQ(zmatrix::checkGlobalMatrixPropertiesOfFullTier(profile, matrix.header), 1) << zmatrix::nameOf(profile);
    EXPECT_EQ(messages.take(), "") << "what a profile sets passes its check";
  }
}

TEST(Profiles, AreRefusedOnAFilledMatrix) {
  SubMatrix matrix;
  matrix.record.setNumberOfMatrixElements(1);
  CapturedMessages messages(0);
  zmatrix::setDefaultMatrixProperties(Profile::ANSIText, matrix.record, matrix.header, "file");
  EXPECT_EQ(messages.take(), "setDefaultMatrixPropertiesForANSIText: can only be applied for an empty matrix\n");
  EXPECT_EQ(matrix.record.getMatrixType(), 0);
  EXPECT_EQ(matrix.record.getNamesOfUpdateFiles(), nullptr);
  zmatrix::setDefaultMatrixPropertiesForRandomReadWrite(matrix.record);
  EXPECT_EQ(messages.take(), "setDefaultMatrixPropertiesForRandomReadWrite: can only be applied for an empty matrix\n");
  EXPECT_EQ(matrix.record.getMemorySearchMethod(), 1);

  SubMatrix empty;
  zmatrix::setDefaultMatrixPropertiesForRandomReadWrite(empty.record);
  EXPECT_EQ(empty.record.getMemorySearchMethod(), 0);
}

TEST(Profiles, SymbolBlockGetsTheSymbolsOwnValuesOnly) {
  SubMatrix matrix;
  ZQMatrixProperties& block = *matrix.header.getGlobalSymbolMatrixProperties();
  block.usePhrasesForUpdateMatrixWithLongANSIText = 7;
  block.includeOverdeterminedRules = 7;
  block.midiTimeSignatureNom = 7;
  block.addSequenceToUpdateInfoMode = 7;
  block.restartWithTrueStartItem = 7;
  zmatrix::setGlobalSymbolDefaultMatrixPropertiesForSymbols(matrix.header);
  EXPECT_EQ(block.isPhraseMatrix, 1);
  EXPECT_EQ(block.useEndOfSequence, 0);
  EXPECT_EQ(block.restartWithTrueStartItem, 1);
  EXPECT_EQ(block.usePhrasesForUpdateMatrixWithLongANSIText * block.includeOverdeterminedRules, 49);
  EXPECT_EQ(block.midiTimeSignatureNom * block.addSequenceToUpdateInfoMode, 49);
  EXPECT_EQ(block.keepSymbolsWhenRemoveOverdeterminedElements, 1);
  zmatrix::setGlobalSymbolDefaultMatrixPropertiesForSymbolsOfFullTier(matrix.header);
  EXPECT_EQ(block.keepSymbolsWhenRemoveOverdeterminedElements, 0);
}

// What the check of one profile says about one value of one setting, everything else being as the profile wants it.
struct CheckCase {
  Setting setting;
  int value;
  const char* refusedBy;      ///< letters of the profiles that refuse it
  const char* warnedAboutBy;  ///< letters of those that only warn
  const char* text;           ///< behind the check's name
};

constexpr CheckCase checkCases[] = {
    {Setting::coordinateDimension, 7, "SQMTGA", "I", "CoordinateDimension illegal: 7\n"},
    {Setting::allowLargeIndices, 1, "SQMTGA", "I", "allowLargeIndices illegal: 1\n"},
    {Setting::isPhraseMatrix, 0, "SQMTGAI", "", "isPhraseMatrix illegal: 0\n"},
    {Setting::matrixType, 0, "S", "", "matrixType is not ZQMatrixTypeIntegerSeries: 0\n"},
    {Setting::matrixType, 0, "QM", "", "matrixType is not ZQMatrixTypeMIDINoteAndQuanta: 0\n"},
    {Setting::matrixType, 0, "T", "", "matrixType is not ZQMatrixTypeMIDITriple_NDMT: 0\n"},
    {Setting::matrixType, 0, "G", "", "matrixType is not ZQMatrixTypeMIDIGMQuadruple_NDMTS: 0\n"},
    {Setting::matrixType, 0, "AI", "", "matrixType is not 3: 0\n"},
    {Setting::preProcessingType, 1001, "SQMTGA", "", "preprocessing illegal: 1001\n"},
    {Setting::preProcessingType, 1, "STGA", "", "preprocessing illegal: 1\n"},
    {Setting::preProcessingType, 1002, "STGA", "", "preprocessing illegal: 1002\n"},
    {Setting::preProcessingType, 0, "QMTG", "", "preprocessing illegal: 0\n"},
    {Setting::useStartOfSequence, 2, "SQMTGAI", "", "useStartOfSequence illegal: 2\n"},
    {Setting::useEndOfSequence, -1, "SQMTGAI", "", "useEndOfSequence illegal: -1\n"},
    {Setting::usePhrasesForUpdateMatrixWithLongANSIText, 2, "", "S", "getUsePhrasesForUpdateWithLongANSIText illegal: 2\n"},
    {Setting::usePhrasesForUpdateMatrixWithLongANSIText, 2, "A", "", "UsePhrasesForUpdateWithLongANSIText illegal: 2\n"},
    {Setting::usePhrasesForUpdateMatrixWithLongANSIText, 2, "", "", ""},
    {Setting::includeOverdeterminedRules, 2, "SQMTGAI", "", "includeOverDeterminedRules illegal: 2\n"},
    {Setting::restartWithTrueStartItem, 2, "SQMTGAI", "", "restartWithTrueStartItem illegal: 2\n"},
    {Setting::enableStopItem, 2, "SQMTGAI", "", "enableStopItem illegal: 2\n"},
    {Setting::successorMethod, 4, "SQMTGAI", "", "successorMethod illegal: 4\n"},
    {Setting::successorMethod, 0, "", "", ""},
    {Setting::maxPhraseLengthForUpdateWithSequence, 0, "S", "", "getMaxPhraseLengthForUpdateWithSequence illegal: 0\n"},
    {Setting::maxPhraseLengthForUpdateWithSequence, 0, "QMTGAI", "", "MaxPhraseLengthForUpdateWithSequence illegal: 0\n"},
    {Setting::midiTimeSignatureNom, 64, "QMTG", "SAI", "signatureNom illegal: 64\n"},
    {Setting::midiTimeSignatureDenom, -1, "QMTG", "SAI", "signatureDeNom illegal: -1\n"},
    {Setting::midiTimeSignatureDenom, 32, "", "", ""},
    {Setting::midiSubType, -1, "QMTG", "SAI", "midiSubType <0: -1\n"},
    {Setting::musicStyle, -1, "QMTG", "", "musicStyle <0: -1\n"},
    {Setting::midiSoundID, 17, "QMTG", "", "midiSoundID <0: 17\n"},
    {Setting::midiSoundID, 16, "", "", ""},
    {Setting::memorySearchMethod, 4, "SQMTGAI", "", "memorySearch Method illegal: 4\n"},
    {Setting::addUpdateInfo, 2, "SQMTGAI", "", "addUpdateInfo illegal: 2\n"},
};

bool isMusical(Setting setting) {
  return setting >= Setting::midiTimeSignatureNom && setting <= Setting::musicStyle;
}

// The wording of the prefix, where it is not what happens.
std::string expectedPrefix(const CheckCase& tried, char letter, bool isRefused, bool isGlobal) {
  if (!isRefused || tried.setting == Setting::usePhrasesForUpdateMatrixWithLongANSIText) return "warning: ";
  if (!isMusical(tried.setting)) return "error: ";
  if (isGlobal) return "warning: ";
  if (letter == 'Q' || (letter == 'M' && tried.setting == Setting::midiTimeSignatureNom)) return "error: ";
  return "warning: ";
}

std::string expectedMessage(const CheckCase& tried, Profile profile, bool isRefused, bool isGlobal) {
  const char letter = letters[static_cast<int>(profile)];
  std::string name = zmatrix::nameOf(profile);
  if (letter == 'M' && tried.setting == Setting::midiSoundID && !isGlobal) name = "MIDIElementsCDim2NoteNumberAndQuanta";
  return expectedPrefix(tried, letter, isRefused, isGlobal) +
         (isGlobal ? "checkGlobalMatrixPropertiesFor" : "checkMatrixPropertiesFor") + name + ": " + tried.text;
}

// The settings with several rows are told by profile: a row speaks for the profiles it names, and a row that names none for all.
bool speaksFor(const CheckCase& tried, char letter) {
  const bool namesNone = tried.refusedBy[0] == 0 && tried.warnedAboutBy[0] == 0;
  const bool isNamed = strchr(tried.refusedBy, letter) != nullptr || strchr(tried.warnedAboutBy, letter) != nullptr;
  const bool isSplit = tried.setting == Setting::matrixType || tried.setting == Setting::maxPhraseLengthForUpdateWithSequence ||
                       tried.setting == Setting::usePhrasesForUpdateMatrixWithLongANSIText;
  if (tried.setting == Setting::usePhrasesForUpdateMatrixWithLongANSIText && namesNone) return letter != 'S' && letter != 'A';
  return isSplit ? isNamed : true;
}

TEST(ProfileChecks, AcceptRefuseAndSayExactlyThis) {
  for (const CheckCase& tried : checkCases) {
    for (Profile profile : allProfiles) {
      const char letter = letters[static_cast<int>(profile)];
      if (!speaksFor(tried, letter)) continue;
      SubMatrix matrix;
      zmatrix::setGlobalDefaultMatrixProperties(profile, matrix.header);
      zmatrix::rowOf(tried.setting).storeInBlock(matrix.block(), tried.value);
      const bool isRefused = strchr(tried.refusedBy, letter) != nullptr;
      const bool isWarned = strchr(tried.warnedAboutBy, letter) != nullptr;
      const std::string expected = isRefused || isWarned ? expectedMessage(tried, profile, isRefused, true) : "";
      const bool isOfLevelOne = isWarned || isMusical(tried.setting);
      const std::string context = zmatrix::nameOf(profile) + std::string(" ") + zmatrix::rowOf(tried.setting).name;
      for (int level : {0, 1}) {
        CapturedMessages messages(level);
        EXPECT_EQ(zmatrix::checkGlobalMatrixProperties(profile, matrix.header), isRefused ? 0 : 1) << context;
        EXPECT_EQ(messages.take(), isOfLevelOne && level == 0 ? "" : expected) << context;
      }
    }
  }
}

// Values that the setters of a record let through: there the local texts can be seen.
TEST(ProfileChecks, OfARecordHaveTheirOwnWords) {
  for (const CheckCase& tried : checkCases) {
    for (Profile profile : allProfiles) {
      const char letter = letters[static_cast<int>(profile)];
      if (!speaksFor(tried, letter)) continue;
      SubMatrix matrix;
      zmatrix::setDefaultMatrixProperties(profile, static_cast<ZQMatrixMediumInfo&>(matrix.record), matrix.header, nullptr);
      zmatrix::rowOf(tried.setting).storeInRecord(matrix.record, tried.value);
      if (zmatrix::rowOf(tried.setting).readInRecord(matrix.record) != tried.value) continue;
      if (tried.setting == Setting::allowLargeIndices) continue;  // changes the dimension, which fails first
      const bool isRefused = strchr(tried.refusedBy, letter) != nullptr;
      const bool isWarned = strchr(tried.warnedAboutBy, letter) != nullptr;
      CapturedMessages messages(1);
      EXPECT_EQ(zmatrix::checkMatrixProperties(profile, matrix.record), isRefused ? 0 : 1);
      EXPECT_EQ(messages.take(), isRefused || isWarned ? expectedMessage(tried, profile, isRefused, false) : "");
    }
  }
}

TEST(ProfileChecks, OfTheFullTierLookAtTheBasicBlockOnly) {
  SubMatrix matrix;
  CapturedMessages messages(1);
  zmatrix::setGlobalSymbolDefaultMatrixPropertiesForSymbols(matrix.header);
  matrix.header.setGlobalSymbolKeepSymbolsWhenRemoveOverdeterminedElements(5);
  EXPECT_EQ(zmatrix::checkGlobalSymbolMatrixPropertiesForSymbolsOfFullTier(matrix.header), 1);
  zmatrix::setGlobalDefaultMatrixProperties(Profile::MIDIElementsGMQuadruple_NDMTS, matrix.header);
  matrix.header.setGlobalKeepSymbolsWhenRemoveOverdeterminedElements(5);
  EXPECT_EQ(zmatrix::checkGlobalSymbolMatrixPropertiesForSymbolsOfFullTier(matrix.header), 0);
  EXPECT_EQ(zmatrix::checkGlobalMatrixPropertiesOfFullTier(Profile::MIDIElementsGMQuadruple_NDMTS, matrix.header), 1);
  zmatrix::setGlobalDefaultMatrixProperties(Profile::ANSIText, matrix.header);
  EXPECT_EQ(zmatrix::checkGlobalMatrixPropertiesOfFullTier(Profile::ANSIText, matrix.header), 0);
  EXPECT_EQ(messages.take(), "") << "in silence";

  matrix.header.setGlobalSymbolIsPhraseMatrix(0);
  EXPECT_EQ(zmatrix::checkGlobalSymbolMatrixPropertiesForSymbols(matrix.header), 0);
  EXPECT_EQ(messages.take(), "error: checkGlobalSymbolMatrixPropertiesForSymbols: isPhraseMatrix illegal: 0\n");
}

TEST(ProfileChecks, RefuseTheDefaultsOfANewHeader) {
  for (Profile profile : allProfiles) {
    SubMatrix matrix;
    EXPECT_EQ(zmatrix::checkGlobalMatrixProperties(profile, matrix.header), 0) << zmatrix::nameOf(profile);
  }
}

TEST(ApplyGlobalProperties, CopiesThroughTheGuards) {
  SubMatrix matrix;
  zmatrix::setGlobalDefaultMatrixPropertiesOfFullTier(Profile::IntegerSeries, matrix.header);
  matrix.block().ocronType = 3;
  matrix.block().enableStopItem = 5;
  matrix.block().midiChannelFilter[3] = 1;
  memset(matrix.block().nameOfUpdateFile, 'n', 256);
  CapturedMessages messages(0);
  zmatrix::applyGlobalMatrixProperties(matrix.record, matrix.header);
  EXPECT_EQ(messages.take(), "error: setEnableStopItem: illegal value; 5\n");
  EXPECT_EQ(matrix.record.getEnableStopItem(), 1);
  EXPECT_EQ(matrix.record.getMatrixType(), 2);
  EXPECT_EQ(matrix.record.getSuccessorMethod(), 1);
  EXPECT_EQ(matrix.record.getOcronType(), 3);
  EXPECT_EQ(matrix.record.getMidiChannelFilterArray()[3], 1);
  EXPECT_EQ(std::string(matrix.record.getNameOfUpdateFile()), std::string(256, 'n'));
  EXPECT_EQ(matrix.record.getSkillOutputLevel(), 64) << "256 is more than a phrase can be long";
  EXPECT_EQ(matrix.record.getKeepSymbolsWhenRemoveOverdeterminedElements(), 0);

  SubMatrix symbols;
  symbols.header.getGlobalSymbolMatrixProperties()->ocronType = 3;
  zmatrix::applyGlobalSymbolMatrixProperties(symbols.record, symbols.header);
  EXPECT_EQ(symbols.record.getMatrixType(), 2);
  EXPECT_EQ(symbols.record.getOcronType(), 4) << "number codes stay";
}

}  // namespace
