// The profiles and their checks; the settings of each and the messages on other values are in tests/data/texts.
#include "settings/ZQMatrixProfiles.h"

#include <gtest/gtest.h>

#include <string>

#include "support/CapturedMessages.h"
#include "support/KeptText.h"

using zmatrix::ZQDebugChannel;
using zmatrix::ZQMatrixFileHeader;

namespace {

using zmatrix::CapturedMessages;
using zmatrix::Profile;

constexpr Profile allProfiles[] = {Profile::Symbols,
                                   Profile::MIDIElementsCDim2NoteNumberAndQuanta,
                                   Profile::MIDIElementsCDim2NoteNumberAndModQuanta,
                                   Profile::MIDIElementsTriple_NDMT,
                                   Profile::MIDIElementsGMQuadruple_NDMTS,
                                   Profile::ANSIText,
                                   Profile::IntegerSeries};
struct SubMatrix {
  SubMatrix() {
    EXPECT_EQ(header.initFileHeader(2), 1);
    EXPECT_EQ(record.initMatrixInfo(0), 1);
  }
  ZQMatrixProperties& block() { return *header.getGlobalMatrixProperties(); }

  ZQMatrixFileHeader header;
  ZQMatrixInfo record;
};

/// The settings that are numbers, in the order of the blocks.
std::vector<const zmatrix::FieldRow*> settings() {
  std::vector<const zmatrix::FieldRow*> rows;
  zmatrix::forEachBlockField(ZQMatrixInfoTypeFull, [&rows](const zmatrix::FieldRow& row) {
    if (row.kind == zmatrix::FieldRow::number && row.isSavedInBlocks()) rows.push_back(&row);
  });
  return rows;
}

bool isOfMediumTier(const zmatrix::FieldRow& row) {
  return !row.is(&ZQMatrixProperties::keepSymbolsWhenRemoveOverdeterminedElements);
}

/// Calls `change` and lists the settings that it has changed with their new values.
template <class Place, class Change>
std::string changes(const Place& place, Change change) {
  std::vector<int> before;
  std::string text;
  for (const auto* row : settings()) before.push_back(row->valueIn(place));
  change();
  for (size_t i = 0; const auto* row : settings()) {
    const int now = row->valueIn(place);
    if (now != before[i++]) text += std::string(" ") + row->name + "=" + std::to_string(now);
  }
  return text + "\n";
}

// Before, the settings have values that no profile sets, as far as the record accepts them.
TEST(ProfilesTest, SetTheValuesOfTheirColumn) {
  std::string text;
  for (Profile profile : allProfiles) {
    SubMatrix matrix;
    for (const auto* row : settings()) {
      row->valueIn(matrix.block()) = 77;
      if (!isOfMediumTier(*row) || row->is(&ZQMatrixProperties::allowLargeIndices)) continue;
      for (const int value : {0, 2, 77}) row->set(matrix.record, value);
    }
    matrix.record.getMidiChannelFilterArray()[15] = 1;
    for (const int keepBefore : {0, 1}) {
      matrix.record.setKeepSymbolsWhenRemoveOverdeterminedElements(keepBefore);
      text += std::string(zmatrix::nameOf(profile)) + " in the record:" + changes(matrix.record, [&] {
                zmatrix::setDefaultMatrixProperties(profile, matrix.record, matrix.header, "file");
              });
    }
    EXPECT_STREQ(matrix.record.getNameOfUpdateFile(), "file");
    EXPECT_STREQ(matrix.record.getNamesOfUpdateFiles(), "file\nfile\n");
    EXPECT_EQ(matrix.record.getMidiChannelFilterArray()[15], 0);
    for (const auto* row : settings()) row->valueIn(matrix.block()) = 77;
    matrix.header.setGlobalNameOfUpdateFile("file");
    text += std::string(zmatrix::nameOf(profile)) + " in the block:" + changes(matrix.block(), [&] {
              zmatrix::setGlobalDefaultMatrixProperties(profile, matrix.header, ZQMatrixInfoTypeFull);
            });
    EXPECT_STREQ(matrix.header.getGlobalNameOfUpdateFile(), "");
    CapturedMessages messages(1);
    matrix.block().maxPhraseLengthForUpdateWithSequence = 50;  // one profile doesn't set it
    EXPECT_EQ(zmatrix::checkMatrixProperties(profile, matrix.record), 1) << zmatrix::nameOf(profile);
    EXPECT_EQ(messages.take(), "") << "a profile passes its own check";
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

/// The result and messages of a check; empty for 1 without a message.
template <class Check>
std::string verdictOf(Check check) {
  CapturedMessages messages(0);
  const int result = check();
  const std::string atLevel0 = messages.take();
  ZQDebugChannel::globalDebugLevel = 1;
  check();
  const std::string message = messages.take();
  if (message.empty()) return result == 1 ? "" : std::to_string(result) + "\n";
  return std::to_string(result) + (message == atLevel0 ? " " : " at level 1: ") + message;
}

// All settings but one are those of the profile. Setters of a record refuse values that a block accepts.
TEST(ProfileChecksTest, HaveTheirResultsAndMessages) {
  std::string text;
  for (Profile profile : allProfiles) {
    for (const auto* row : settings()) {
      SubMatrix matrix;
      zmatrix::setGlobalDefaultMatrixProperties(profile, matrix.header, ZQMatrixInfoTypeMedium);
      text += zmatrix::verdicts(std::string("global ") + row->name, [&](int value) {
        row->valueIn(matrix.block()) = value;
        return verdictOf([&] { return zmatrix::checkGlobalMatrixProperties(profile, matrix.header, ZQMatrixInfoTypeMedium); });
      });
      if (!isOfMediumTier(*row) || row->is(&ZQMatrixProperties::allowLargeIndices)) continue;
      zmatrix::setDefaultMatrixProperties(profile, static_cast<ZQMatrixMediumInfo&>(matrix.record), matrix.header, nullptr);
      text += zmatrix::verdicts(row->name, [&](int value) {
        row->set(matrix.record, value);
        if (row->valueIn(matrix.record) != value) return std::string();
        return verdictOf([&] { return zmatrix::checkMatrixProperties(profile, matrix.record); });
      });
    }
  }
  zmatrix::expectKeptText("profile_checks.txt", text);
}

TEST(ProfileChecksTest, OfTheFullTierCheckTheBasicBlockOnly) {
  SubMatrix matrix;
  CapturedMessages messages(1);
  zmatrix::setGlobalSymbolDefaultMatrixProperties(matrix.header, ZQMatrixInfoTypeMedium);
  matrix.header.getGlobalSymbolMatrixProperties()->keepSymbolsWhenRemoveOverdeterminedElements = 5;
  EXPECT_EQ(zmatrix::checkGlobalSymbolMatrixProperties(matrix.header, ZQMatrixInfoTypeFull), 1);
  zmatrix::setGlobalDefaultMatrixProperties(Profile::MIDIElementsGMQuadruple_NDMTS, matrix.header, ZQMatrixInfoTypeMedium);
  matrix.block().keepSymbolsWhenRemoveOverdeterminedElements = 5;
  EXPECT_EQ(zmatrix::checkGlobalSymbolMatrixProperties(matrix.header, ZQMatrixInfoTypeFull), 0);
  EXPECT_EQ(zmatrix::checkGlobalMatrixProperties(Profile::MIDIElementsGMQuadruple_NDMTS, matrix.header, ZQMatrixInfoTypeFull), 1);
  zmatrix::setGlobalDefaultMatrixProperties(Profile::ANSIText, matrix.header, ZQMatrixInfoTypeMedium);
  EXPECT_EQ(zmatrix::checkGlobalMatrixProperties(Profile::ANSIText, matrix.header, ZQMatrixInfoTypeFull), 0);
  EXPECT_EQ(messages.take(), "");

  matrix.header.getGlobalSymbolMatrixProperties()->isPhraseMatrix = 0;
  EXPECT_EQ(zmatrix::checkGlobalSymbolMatrixProperties(matrix.header, ZQMatrixInfoTypeMedium), 0);
  EXPECT_EQ(messages.take(), "error: checkGlobalSymbolMatrixPropertiesForSymbols: isPhraseMatrix illegal: 0\n");
}

TEST(ApplyGlobalPropertiesTest, CopiesThroughTheSetters) {
  SubMatrix matrix;
  zmatrix::setGlobalDefaultMatrixProperties(Profile::IntegerSeries, matrix.header, ZQMatrixInfoTypeFull);
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
  EXPECT_EQ(symbols.record.getOcronType(), 4) << "number codes are not copied";
}

}  // namespace
