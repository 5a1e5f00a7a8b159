// The profiles and their checks. What each sets, and what each says about values that don't suit it, is kept in tests/data/texts.
#include "settings/ZQMatrixProfiles.h"

#include <gtest/gtest.h>

#include <string>

#include "settings/ZQMatrixSettingTable.h"
#include "support/CapturedMessages.h"
#include "support/KeptText.h"

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
struct SubMatrix {
  SubMatrix() {
    header.initFileHeader(2);
    record.initMatrixInfo(0);
  }
  ZQMatrixProperties& block() { return *header.getGlobalMatrixProperties(); }

  ZQMatrixFileHeader header;
  ZQMatrixInfo record;
};

constexpr int numberOfSettings = static_cast<int>(Setting::numberOfSettings);

const zmatrix::SettingRow& row(int setting) {
  return zmatrix::rowOf(static_cast<Setting>(setting));
}

/// Calls `change`, and gives the settings that it has changed, with their new values.
template <class Read, class Change>
std::string changes(Read read, Change change) {
  std::vector<int> before;
  std::string text;
  for (int i = 0; i < numberOfSettings; ++i) before.push_back(read(row(i)));
  change();
  for (int i = 0; i < numberOfSettings; ++i) {
    const int now = read(row(i));
    if (now != before[static_cast<size_t>(i)]) text += std::string(" ") + row(i).name + "=" + std::to_string(now);
  }
  return text + "\n";
}

// The settings before are such as no profile has, as far as a record takes them.
TEST(ProfilesTest, SetWhatTheirColumnHas) {
  std::string text;
  for (Profile profile : allProfiles) {
    SubMatrix matrix;
    for (int i = 0; i < numberOfSettings; ++i) {
      row(i).storeInBlock(matrix.block(), 77);
      if (row(i).storeInRecord == nullptr || i == static_cast<int>(Setting::allowLargeIndices)) continue;
      for (const int value : {0, 2, 77}) row(i).storeInRecord(matrix.record, value);
    }
    matrix.record.getMidiChannelFilterArray()[15] = 1;
    const auto inBlock = [&matrix](const zmatrix::SettingRow& setting) { return setting.readInBlock(matrix.block()); };
    const auto inRecord = [&matrix](const zmatrix::SettingRow& setting) {
      return setting.readInRecord != nullptr ? setting.readInRecord(matrix.record)
                                             : matrix.record.getKeepSymbolsWhenRemoveOverdeterminedElements();
    };
    for (const int keepBefore : {0, 1}) {
      matrix.record.setKeepSymbolsWhenRemoveOverdeterminedElements(keepBefore);
      text += std::string(zmatrix::nameOf(profile)) + " in the record:" + changes(inRecord, [&] {
                zmatrix::setDefaultMatrixProperties(profile, matrix.record, matrix.header, "file");
              });
    }
    EXPECT_STREQ(matrix.record.getNameOfUpdateFile(), "file");
    EXPECT_STREQ(matrix.record.getNamesOfUpdateFiles(), "file\nfile\n");
    EXPECT_EQ(matrix.record.getMidiChannelFilterArray()[15], 0);
    for (int i = 0; i < numberOfSettings; ++i) row(i).storeInBlock(matrix.block(), 77);
    matrix.header.setGlobalNameOfUpdateFile("file");
    text += std::string(zmatrix::nameOf(profile)) + " in the block:" + changes(inBlock, [&] {
              zmatrix::setGlobalDefaultMatrixPropertiesOfFullTier(profile, matrix.header);
            });
    EXPECT_STREQ(matrix.header.getGlobalNameOfUpdateFile(), "");
    CapturedMessages messages(1);
    matrix.block().maxPhraseLengthForUpdateWithSequence = 50;  // left alone by one profile
    EXPECT_EQ(zmatrix::checkMatrixProperties(profile, matrix.record), 1) << zmatrix::nameOf(profile);
    EXPECT_EQ(messages.take(), "") << "what a profile sets passes its check";
  }
  zmatrix::expectKeptText("profiles.txt", text);
}

TEST(ProfilesTest, AreRefusedOnAFilledMatrix) {
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

TEST(ProfilesTest, SymbolBlockGetsTheSymbolsOwnValuesOnly) {
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

/// What a check answers and says, if it is anything but 1 in silence.
template <class Check>
std::string verdictOf(Check check) {
  CapturedMessages messages(0);
  const int result = check();
  const std::string atLevel0 = messages.take();
  ZQDebugChannel::globalDebugLevel = 1;
  check();
  const std::string told = messages.take();
  if (told.empty()) return result == 1 ? "" : std::to_string(result) + "\n";
  return std::to_string(result) + (told == atLevel0 ? " " : " at level 1: ") + told;
}

// Everything but one setting is as the profile wants it. A record's setters let fewer values through than a block takes.
TEST(ProfileChecksTest, AcceptRefuseAndSayExactlyThis) {
  std::string text;
  for (Profile profile : allProfiles) {
    for (int i = 0; i < numberOfSettings; ++i) {
      SubMatrix matrix;
      zmatrix::setGlobalDefaultMatrixProperties(profile, matrix.header);
      text += zmatrix::verdicts(std::string("global ") + row(i).name, [&](int value) {
        row(i).storeInBlock(matrix.block(), value);
        return verdictOf([&] { return zmatrix::checkGlobalMatrixProperties(profile, matrix.header); });
      });
      if (row(i).storeInRecord == nullptr || i == static_cast<int>(Setting::allowLargeIndices)) continue;
      zmatrix::setDefaultMatrixProperties(profile, static_cast<ZQMatrixMediumInfo&>(matrix.record), matrix.header, nullptr);
      text += zmatrix::verdicts(row(i).name, [&](int value) {
        row(i).storeInRecord(matrix.record, value);
        if (row(i).readInRecord(matrix.record) != value) return std::string();
        return verdictOf([&] { return zmatrix::checkMatrixProperties(profile, matrix.record); });
      });
    }
  }
  zmatrix::expectKeptText("profile_checks.txt", text);
}

TEST(ProfileChecksTest, OfTheFullTierLookAtTheBasicBlockOnly) {
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

TEST(ApplyGlobalPropertiesTest, CopiesThroughTheGuards) {
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
