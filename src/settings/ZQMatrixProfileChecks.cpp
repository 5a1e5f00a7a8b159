// The profiles' checks. The accepted values are in ZQMatrixFields.cpp; the functions here choose the messages, whose few
// exceptions are part of the interface. The words "error" and "warning" of a message say nothing about the result: the rules
// decide it.
#include "frame/ZQDebugChannel.h"
#include "settings/ZQMatrixProfiles.h"

using zmatrix::CheckRule;
using zmatrix::FieldRow;
using zmatrix::Profile;

namespace {

// The last one, of integer series, is that of text.
constexpr const char* matrixTypeTexts[zmatrix::numberOfProfiles] = {"matrixType is not ZQMatrixTypeIntegerSeries",
                                                                    "matrixType is not ZQMatrixTypeMIDINoteAndQuanta",
                                                                    "matrixType is not ZQMatrixTypeMIDINoteAndQuanta",
                                                                    "matrixType is not ZQMatrixTypeMIDITriple_NDMT",
                                                                    "matrixType is not ZQMatrixTypeMIDIGMQuadruple_NDMTS",
                                                                    "matrixType is not 3",
                                                                    "matrixType is not 3"};

/// The check function that was called.
struct Check {
  Profile profile;
  bool isOfRecord;         ///< a record is checked, else a global block
  const char* namePrefix;  ///< begin of the function's name
};

const char* textOf(const FieldRow& row, Profile profile) {
  if (row.is(&ZQMatrixProperties::matrixType)) return matrixTypeTexts[static_cast<int>(profile)];
  if (profile != Profile::Symbols) return row.textOfCheck;
  if (row.is(&ZQMatrixProperties::usePhrasesForUpdateMatrixWithLongANSIText))
    return "getUsePhrasesForUpdateWithLongANSIText illegal";
  if (row.is(&ZQMatrixProperties::maxPhraseLengthForUpdateWithSequence)) return "getMaxPhraseLengthForUpdateWithSequence illegal";
  return row.textOfCheck;
}

// A failed MIDI setting is called an error only in a record, and there only by the first check of note pairs and, for the
// nominator of the time signature, by the second.
bool callsItselfWarning(const FieldRow& row, const Check& check) {
  if (row.is(&ZQMatrixProperties::usePhrasesForUpdateMatrixWithLongANSIText)) return true;
  if (!row.isMidiSetting) return false;
  if (!check.isOfRecord) return true;
  if (check.profile == Profile::MIDIElementsCDim2NoteNumberAndQuanta) return false;
  return check.profile != Profile::MIDIElementsCDim2NoteNumberAndModQuanta || !row.is(&ZQMatrixProperties::midiTimeSignatureNom);
}

// The message on midiSoundID in a record of the second note-pair profile names the first one.
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

// Used by both checks of global blocks in the full tier: the check of the symbol level, too, tests the basic level's block. A
// refusal prints no message.
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
