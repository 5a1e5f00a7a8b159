// What the profiles set. The table below has a column per profile and stands in the order in which the values are set.
#include "settings/ZQMatrixProfiles.h"

#include <climits>

#include "frame/ZQDebugChannel.h"
#include "settings/ZQMatrixSettingTable.h"

using zmatrix::Profile;
using zmatrix::Setting;

namespace {

constexpr int numberOfProfiles = static_cast<int>(Profile::numberOfProfiles);
constexpr int notSet = INT_MIN;

// Where a row applies.
constexpr int inRecord = 1;
constexpr int inBlock = 2;
constexpr int inSymbolBlock = 4;
constexpr int inLevelBlocks = inRecord | inBlock;
constexpr int everywhere = inRecord | inBlock | inSymbolBlock;

struct ProfileRow {
  Setting setting;
  int places;
  int values[numberOfProfiles];  ///< symbols, two note pairs, triple, quadruple, text, integer series
};

// Up to the name of the update file.
constexpr ProfileRow rowsBeforeName[] = {
    {Setting::coordinateDimension, everywhere, {1, 2, 2, 3, 4, 1, 1}},
    {Setting::allowLargeIndices, everywhere, {0, 0, 0, 0, 0, 0, 0}},
    {Setting::isPhraseMatrix, everywhere, {1, 1, 1, 1, 1, 1, 1}},
    {Setting::matrixType, everywhere, {2, 1, 1, 4, 5, 3, 2}},
    {Setting::preProcessingType, everywhere, {0, 1, 1002, 1003, 1004, 1000, 1}},
    {Setting::useStartOfSequence, everywhere, {1, 1, 1, 1, 1, 1, 1}},
    {Setting::useEndOfSequence, everywhere, {0, 1, 1, 1, 1, 1, 0}},
    {Setting::usePhrasesForUpdateMatrixWithLongANSIText, inLevelBlocks, {0, 0, 0, 0, 0, 1, 0}},
    {Setting::includeOverdeterminedRules, inLevelBlocks, {1, 1, 1, 1, 1, 1, 1}},
    {Setting::restartWithTrueStartItem, inRecord | inSymbolBlock, {1, 1, 1, 1, 1, 1, 1}},
    {Setting::restartWithTrueStartItem, inBlock, {1, 1, 1, 1, 1, 1, 0}},
    {Setting::enableStopItem, everywhere, {1, 1, 1, 1, 1, 1, 0}},
    {Setting::successorMethod, everywhere, {3, 3, 3, 3, 3, 3, 1}},
    {Setting::maxPhraseLengthForUpdateWithSequence, everywhere, {64, 64, 64, 64, 64, 64, notSet}},
    {Setting::language, everywhere, {0, 0, 0, 0, 0, 0, 0}},
    {Setting::midiTimeSignatureNom, inLevelBlocks, {0, 4, 4, 4, 4, 0, 0}},
    {Setting::midiTimeSignatureDenom, inLevelBlocks, {0, 4, 4, 4, 4, 0, 0}},
    {Setting::midiSubType, inLevelBlocks, {0, 0, 0, 0, 0, 0, 0}},
    {Setting::midiNoteOnQuantization, inLevelBlocks, {16, 16, 16, 16, 16, 16, 16}},
    {Setting::midiDurationQuantization, inLevelBlocks, {16, 16, 16, 16, 16, 16, 16}},
    {Setting::midiTrackAnalyze, inLevelBlocks, {2, 2, 2, 2, 2, 2, 2}},
    {Setting::musicStyle, inLevelBlocks, {0, 0, 0, 0, 0, 0, 0}},
    {Setting::midiSoundID, inLevelBlocks, {0, 0, 0, 0, 0, 0, 0}},
};

constexpr ProfileRow rowsBehindName[] = {
    {Setting::memorySearchMethod, everywhere, {1, 1, 1, 1, 1, 1, 1}},
    {Setting::addUpdateInfo, everywhere, {0, 0, 0, 0, 0, 0, 0}},
    {Setting::addSequenceToUpdateInfo, everywhere, {0, 0, 0, 0, 0, 0, 0}},
    {Setting::addSequenceToUpdateInfoMode, inLevelBlocks, {0, 0, 0, 0, 0, 0, 0}},
};

// Which profiles set the number codes: in the record and in the global block when a sub-matrix is set, and when the block is set.
// The symbol profile reaches for the global block both times.
constexpr int codesIntoRecord[numberOfProfiles] = {0, 0, 0, 0, 0, 0, 1};
constexpr int codesIntoBlockWithRecord[numberOfProfiles] = {1, 0, 0, 0, 0, 0, 0};
constexpr int codesIntoBlock[numberOfProfiles] = {1, 0, 0, 0, 0, 0, 1};

// The full tier's own field.
constexpr int keepSymbols[numberOfProfiles] = {0, 1, 1, 1, notSet, 1, 0};

int columnOf(Profile profile) {
  return static_cast<int>(profile);
}

template <int numberOfRows, class Store>
void setRows(const ProfileRow (&rows)[numberOfRows], Profile profile, int place, Store store) {
  for (const ProfileRow& row : rows) {
    const int value = row.values[columnOf(profile)];
    if ((row.places & place) != 0 && value != notSet) store(zmatrix::rowOf(row.setting), value);
  }
}

void setNumberCodes(ZQMatrixMediumInfo& record) {
#define ZQ_SETTING(type, name, Name, initial, symbolInitial, sinceVersion)
#define ZQ_OCRON_SETTING(type, name, Name, initial, symbolInitial, sinceVersion) record.set##Name(initial);
#include "settings/ZQMatrixSettings.def"
}

void setNumberCodes(ZQMatrixProperties& block) {
#define ZQ_SETTING(type, name, Name, initial, symbolInitial, sinceVersion)
#define ZQ_OCRON_SETTING(type, name, Name, initial, symbolInitial, sinceVersion) block.name = initial;
#include "settings/ZQMatrixSettings.def"
}

void applyBlock(ZQMatrixMediumInfo& record, const ZQMatrixProperties& block, bool withNumberCodes) {
#define ZQ_SETTING(type, name, Name, initial, symbolInitial, sinceVersion) record.set##Name(block.name);
#define ZQ_OCRON_SETTING(type, name, Name, initial, symbolInitial, sinceVersion) \
  if (withNumberCodes) record.set##Name(block.name);
#define ZQ_FULL_SETTING(type, name, Name, initial, symbolInitial, sinceVersion)
#define ZQ_TEXT_SETTING(name, Name, bytes) record.set##Name(block.name);
#define ZQ_BYTES_SETTING(name, Name, bytes) record.set##Name##Array(block.name);
#include "settings/ZQMatrixSettings.def"
}

}  // namespace

const char* zmatrix::nameOf(Profile profile) {
  static constexpr const char* names[] = {
#define ZQ_PROFILE(Name) #Name,
#include "settings/ZQMatrixProfiles.def"
  };
  return names[columnOf(profile)];
}

void zmatrix::setDefaultMatrixProperties(Profile profile, ZQMatrixMediumInfo& record, ZQMatrixFileHeader& header,
                                         const char* updateFile) {
  if (!record.isEmpty()) {
    dbPrintf(0, "setDefaultMatrixPropertiesFor%s: can only be applied for an empty matrix\n", nameOf(profile));
    return;
  }
  const auto store = [&record](const SettingRow& row, int value) { row.storeInRecord(record, value); };
  setRows(rowsBeforeName, profile, inRecord, store);
  if (updateFile != nullptr) {
    record.setNameOfUpdateFile(updateFile);
    record.addNameOfUpdateFile(updateFile);
  }
  setRows(rowsBehindName, profile, inRecord, store);
  memset(record.getMidiChannelFilterArray(), 0, sizeof ZQMatrixProperties::midiChannelFilter);
  if (codesIntoRecord[columnOf(profile)] == 1) setNumberCodes(record);
  if (codesIntoBlockWithRecord[columnOf(profile)] == 1) setNumberCodes(*header.getGlobalMatrixProperties());
}

void zmatrix::setDefaultMatrixProperties(Profile profile, ZQMatrixInfo& record, ZQMatrixFileHeader& header,
                                         const char* updateFile) {
  setDefaultMatrixProperties(profile, static_cast<ZQMatrixMediumInfo&>(record), header, updateFile);
  const int keep = keepSymbols[columnOf(profile)];
  if (keep != notSet) record.setKeepSymbolsWhenRemoveOverdeterminedElements(keep);
}

void zmatrix::setDefaultMatrixPropertiesForRandomReadWrite(ZQMatrixBaseInfo& record) {
  if (!record.isEmpty()) {
    dbPrintf(0, "setDefaultMatrixPropertiesForRandomReadWrite: can only be applied for an empty matrix\n");
    return;
  }
  record.setCoordinateDimension(1);
  record.setAllowLargeIndices(0);
  record.setMatrixType(ZQMatrixTypeUndefined);
  record.setMemorySearchMethod(0);
}

void zmatrix::setGlobalDefaultMatrixProperties(Profile profile, ZQMatrixFileHeader& header) {
  ZQMatrixProperties& block = *header.getGlobalMatrixProperties();
  const auto store = [&block](const SettingRow& row, int value) { row.storeInBlock(block, value); };
  setRows(rowsBeforeName, profile, inBlock, store);
  header.setGlobalNameOfUpdateFile("");
  setRows(rowsBehindName, profile, inBlock, store);
  memset(block.midiChannelFilter, 0, sizeof block.midiChannelFilter);
  if (codesIntoBlock[columnOf(profile)] == 1) setNumberCodes(block);
}

void zmatrix::setGlobalDefaultMatrixPropertiesOfFullTier(Profile profile, ZQMatrixFileHeader& header) {
  setGlobalDefaultMatrixProperties(profile, header);
  const int keep = keepSymbols[columnOf(profile)];
  if (keep != notSet) header.setGlobalKeepSymbolsWhenRemoveOverdeterminedElements(keep);
}

void zmatrix::setGlobalSymbolDefaultMatrixPropertiesForSymbols(ZQMatrixFileHeader& header) {
  ZQMatrixProperties& block = *header.getGlobalSymbolMatrixProperties();
  const auto store = [&block](const SettingRow& row, int value) { row.storeInBlock(block, value); };
  setRows(rowsBeforeName, Profile::Symbols, inSymbolBlock, store);
  setRows(rowsBehindName, Profile::Symbols, inSymbolBlock, store);
}

void zmatrix::setGlobalSymbolDefaultMatrixPropertiesForSymbolsOfFullTier(ZQMatrixFileHeader& header) {
  setGlobalSymbolDefaultMatrixPropertiesForSymbols(header);
  header.setGlobalSymbolKeepSymbolsWhenRemoveOverdeterminedElements(keepSymbols[columnOf(Profile::Symbols)]);
}

void zmatrix::applyGlobalMatrixProperties(ZQMatrixMediumInfo& record, ZQMatrixFileHeader& header) {
  applyBlock(record, *header.getGlobalMatrixProperties(), true);
}

void zmatrix::applyGlobalMatrixProperties(ZQMatrixInfo& record, ZQMatrixFileHeader& header) {
  applyGlobalMatrixProperties(static_cast<ZQMatrixMediumInfo&>(record), header);
  record.setKeepSymbolsWhenRemoveOverdeterminedElements(header.getGlobalKeepSymbolsWhenRemoveOverdeterminedElements());
}

void zmatrix::applyGlobalSymbolMatrixProperties(ZQMatrixMediumInfo& record, ZQMatrixFileHeader& header) {
  applyBlock(record, *header.getGlobalSymbolMatrixProperties(), false);
}

void zmatrix::applyGlobalSymbolMatrixProperties(ZQMatrixInfo& record, ZQMatrixFileHeader& header) {
  applyGlobalSymbolMatrixProperties(static_cast<ZQMatrixMediumInfo&>(record), header);
  record.setKeepSymbolsWhenRemoveOverdeterminedElements(header.getGlobalSymbolKeepSymbolsWhenRemoveOverdeterminedElements());
}
