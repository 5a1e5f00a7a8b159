// What the profiles' checks accept. A row per setting, in testing order, with a rule per profile; behind the tables the few
// places where a message or its level differs from the rest. The words "error" and "warning" of a message don't decide what
// happens: the rules do.
#include <climits>

#include "frame/ZQDebugChannel.h"
#include "settings/ZQMatrixProfiles.h"
#include "settings/ZQMatrixSettingTable.h"

using zmatrix::Profile;
using zmatrix::Setting;

namespace {

constexpr int numberOfProfiles = static_cast<int>(Profile::numberOfProfiles);

enum class Breach { fails, warns };

struct Rule {
  int lowest;
  int highest;
  int alternative;  ///< accepted as well
  Breach breach = Breach::fails;
};

constexpr Rule from(int lowest, int highest) {
  return {lowest, highest, lowest};
}
constexpr Rule only(int value) {
  return {value, value, value};
}
constexpr Rule either(int value, int alternative) {
  return {value, value, alternative};
}
constexpr Rule warning(Rule rule) {
  return {rule.lowest, rule.highest, rule.alternative, Breach::warns};
}
constexpr Rule untested = {INT_MIN, INT_MAX, 0};
constexpr Rule flag = from(0, 1);
constexpr Rule notNegative = from(0, INT_MAX);
constexpr Rule signature = from(0, 32);

struct CheckRow {
  Setting setting;
  const char* text;
  bool isMidiSetting;            ///< its failures print at level 1
  Rule rules[numberOfProfiles];  ///< symbols, two note pairs, triple, quadruple, text, integer series
};

constexpr CheckRow alike(Setting setting, const char* text, Rule rule) {
  return {setting, text, false, {rule, rule, rule, rule, rule, rule, rule}};
}

constexpr CheckRow inMusic(Setting setting, const char* text, Rule rule, Rule elsewhere) {
  return {setting, text, true, {elsewhere, rule, rule, rule, rule, elsewhere, elsewhere}};
}

constexpr CheckRow checkRows[] = {
    {Setting::coordinateDimension,
     "CoordinateDimension illegal",
     false,
     {only(1), only(2), only(2), only(3), only(4), only(1), warning(only(1))}},
    {Setting::allowLargeIndices,
     "allowLargeIndices illegal",
     false,
     {only(0), only(0), only(0), only(0), only(0), only(0), warning(only(0))}},
    alike(Setting::isPhraseMatrix, "isPhraseMatrix illegal", only(1)),
    {Setting::matrixType, nullptr, false, {only(2), only(1), only(1), only(4), only(5), only(3), only(2)}},
    {Setting::preProcessingType,
     "preprocessing illegal",
     false,
     {only(0), either(1, 1002), either(1, 1002), only(1003), only(1004), either(0, 1000), untested}},
    alike(Setting::useStartOfSequence, "useStartOfSequence illegal", flag),
    alike(Setting::useEndOfSequence, "useEndOfSequence illegal", flag),
    {Setting::usePhrasesForUpdateMatrixWithLongANSIText,
     "UsePhrasesForUpdateWithLongANSIText illegal",
     false,
     {warning(flag), untested, untested, untested, untested, flag, untested}},
    alike(Setting::includeOverdeterminedRules, "includeOverDeterminedRules illegal", flag),
    alike(Setting::restartWithTrueStartItem, "restartWithTrueStartItem illegal", flag),
    alike(Setting::enableStopItem, "enableStopItem illegal", flag),
    alike(Setting::successorMethod, "successorMethod illegal", from(0, 3)),
    alike(Setting::maxPhraseLengthForUpdateWithSequence, "MaxPhraseLengthForUpdateWithSequence illegal", from(1, INT_MAX)),
    inMusic(Setting::midiTimeSignatureNom, "signatureNom illegal", signature, warning(signature)),
    inMusic(Setting::midiTimeSignatureDenom, "signatureDeNom illegal", signature, warning(signature)),
    inMusic(Setting::midiSubType, "midiSubType <0", notNegative, warning(notNegative)),
    inMusic(Setting::musicStyle, "musicStyle <0", notNegative, untested),
    inMusic(Setting::midiSoundID, "midiSoundID <0", from(0, 16), untested),
    alike(Setting::memorySearchMethod, "memorySearch Method illegal", from(0, 3)),
    alike(Setting::addUpdateInfo, "addUpdateInfo illegal", flag),
};

// The last two name text for both.
constexpr const char* matrixTypeTexts[numberOfProfiles] = {"matrixType is not ZQMatrixTypeIntegerSeries",
                                                           "matrixType is not ZQMatrixTypeMIDINoteAndQuanta",
                                                           "matrixType is not ZQMatrixTypeMIDINoteAndQuanta",
                                                           "matrixType is not ZQMatrixTypeMIDITriple_NDMT",
                                                           "matrixType is not ZQMatrixTypeMIDIGMQuadruple_NDMTS",
                                                           "matrixType is not 3",
                                                           "matrixType is not 3"};

/// Which of the check operations runs.
struct Check {
  Profile profile;
  bool isOfRecord;         ///< else of a global block
  const char* namePrefix;  ///< of the operation
};

const char* textOf(const CheckRow& row, Profile profile) {
  if (row.setting == Setting::matrixType) return matrixTypeTexts[static_cast<int>(profile)];
  if (profile != Profile::Symbols) return row.text;
  if (row.setting == Setting::usePhrasesForUpdateMatrixWithLongANSIText) return "getUsePhrasesForUpdateWithLongANSIText illegal";
  if (row.setting == Setting::maxPhraseLengthForUpdateWithSequence) return "getMaxPhraseLengthForUpdateWithSequence illegal";
  return row.text;
}

// The musical failures call themselves errors in the first check of note pairs only, and for the nominator in the second.
bool callsItselfWarning(const CheckRow& row, const Check& check) {
  if (row.setting == Setting::usePhrasesForUpdateMatrixWithLongANSIText) return true;
  if (!row.isMidiSetting) return false;
  if (!check.isOfRecord) return true;
  if (check.profile == Profile::MIDIElementsCDim2NoteNumberAndQuanta) return false;
  return check.profile != Profile::MIDIElementsCDim2NoteNumberAndModQuanta || row.setting != Setting::midiTimeSignatureNom;
}

// One message names the check of the neighbouring profile.
Profile namedProfile(const CheckRow& row, const Check& check) {
  const bool namesNeighbour = row.setting == Setting::midiSoundID && check.isOfRecord &&
                              check.profile == Profile::MIDIElementsCDim2NoteNumberAndModQuanta;
  return namesNeighbour ? Profile::MIDIElementsCDim2NoteNumberAndQuanta : check.profile;
}

void report(const CheckRow& row, const Check& check, Breach breach, int value) {
  const bool isWarning = breach == Breach::warns || callsItselfWarning(row, check);
  const int level = breach == Breach::warns || row.isMidiSetting ? 1 : 0;
  dbPrintf(level, "%s: %sFor%s: %s: %d\n", isWarning ? "warning" : "error", check.namePrefix,
           zmatrix::nameOf(namedProfile(row, check)), textOf(row, check.profile), value);
}

bool accepts(const Rule& rule, int value) {
  return (value >= rule.lowest && value <= rule.highest) || value == rule.alternative;
}

template <class Read>
int runCheck(const Check& check, Read read) {
  for (const CheckRow& row : checkRows) {
    const Rule& rule = row.rules[static_cast<int>(check.profile)];
    const int value = read(zmatrix::rowOf(row.setting));
    if (accepts(rule, value)) continue;
    report(row, check, rule.breach, value);
    if (rule.breach == Breach::fails) return 0;
  }
  return 1;
}

int checkBlock(const Check& check, const ZQMatrixProperties& block) {
  return runCheck(check, [&block](const zmatrix::SettingRow& row) { return row.readInBlock(block); });
}

// Both checks of the full tier look at the basic level's block, the symbol check too.
bool keepSymbolsIsFlag(const ZQMatrixFileHeader& header) {
  return accepts(flag, header.getGlobalKeepSymbolsWhenRemoveOverdeterminedElements());
}

}  // namespace

int zmatrix::checkMatrixProperties(Profile profile, const ZQMatrixMediumInfo& record) {
  return runCheck({profile, true, "checkMatrixProperties"},
                  [&record](const SettingRow& row) { return row.readInRecord(record); });
}

int zmatrix::checkGlobalMatrixProperties(Profile profile, ZQMatrixFileHeader& header) {
  return checkBlock({profile, false, "checkGlobalMatrixProperties"}, *header.getGlobalMatrixProperties());
}

int zmatrix::checkGlobalMatrixPropertiesOfFullTier(Profile profile, ZQMatrixFileHeader& header) {
  if (checkGlobalMatrixProperties(profile, header) == 0) return 0;
  return profile == Profile::MIDIElementsGMQuadruple_NDMTS || keepSymbolsIsFlag(header) ? 1 : 0;
}

int zmatrix::checkGlobalSymbolMatrixPropertiesForSymbols(ZQMatrixFileHeader& header) {
  return checkBlock({Profile::Symbols, false, "checkGlobalSymbolMatrixProperties"}, *header.getGlobalSymbolMatrixProperties());
}

int zmatrix::checkGlobalSymbolMatrixPropertiesForSymbolsOfFullTier(ZQMatrixFileHeader& header) {
  return checkGlobalSymbolMatrixPropertiesForSymbols(header) == 1 && keepSymbolsIsFlag(header) ? 1 : 0;
}
