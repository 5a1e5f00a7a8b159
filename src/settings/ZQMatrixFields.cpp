// The rows of the fields of the info records. A new setting needs a member with getter and setter in its record, a row here, and
// its documentation in the lists of the C interface: see docs/architecture.md.
#include "settings/ZQMatrixFields.h"

#include <algorithm>
#include <array>

#include "settings/ZQMatrixRandom.h"

namespace zmatrix {

constexpr int largestUpdateInfoType = 100;  ///< in a file; a record with a larger one is illegal

// --- builders

constexpr FieldRow FieldRow::since(int version) const {
  FieldRow row = *this;
  row.firstVersion = version;
  return row;
}

constexpr FieldRow FieldRow::printed(const char* labelInPrintout, const char* end) const {
  FieldRow row = *this;
  row.label = labelInPrintout;
  row.endOfLine = end;
  return row;
}

/// A value outside the range makes a record illegal.
constexpr FieldRow FieldRow::fromFile(long long lowest, long long highest, const char* refusalText) const {
  FieldRow row = *this;
  row.lowestInFile = lowest;
  row.highestInFile = highest;
  row.refusal = refusalText;
  return row;
}

constexpr FieldRow FieldRow::behindChannelFilter() const {
  FieldRow row = *this;
  row.isBehindChannelFilter = true;
  return row;
}

constexpr FieldRow FieldRow::setBy(Setter method) const {
  FieldRow row = *this;
  row.setter = method;
  return row;
}

constexpr FieldRow FieldRow::inBlocks(UseInBlocks use) const {
  FieldRow row = *this;
  row.useInBlocks = use;
  return row;
}

constexpr FieldRow FieldRow::forSymbols(int value) const {
  FieldRow row = *this;
  row.initialForSymbols = value;
  return row;
}

constexpr FieldRow FieldRow::profiles(int turn, int places, ProfileValues values) const {
  FieldRow row = *this;
  row.turnInProfiles = turn;
  row.placesOfProfiles = places;
  row.valuesOfProfiles = row.valuesInBlock = values;
  return row;
}

/// For a field of which the basic level's block gets other values than the record.
constexpr FieldRow FieldRow::profilesInBlock(ProfileValues values) const {
  FieldRow row = *this;
  row.valuesInBlock = values;
  return row;
}

constexpr FieldRow FieldRow::checked(const char* text, CheckRules rulesOfProfiles) const {
  FieldRow row = *this;
  row.textOfCheck = text;
  row.rules = rulesOfProfiles;
  return row;
}

constexpr FieldRow FieldRow::checkedAsMidi(const char* text, CheckRule inMusic, CheckRule elsewhere) const {
  FieldRow row = checked(text, {{elsewhere, inMusic, inMusic, inMusic, inMusic, elsewhere, elsewhere}});
  row.isMidiSetting = true;
  return row;
}

namespace {

constexpr FieldRow field(const char* name, NumberMember<ZQMatrixInfo> inRecord, NumberMember<ZQMatrixProperties> inProperties,
                         int initial = 0) {
  FieldRow row;
  row.name = row.label = name;
  row.inRecord = inRecord;
  row.inProperties = inProperties;
  row.initial = row.initialForSymbols = initial;
  return row;
}

constexpr FieldRow setting(const char* name, NumberMember<ZQMatrixInfo> inRecord, int ZQMatrixProperties::*inProperties,
                           FieldRow::Setter setter, int initial) {
  return field(name, inRecord, inProperties, initial).setBy(setter).inBlocks(FieldRow::saved);
}

constexpr FieldRow numberCode(const char* name, NumberMember<ZQMatrixInfo> inRecord, int ZQMatrixProperties::*inProperties,
                              FieldRow::Setter setter, int initial) {
  constexpr int firstVersionWithNumberCodes = 112;
  return setting(name, inRecord, inProperties, setter, initial).since(firstVersionWithNumberCodes).inBlocks(FieldRow::numberCode);
}

/// A row for a field that is not a number: in a record's file only (marker), or in the blocks too (textMarker).
constexpr FieldRow marker(FieldRow::Kind kind) {
  FieldRow row;
  row.kind = kind;
  return row;
}
constexpr FieldRow textMarker(FieldRow::Kind kind) {
  return marker(kind).inBlocks(FieldRow::saved);
}

constexpr CheckRule from(int lowest, int highest) {
  return {lowest, highest, lowest};
}
constexpr CheckRule only(int value) {
  return {value, value, value};
}
constexpr CheckRule either(int value, int alternative) {
  return {value, value, alternative};
}
constexpr CheckRule warning(CheckRule rule) {
  rule.onlyWarns = true;
  return rule;
}
constexpr CheckRules alike(CheckRule rule) {
  return {{rule, rule, rule, rule, rule, rule, rule}};
}
constexpr CheckRule untested = {};
constexpr CheckRule flag = from(0, 1);
constexpr CheckRule notNegative = from(0, INT_MAX);
constexpr CheckRule signature = from(0, 32);

}  // namespace

/// A friend of the records, for access to their members. Lists of values and rules are in the order of Profile.
struct FieldTable {
  using R = ZQMatrixInfo;
  using P = ZQMatrixProperties;
  using Set = FieldRow::Setter;  // g++ 12 accepts a base class's method as a constant only with an explicit conversion

  static consteval auto base() {
    return std::to_array<FieldRow>({
        field("magicNumber", &R::magicNumber_, &P::magicNumber, matrixInfoMagicNumber)
            .fromFile(matrixInfoMagicNumber, matrixInfoMagicNumber),
        field("updateInfoType", &R::updateInfoType_, &P::updateInfoType)
            .printed("updateInfoType (0:base, 1: medium, 2: normal)", ": \n")
            .fromFile(0, largestUpdateInfoType),
        field("timeStamp", &R::timeStamp_, &P::timeStamp),
        field("softwareVersion", &R::softwareVersion_, &P::softwareVersion, matrixFormatVersion),
        field("matrixID", &R::matrixId_, &P::matrixID),
        setting("matrixType", &R::matrixType_, &P::matrixType, Set(&R::setMatrixType), 0)
            .forSymbols(2)
            .profiles(4, everywhere, {{2, 1, 1, 4, 5, 3, 2}})
            .checked("matrixType is not", {{only(2), only(1), only(1), only(4), only(5), only(3), only(2)}}),
        setting("allowLargeIndices", &R::allowLargeIndices_, &P::allowLargeIndices, Set(&R::setAllowLargeIndices), 0)
            .profiles(2, everywhere, {{0, 0, 0, 0, 0, 0, 0}})
            .checked("allowLargeIndices illegal", {{only(0), only(0), only(0), only(0), only(0), only(0), warning(only(0))}}),
        setting("coordinateDimension", &R::coordinateDimension_, &P::coordinateDimension, Set(&R::setCoordinateDimension), 1)
            .printed("coordinate dimension", ": \n")
            .fromFile(0, largestCoordinateDimension)
            .profiles(1, everywhere, {{1, 2, 2, 3, 4, 1, 1}})
            .checked("CoordinateDimension illegal", {{only(1), only(2), only(2), only(3), only(4), only(1), warning(only(1))}}),
        setting("isFinalized", &R::isFinalized_, &P::isFinalized, Set(&R::setIsFinalized), 0).inBlocks(FieldRow::held),
        setting("memIsReadOnly", &R::memIsReadOnly_, &P::memIsReadOnly, Set(&R::setMemIsReadOnly), 0).inBlocks(FieldRow::held),
        marker(FieldRow::coordinateSizes),
        field("maximalMatrixIndex", &R::maximalMatrixIndex_, &P::maximalMatrixIndex, initialMaximalMatrixIndex)
            .printed("maximal Matrix index", " \n")
            .setBy(Set(&R::setMaximalMatrixIndex)),
        field("maxDimOfMatrix", &R::maxDimOfMatrix_, &P::maxDimOfMatrix, 4096)
            .printed("maximal allowed Dimension", " \n")
            .setBy(Set(&R::setMaxDimOfMatrix)),
        setting("memorySearchMethod", &R::memorySearchMethod_, &P::memorySearchMethod, Set(&R::setMemorySearchMethod), 1)
            .printed("current memory search method", " \n")
            .profiles(23, everywhere, {{1, 1, 1, 1, 1, 1, 1}})
            .checked("memorySearch Method illegal", alike(from(0, 3))),
        field("currentDimension", &R::currentDimension_, &P::currentDimension)
            .printed("currentDimension", " \n")
            .fromFile(0, INT_MAX),
        field("internalCurrentDimension", &R::internalCurrentDimension_, &P::internalCurrentDimension, 32)
            .printed("currentInternalDimension", " \n"),
        field("numberOfMatrixWriteEvents", &R::numberOfMatrixWriteEvents_, &P::numberOfMatrixWriteEvents)
            .printed("numberOfWriteEventsInMatrix", "\n"),
        field("numberOfMatrixDeleteEvents", &R::numberOfMatrixDeleteEvents_, &P::numberOfMatrixDeleteEvents)
            .printed("numberOfDeleteEventsInMatrix", "\n"),
        field("numberOfMatrixElements", &R::numberOfMatrixElements_, &P::numberOfMatrixElements)
            .printed("numberOfElementsInMatrix", "\n"),
        field("numberOfWriteElements", &R::numberOfWriteElements_, &P::numberOfWriteElements)
            .printed("numberOfWriteElementsInMatrix", "\n"),
        field("numberOfWriteCounts", &R::numberOfWriteCounts_, &P::numberOfWriteCounts)
            .printed("numberOfWriteCountsInMatrix", "\n"),
        field("numberOfEndElements", &R::numberOfEndElements_, &P::numberOfEndElements)
            .printed("numberOfEndElementsInMatrix", "\n"),
        field("internalLengthOfTemporaryMemory", &R::internalLengthOfTemporaryMemory_, &P::internalLengthOfTemporaryMemory,
              smallestTemporaryMemory)
            .printed("internalLengthOfTemporaryMemory", "\n"),
    });
  }

  static consteval auto medium() {
    return std::to_array<FieldRow>({
        field("updateIndex", &R::updateIndex_, &P::updateIndex),
        setting("isPhraseMatrix", &R::isPhraseMatrix_, &P::isPhraseMatrix, Set(&R::setIsPhraseMatrix), 0)
            .fromFile(0, 1, "ReadMatrixInfo:Illegal value for IsPhraseMatrix\n")
            .profiles(3, everywhere, {{1, 1, 1, 1, 1, 1, 1}})
            .checked("isPhraseMatrix illegal", alike(only(1))),
        field("totalLengthOfAllUpdateSequences", &R::totalLengthOfAllUpdateSequences_, &P::totalLengthOfAllUpdateSequences),
        setting("preProcessingType", &R::preProcessingType_, &P::preProcessingType, Set(&R::setPreProcessingType), 0)
            .profiles(5, everywhere, {{0, 1, 1002, 1003, 1004, 1000, 1}})
            .checked("preprocessing illegal",
                     {{only(0), either(1, 1002), either(1, 1002), only(1003), only(1004), either(0, 1000), untested}}),
        textMarker(FieldRow::nameOfUpdateFile),
        field("lengthOfUpdateSequence", &R::lengthOfUpdateSequence_, &P::lengthOfUpdateSequence),
        setting("maxPhraseLengthForUpdateWithSequence", &R::maxPhraseLengthForUpdateWithSequence_,
                &P::maxPhraseLengthForUpdateWithSequence, Set(&R::setMaxPhraseLengthForUpdateWithSequence), 64)
            .profiles(13, everywhere, {{64, 64, 64, 64, 64, 64, notSet}})
            .checked("MaxPhraseLengthForUpdateWithSequence illegal", alike(from(1, INT_MAX))),
        field("numberOfRuleElements", &R::numberOfRuleElements_, &P::numberOfRuleElements),
        field("numberOfUniqueRuleElements", &R::numberOfUniqueRuleElements_, &P::numberOfUniqueRuleElements),
        field("numberOfOverDeterminedRules", &R::numberOfOverDeterminedRules_, &P::numberOfOverDeterminedRules),
        field("numberOfStartElements", &R::numberOfStartElements_, &P::numberOfStartElements),
        field("lengthOfKernelOriginalSequence", &R::lengthOfKernelOriginalSequence_, &P::lengthOfKernelOriginalSequence),
        field("lengthOfKernelPreProcessedSequence", &R::lengthOfKernelPreProcessedSequence_,
              &P::lengthOfKernelPreProcessedSequence),
        field("internalLengthOfKernelOriginalSequence", &R::internalLengthOfKernelOriginalSequence_,
              &P::internalLengthOfKernelOriginalSequence, initialKernelLength),
        field("internalLengthOfKernelPreProcessedSequence", &R::internalLengthOfKernelPreProcessedSequence_,
              &P::internalLengthOfKernelPreProcessedSequence, initialKernelLength),
        field("kernelMatrixHandle", &R::kernelMatrixHandle_, &P::kernelMatrixHandle),
        setting("useStartOfSequence", &R::useStartOfSequence_, &P::useStartOfSequence, Set(&R::setUseStartOfSequence), 1)
            .profiles(6, everywhere, {{1, 1, 1, 1, 1, 1, 1}})
            .checked("useStartOfSequence illegal", alike(flag)),
        setting("useEndOfSequence", &R::useEndOfSequence_, &P::useEndOfSequence, Set(&R::setUseEndOfSequence), 1)
            .profiles(7, everywhere, {{0, 1, 1, 1, 1, 1, 0}})
            .checked("useEndOfSequence illegal", alike(flag)),
        setting("usePhrasesForUpdateMatrixWithLongANSIText", &R::usePhrasesForUpdateMatrixWithLongAnsiText_,
                &P::usePhrasesForUpdateMatrixWithLongANSIText, Set(&R::setUsePhrasesForUpdateMatrixWithLongANSIText), 1)
            .forSymbols(0)
            .profiles(8, inLevelBlocks, {{0, 0, 0, 0, 0, 1, 0}})
            .checked("UsePhrasesForUpdateWithLongANSIText illegal",
                     {{warning(flag), untested, untested, untested, untested, flag, untested}}),
        setting("skillOutputLevel", &R::skillOutputLevel_, &P::skillOutputLevel, Set(&R::setSkillOutputLevel), 256),
        setting("successorMethod", &R::successorMethod_, &P::successorMethod, Set(&R::setSuccessorMethod), 3)
            .profiles(12, everywhere, {{3, 3, 3, 3, 3, 3, 1}})
            .checked("successorMethod illegal", alike(from(0, 3))),
        setting("restartWithTrueStartItem", &R::restartWithTrueStartItem_, &P::restartWithTrueStartItem,
                Set(&R::setRestartWithTrueStartItem), 1)
            .profiles(10, everywhere, {{1, 1, 1, 1, 1, 1, 1}})
            .profilesInBlock({{1, 1, 1, 1, 1, 1, 0}})
            .checked("restartWithTrueStartItem illegal", alike(flag)),
        setting("enableStopItem", &R::enableStopItem_, &P::enableStopItem, Set(&R::setEnableStopItem), 1)
            .profiles(11, everywhere, {{1, 1, 1, 1, 1, 1, 0}})
            .checked("enableStopItem illegal", alike(flag)),
        setting("includeOverdeterminedRules", &R::includeOverdeterminedRules_, &P::includeOverdeterminedRules,
                Set(&R::setIncludeOverdeterminedRules), 1)
            .profiles(9, inLevelBlocks, {{1, 1, 1, 1, 1, 1, 1}})
            .checked("includeOverDeterminedRules illegal", alike(flag)),
        field("isOverDetermined", &R::isOverDetermined_, &P::isOverDetermined, 1).since(89).setBy(Set(&R::_setIsOverDetermined)),
        setting("addUpdateInfo", &R::addUpdateInfo_, &P::addUpdateInfo, Set(&R::setAddUpdateInfo), 0)
            .profiles(24, everywhere, {{0, 0, 0, 0, 0, 0, 0}})
            .checked("addUpdateInfo illegal", alike(flag)),
        setting("addSequenceToUpdateInfo", &R::addSequenceToUpdateInfo_, &P::addSequenceToUpdateInfo,
                Set(&R::setAddSequenceToUpdateInfo), 0)
            .since(firstVersionWithInfoType)
            .profiles(25, everywhere, {{0, 0, 0, 0, 0, 0, 0}}),
        setting("addSequenceToUpdateInfoMode", &R::addSequenceToUpdateInfoMode_, &P::addSequenceToUpdateInfoMode,
                Set(&R::setAddSequenceToUpdateInfoMode), 0)
            .since(firstVersionWithInfoType)
            .profiles(26, inLevelBlocks, {{0, 0, 0, 0, 0, 0, 0}}),
        field("successorRandomValue", &R::successorRandomValue_, &P::successorRandomValue, initialRandomValue),
        field("successorRandomType", &R::successorRandomType_, &P::successorRandomType, 1),
        setting("midiTimeSignatureNom", &R::midiTimeSignatureNom_, &P::midiTimeSignatureNom, Set(&R::setMidiTimeSignatureNom), 4)
            .forSymbols(0)
            .profiles(15, inLevelBlocks, {{0, 4, 4, 4, 4, 0, 0}})
            .checkedAsMidi("signatureNom illegal", signature, warning(signature)),
        setting("midiTimeSignatureDenom", &R::midiTimeSignatureDenom_, &P::midiTimeSignatureDenom,
                Set(&R::setMidiTimeSignatureDenom), 4)
            .forSymbols(0)
            .profiles(16, inLevelBlocks, {{0, 4, 4, 4, 4, 0, 0}})
            .checkedAsMidi("signatureDeNom illegal", signature, warning(signature)),
        setting("language", &R::language_, &P::language, Set(&R::setLanguage), 0)
            .behindChannelFilter()
            .profiles(14, everywhere, {{0, 0, 0, 0, 0, 0, 0}}),
        setting("midiSubType", &R::midiSubType_, &P::midiSubType, Set(&R::setMidiSubType), 0)
            .profiles(17, inLevelBlocks, {{0, 0, 0, 0, 0, 0, 0}})
            .checkedAsMidi("midiSubType <0", notNegative, warning(notNegative)),
        setting("midiSoundID", &R::midiSoundId_, &P::midiSoundID, Set(&R::setMidiSoundID), 0)
            .profiles(22, inLevelBlocks, {{0, 0, 0, 0, 0, 0, 0}})
            .checkedAsMidi("midiSoundID <0", from(0, 16), untested),
        setting("midiNoteOnQuantization", &R::midiNoteOnQuantization_, &P::midiNoteOnQuantization,
                Set(&R::setMidiNoteOnQuantization), 16)
            .profiles(18, inLevelBlocks, {{16, 16, 16, 16, 16, 16, 16}}),
        setting("midiDurationQuantization", &R::midiDurationQuantization_, &P::midiDurationQuantization,
                Set(&R::setMidiDurationQuantization), 16)
            .profiles(19, inLevelBlocks, {{16, 16, 16, 16, 16, 16, 16}}),
        setting("midiTrackAnalyze", &R::midiTrackAnalyze_, &P::midiTrackAnalyze, Set(&R::setMidiTrackAnalyze), 2)
            .profiles(20, inLevelBlocks, {{2, 2, 2, 2, 2, 2, 2}}),
        setting("musicStyle", &R::musicStyle_, &P::musicStyle, Set(&R::setMusicStyle), 0)
            .profiles(21, inLevelBlocks, {{0, 0, 0, 0, 0, 0, 0}})
            .checkedAsMidi("musicStyle <0", notNegative, untested),
        textMarker(FieldRow::midiChannelFilter),
        numberCode("ocronType", &R::ocronType_, &P::ocronType, Set(&R::setOcronType), 4),
        numberCode("ocronEndSymbol", &R::ocronEndSymbol_, &P::ocronEndSymbol, Set(&R::setOcronEndSymbol), 10),
        numberCode("ocronAlgorithm", &R::ocronAlgorithm_, &P::ocronAlgorithm, Set(&R::setOcronAlgorithm), 0),
        numberCode("gocronAlgorithm", &R::gocronAlgorithm_, &P::gocronAlgorithm, Set(&R::setGocronAlgorithm), 0),
        numberCode("gocronNumberBase", &R::gocronNumberBase_, &P::gocronNumberBase, Set(&R::setGocronNumberBase), 0),
        numberCode("gocronASTERISKValue", &R::gocronAsteriskValue_, &P::gocronASTERISKValue, Set(&R::setGocronASTERISKValue), 0),
        numberCode("gocronPValue", &R::gocronPValue_, &P::gocronPValue, Set(&R::setGocronPValue), 1),
        numberCode("gocronTWOValue", &R::gocronTwoValue_, &P::gocronTWOValue, Set(&R::setGocronTWOValue), 2),
        numberCode("gocronPOWValue", &R::gocronPowValue_, &P::gocronPOWValue, Set(&R::setGocronPOWValue), 3),
        numberCode("gocronQValue", &R::gocronQValue_, &P::gocronQValue, Set(&R::setGocronQValue), 4),
    });
  }

  static consteval auto full() {
    return std::to_array<FieldRow>({
        field("currentMatrixIDLevelDown", &R::currentMatrixIdLevelDown_, &P::currentMatrixIDLevelDown, -1)
            .printed("matrixIDLevelDown", ": \n")
            .setBy(Set(&R::setCurrentMatrixIDLevelDown)),
        field("currentMatrixIDLevelUp", &R::currentMatrixIdLevelUp_, &P::currentMatrixIDLevelUp, -1)
            .printed("matrixIDLevelUp", ": \n")
            .setBy(Set(&R::setCurrentMatrixIDLevelUp)),
        field("numberOfSymbols", &R::numberOfSymbols_, &P::numberOfSymbols).printed("numberOfSymbolsInMatrix", "\n"),
        field("newSymbol", &R::newSymbol_, &P::newSymbol, 256).printed("last created symbolID in Matrix", "\n"),
        setting("keepSymbolsWhenRemoveOverdeterminedElements", &R::keepSymbolsWhenRemoveOverdeterminedElements_,
                &P::keepSymbolsWhenRemoveOverdeterminedElements, Set(&R::setKeepSymbolsWhenRemoveOverdeterminedElements), 1)
            .printed("keepSymbolsWhenRemovingOverdeterminedElements", "\n")
            .profiles(1, everywhere, {{0, 1, 1, 1, notSet, 1, 0}}),
    });
  }
};

namespace {

constexpr size_t endOfBase = FieldTable::base().size();
constexpr size_t endOfMedium = endOfBase + FieldTable::medium().size();
constexpr size_t numberOfFields = endOfMedium + FieldTable::full().size();

consteval std::array<FieldRow, numberOfFields> allTiers() {
  std::array<FieldRow, numberOfFields> rows{};
  auto end = rows.begin();
  for (const FieldRow& row : FieldTable::base()) *end++ = row;
  for (const FieldRow& row : FieldTable::medium()) *end++ = row;
  for (const FieldRow& row : FieldTable::full()) *end++ = row;
  return rows;
}

constexpr std::array<FieldRow, numberOfFields> fields = allTiers();

constexpr bool hasTurn(const FieldRow& row) {
  return row.turnInProfiles > 0;
}

constexpr auto numberOfTurns = static_cast<size_t>(std::count_if(fields.begin(), fields.begin() + endOfMedium, hasTurn));

// Compiles only if each turn from 1 on occurs once.
consteval std::array<const FieldRow*, numberOfTurns> inProfileOrder() {
  std::array<const FieldRow*, numberOfTurns> rows{};
  for (size_t i = 0; i < endOfMedium; ++i) {
    if (!hasTurn(fields[i])) continue;
    const FieldRow*& place = rows.at(static_cast<size_t>(fields[i].turnInProfiles - 1));
    if (place != nullptr) throw "two fields have the same turn";
    place = &fields[i];
  }
  return rows;
}

constexpr std::array<const FieldRow*, numberOfTurns> rowsInProfileOrder = inProfileOrder();

constexpr size_t endOf(ZQMatrixInfoType tier) {
  return tier == ZQMatrixInfoTypeBase ? endOfBase : tier == ZQMatrixInfoTypeMedium ? endOfMedium : numberOfFields;
}

}  // namespace

std::span<const FieldRow> fieldsUpTo(ZQMatrixInfoType tier) noexcept {
  return std::span(fields).first(endOf(tier));
}

std::span<const FieldRow> fieldsAddedBy(ZQMatrixInfoType tier) noexcept {
  const size_t begin = tier == ZQMatrixInfoTypeBase ? 0 : endOf(static_cast<ZQMatrixInfoType>(tier - 1));
  return fieldsUpTo(tier).subspan(begin);
}

std::span<const FieldRow* const> fieldsInProfileOrder() noexcept {
  return rowsInProfileOrder;
}

}  // namespace zmatrix
