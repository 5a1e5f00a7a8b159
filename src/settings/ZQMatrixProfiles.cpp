// The functions that set profiles, and the copying of the header's blocks to records.
#include "settings/ZQMatrixProfiles.h"

#include <iterator>

#include "frame/ZQDebugChannel.h"

using zmatrix::FieldRow;
using zmatrix::Profile;
using zmatrix::ProfileValues;

namespace {

// The profiles that set the number codes, by place: in the record of a sub-matrix; in the global block while a sub-matrix is set;
// in the global block when it is set itself.
constexpr ProfileValues codesIntoRecord = {{0, 0, 0, 0, 0, 0, 1}};
constexpr ProfileValues codesIntoBlockWithRecord = {{1, 0, 0, 0, 0, 0, 0}};
constexpr ProfileValues codesIntoBlock = {{1, 0, 0, 0, 0, 0, 1}};

/// Calls `store` with each row that the profile sets in a place, and the value.
template <class Store>
void setRows(Profile profile, zmatrix::ProfilePlaces place, Store store) {
  for (const FieldRow* row : zmatrix::fieldsInProfileOrder()) {
    const int value = (place == zmatrix::inBlock ? row->valuesInBlock : row->valuesOfProfiles)[profile];
    if ((row->placesOfProfiles & place) != 0 && value != zmatrix::notSet) store(*row, value);
  }
}

/// The same for the fields that only the full tier has.
template <class Store>
void setRowsOfFullTier(Profile profile, Store store) {
  for (const FieldRow& row : zmatrix::fieldsAddedBy(ZQMatrixInfoTypeFull)) {
    if (row.turnInProfiles != 0 && row.valuesOfProfiles[profile] != zmatrix::notSet) store(row, row.valuesOfProfiles[profile]);
  }
}

template <class Store>
void setNumberCodes(Store store) {
  zmatrix::forEachBlockField(ZQMatrixInfoTypeMedium, [&store](const FieldRow& row) {
    if (row.useInBlocks == FieldRow::numberCode) store(row, row.initial);
  });
}

auto storeIn(ZQMatrixProperties& block) {
  return [&block](const FieldRow& row, int value) { row.valueIn(block) = value; };
}

template <class Record>
void applyBlock(Record& record, ZQMatrixInfoType tier, const ZQMatrixProperties& block, bool withNumberCodes) {
  zmatrix::forEachBlockField(tier, [&](const FieldRow& row) {
    if (row.kind == FieldRow::nameOfUpdateFile) {
      record.setNameOfUpdateFile(block.nameOfUpdateFile);
    } else if (row.kind == FieldRow::midiChannelFilter) {
      record.setMidiChannelFilterArray(block.midiChannelFilter);
    } else if (row.isSavedInBlocks() && (withNumberCodes || row.useInBlocks != FieldRow::numberCode)) {
      row.set(record, row.valueIn(block));
    }
  });
}

}  // namespace

const char* zmatrix::nameOf(Profile profile) {
  static constexpr const char* names[] = {"Symbols",
                                          "MIDIElementsCDim2NoteNumberAndQuanta",
                                          "MIDIElementsCDim2NoteNumberAndModQuanta",
                                          "MIDIElementsTriple_NDMT",
                                          "MIDIElementsGMQuadruple_NDMTS",
                                          "ANSIText",
                                          "IntegerSeries"};
  static_assert(std::size(names) == numberOfProfiles);
  return names[static_cast<int>(profile)];
}

void zmatrix::setDefaultMatrixProperties(Profile profile, ZQMatrixMediumInfo& record, ZQMatrixFileHeader& header,
                                         const char* updateFile) {
  if (!record.isEmpty()) {
    dbPrintf(0, "setDefaultMatrixPropertiesFor%s: can only be applied for an empty matrix\n", nameOf(profile));
    return;
  }
  const auto store = [&record](const FieldRow& row, int value) { row.set(record, value); };
  setRows(profile, inRecord, store);
  if (updateFile != nullptr) {
    record.setNameOfUpdateFile(updateFile);
    record.addNameOfUpdateFile(updateFile);
  }
  memset(record.getMidiChannelFilterArray(), 0, sizeof ZQMatrixProperties::midiChannelFilter);
  if (codesIntoRecord[profile] == 1) setNumberCodes(store);
  if (codesIntoBlockWithRecord[profile] == 1) setNumberCodes(storeIn(*header.getGlobalMatrixProperties()));
}

void zmatrix::setDefaultMatrixProperties(Profile profile, ZQMatrixInfo& record, ZQMatrixFileHeader& header,
                                         const char* updateFile) {
  setDefaultMatrixProperties(profile, static_cast<ZQMatrixMediumInfo&>(record), header, updateFile);
  setRowsOfFullTier(profile, [&record](const FieldRow& row, int value) { row.set(record, value); });
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

void zmatrix::setGlobalDefaultMatrixProperties(Profile profile, ZQMatrixFileHeader& header, ZQMatrixInfoType tier) {
  ZQMatrixProperties& block = *header.getGlobalMatrixProperties();
  setRows(profile, inBlock, storeIn(block));
  storeNameOfUpdateFile(block, "");
  memset(block.midiChannelFilter, 0, sizeof block.midiChannelFilter);
  if (codesIntoBlock[profile] == 1) setNumberCodes(storeIn(block));
  if (tier == ZQMatrixInfoTypeFull) setRowsOfFullTier(profile, storeIn(block));
}

void zmatrix::setGlobalSymbolDefaultMatrixProperties(ZQMatrixFileHeader& header, ZQMatrixInfoType tier) {
  ZQMatrixProperties& block = *header.getGlobalSymbolMatrixProperties();
  setRows(Profile::Symbols, inSymbolBlock, storeIn(block));
  if (tier == ZQMatrixInfoTypeFull) setRowsOfFullTier(Profile::Symbols, storeIn(block));
}

void zmatrix::applyGlobalMatrixProperties(ZQMatrixMediumInfo& record, ZQMatrixFileHeader& header) {
  applyBlock(record, ZQMatrixInfoTypeMedium, *header.getGlobalMatrixProperties(), true);
}

void zmatrix::applyGlobalMatrixProperties(ZQMatrixInfo& record, ZQMatrixFileHeader& header) {
  applyBlock(record, ZQMatrixInfoTypeFull, *header.getGlobalMatrixProperties(), true);
}

void zmatrix::applyGlobalSymbolMatrixProperties(ZQMatrixMediumInfo& record, ZQMatrixFileHeader& header) {
  applyBlock(record, ZQMatrixInfoTypeMedium, *header.getGlobalSymbolMatrixProperties(), false);
}

void zmatrix::applyGlobalSymbolMatrixProperties(ZQMatrixInfo& record, ZQMatrixFileHeader& header) {
  applyBlock(record, ZQMatrixInfoTypeFull, *header.getGlobalSymbolMatrixProperties(), false);
}
