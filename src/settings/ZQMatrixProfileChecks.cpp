// The profiles' checks. What they accept stands in ZQMatrixFields.cpp; here are the few places where a message or its level
// differs from the rest. The words "error" and "warning" of a message have no effect on the result: the rules decide it.
#include "frame/ZQDebugChannel.h"
#include "settings/ZQMatrixProfiles.h"

using zmatrix::CheckRule;
using zmatrix::dbPrintf;
using zmatrix::FieldRow;
using zmatrix::Profile;
using zmatrix::ZQMatrixFileHeader;

namespace {

// The last two name text for both.
constexpr const char* matrixTypeTexts[zmatrix::numberOfProfiles] = {"matrixType is not ZQMatrixTypeIntegerSeries",
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

const char* textOf(const FieldRow& row, Profile profile) {
  if (row.is(&ZQMatrixProperties::matrixType)) return matrixTypeTexts[static_cast<int>(profile)];
  if (profile != Profile::Symbols) return row.textOfCheck;
  if (row.is(&ZQMatrixProperties::usePhrasesForUpdateMatrixWithLongANSIText))
    return "getUsePhrasesForUpdateWithLongANSIText illegal";
  if (row.is(&ZQMatrixProperties::maxPhraseLengthForUpdateWithSequence)) return "getMaxPhraseLengthForUpdateWithSequence illegal";
  return row.textOfCheck;
}

// The musical failures call themselves errors in the first check of note pairs only, and for the nominator in the second.
bool callsItselfWarning(const FieldRow& row, const Check& check) {
  if (row.is(&ZQMatrixProperties::usePhrasesForUpdateMatrixWithLongANSIText)) return true;
  if (!row.isMidiSetting) return false;
  if (!check.isOfRecord) return true;
  if (check.profile == Profile::MIDIElementsCDim2NoteNumberAndQuanta) return false;
  return check.profile != Profile::MIDIElementsCDim2NoteNumberAndModQuanta || !row.is(&ZQMatrixProperties::midiTimeSignatureNom);
}

// One message names the check of the neighbouring profile.
Profile namedProfile(const FieldRow& row, const Check& check) {
  const bool namesNeighbour = row.is(&ZQMatrixProperties::midiSoundID) && check.isOfRecord &&
                              check.profile == Profile::MIDIElementsCDim2NoteNumberAndModQuanta;
  return namesNeighbour ? Profile::MIDIElementsCDim2NoteNumberAndQuanta : check.profile;
}

void report(const FieldRow& row, const Check& check, bool onlyWarns, int value) {
  const bool isWarning = onlyWarns || callsItselfWarning(row, check);
  const int level = onlyWarns || row.isMidiSetting ? 1 : 0;
  dbPrintf(level, "%s: %sFor%s: %s: %d\n", isWarning ? "warning" : "error", check.namePrefix,
           zmatrix::nameOf(namedProfile(row, check)), textOf(row, check.profile), value);
}

/// `place` is a record or a block.
template <class Place>
int runCheck(const Check& check, const Place& place) {
  for (const FieldRow* row : zmatrix::fieldsInProfileOrder()) {
    if (row->textOfCheck == nullptr) continue;
    const CheckRule& rule = row->rules[check.profile];
    const int value = row->valueIn(place);
    if (rule.accepts(value)) continue;
    report(*row, check, rule.onlyWarns, value);
    if (!rule.onlyWarns) return 0;
  }
  return 1;
}

// Both checks of the full tier look at the basic level's block, the symbol check too, and refuse in silence.
bool acceptsFieldOfFullTier(ZQMatrixFileHeader& header) {
  const int keep = header.getGlobalMatrixProperties()->keepSymbolsWhenRemoveOverdeterminedElements;
  return keep == 0 || keep == 1;
}

}  // namespace

int zmatrix::checkMatrixProperties(Profile profile, const ZQMatrixMediumInfo& record) {
  return runCheck({profile, true, "checkMatrixProperties"}, record);
}

int zmatrix::checkGlobalMatrixProperties(Profile profile, ZQMatrixFileHeader& header, ZQMatrixInfoType tier) {
  if (runCheck({profile, false, "checkGlobalMatrixProperties"}, *header.getGlobalMatrixProperties()) == 0) return 0;
  const bool looksAtKeep = tier == ZQMatrixInfoTypeFull && profile != Profile::MIDIElementsGMQuadruple_NDMTS;
  return !looksAtKeep || acceptsFieldOfFullTier(header) ? 1 : 0;
}

int zmatrix::checkGlobalSymbolMatrixProperties(ZQMatrixFileHeader& header, ZQMatrixInfoType tier) {
  const Check check = {Profile::Symbols, false, "checkGlobalSymbolMatrixProperties"};
  if (runCheck(check, *header.getGlobalSymbolMatrixProperties()) == 0) return 0;
  return tier != ZQMatrixInfoTypeFull || acceptsFieldOfFullTier(header) ? 1 : 0;
}
