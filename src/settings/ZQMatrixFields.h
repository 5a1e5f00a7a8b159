// The table of the fields of the info records. A row holds all properties of a field: its member, name and default, the first
// file version that has it, its print-out, its setter, its use in the header's blocks, and the values that profiles set and
// accept. The rows are in ZQMatrixFields.cpp, in the order of the file; defaults, codec, print-outs, snapshots, copies of the
// blocks, profiles and their checks are loops over them.
#pragma once

#include <climits>
#include <span>

#include "settings/ZQMatrixInfo.h"
#include "settings/ZQNumberMember.h"

namespace zmatrix {

/// The profiles: bundles of settings, one per kind of data. Each name is the end of the names of its functions.
enum class Profile : int {
  Symbols,
  MIDIElementsCDim2NoteNumberAndQuanta,
  MIDIElementsCDim2NoteNumberAndModQuanta,
  MIDIElementsTriple_NDMT,
  MIDIElementsGMQuadruple_NDMTS,
  ANSIText,
  IntegerSeries
};
constexpr int numberOfProfiles = 7;

/// A value for each profile, in the order of the enumeration.
struct ProfileValues {
  int of[numberOfProfiles];
  constexpr int operator[](Profile profile) const { return of[static_cast<int>(profile)]; }
};
constexpr int notSet = INT_MIN;

/// Where a profile sets a value: in sub-matrices, the basic level's block, the symbol level's block.
enum ProfilePlaces : int { inRecord = 1, inBlock = 2, inSymbolBlock = 4, inLevelBlocks = 3, everywhere = 7 };

/// The values that the check of a profile accepts: a range and one further value. Another value fails the check, or only prints a
/// message.
struct CheckRule {
  int lowest = INT_MIN;
  int highest = INT_MAX;
  int alternative = 0;
  bool onlyWarns = false;

  constexpr bool accepts(int value) const { return (value >= lowest && value <= highest) || value == alternative; }
};

/// A rule for each profile, in the order of the enumeration.
struct CheckRules {
  CheckRule of[numberOfProfiles];
  constexpr const CheckRule& operator[](Profile profile) const { return of[static_cast<int>(profile)]; }
};

struct FieldRow {
  /// The type of the field in the file: a number, or one of three that are not numbers.
  enum Kind { number, coordinateSizes, nameOfUpdateFile, midiChannelFilter };
  /// The field's use in the header's blocks: none; held and printed; also saved, copied and set; the same for a number code,
  /// which is not copied from the symbol level's block and is missing in snapshots.
  enum UseInBlocks { none, held, saved, numberCode };

  using Setter = void (ZQMatrixInfo::*)(int);

  Kind kind = number;
  const char* name = nullptr;
  NumberMember<ZQMatrixInfo> inRecord;  ///< a member of the full tier's record, which has the fields of all tiers
  NumberMember<ZQMatrixProperties> inProperties;
  int initial = 0;            ///< the default in records and the basic level's block, and the value for older files without it
  int initialForSymbols = 0;  ///< the default in the symbol level's block
  int firstVersion = 0;       ///< the first file version that has it; 0 for all
  long long lowestInFile = LLONG_MIN;
  long long highestInFile = LLONG_MAX;
  const char* refusal = nullptr;       ///< printed if a file has a value outside this range
  bool isBehindChannelFilter = false;  ///< in a record's file it follows the channel filter, against the order of the rows
  const char* label = nullptr;         ///< in the print-out of a record
  const char* endOfLine = ": \n";
  Setter setter = nullptr;
  UseInBlocks useInBlocks = none;
  int turnInProfiles = 0;  ///< from 1 on, the order in which profiles set and check the fields; 0 for neither
  int placesOfProfiles = 0;
  ProfileValues valuesOfProfiles{};
  ProfileValues valuesInBlock{};
  const char* textOfCheck = nullptr;  ///< null if it isn't checked
  bool isMidiSetting = false;         ///< a failed check prints at level 1
  CheckRules rules{};

  // --- builders: copies of a row with one property set, for the table
  constexpr FieldRow since(int version) const;
  constexpr FieldRow printed(const char* labelInPrintout, const char* end) const;
  constexpr FieldRow fromFile(long long lowest, long long highest, const char* refusalText = nullptr) const;
  constexpr FieldRow behindChannelFilter() const;
  constexpr FieldRow setBy(Setter method) const;
  constexpr FieldRow inBlocks(UseInBlocks use) const;
  constexpr FieldRow forSymbols(int value) const;
  constexpr FieldRow profiles(int turn, int places, ProfileValues values) const;
  constexpr FieldRow profilesInBlock(ProfileValues values) const;
  constexpr FieldRow checked(const char* text, CheckRules rulesOfProfiles) const;
  constexpr FieldRow checkedAsMidi(const char* text, CheckRule inMusic, CheckRule elsewhere) const;

  // --- for the loops over the rows
  bool is(int ZQMatrixProperties::*member) const { return inProperties.asInt() != nullptr && inProperties.asInt() == member; }
  bool isSavedInBlocks() const { return useInBlocks >= saved; }
  int& valueIn(ZQMatrixProperties& block) const { return block.*inProperties.asInt(); }
  int valueIn(const ZQMatrixProperties& block) const { return block.*inProperties.asInt(); }
  template <class Record>
  int valueIn(const Record& record) const {
    int value = 0;
    inRecord.visit(record, [&value](const auto& field) { value = static_cast<int>(field); });
    return value;
  }
  /// Calls the record's setter, which may refuse the value.
  template <class Record>
  void set(Record& record, int value) const {
    (record.*static_cast<void (Record::*)(int)>(setter))(value);
  }
};

/// The fields that a tier's record adds to the one below.
[[nodiscard]] std::span<const FieldRow> fieldsAddedBy(ZQMatrixInfoType tier) noexcept;
/// All fields of a tier's record.
[[nodiscard]] std::span<const FieldRow> fieldsUpTo(ZQMatrixInfoType tier) noexcept;
/// The fields that profiles set or check, in that order, without the one that only the full tier has.
[[nodiscard]] std::span<const FieldRow* const> fieldsInProfileOrder() noexcept;

/// Calls `use` with each row that the header's blocks have, in the order of the file, without rows of tiers above `highest`.
template <class Use>
void forEachBlockField(ZQMatrixInfoType highest, Use use) {
  for (const FieldRow& row : fieldsUpTo(highest)) {
    if (row.useInBlocks != FieldRow::none) use(row);
  }
}

/// Sets the fields that a tier adds to their defaults.
template <class Record>
void setToDefaults(Record& record, ZQMatrixInfoType tier) {
  for (const FieldRow& row : fieldsAddedBy(tier)) {
    row.inRecord.visit(record, [&row](auto& field) { field = static_cast<std::decay_t<decltype(field)>>(row.initial); });
  }
}

/// Sets the fields that a tier adds to -1, as for a released record.
template <class Record>
void setToUnusable(Record& record, ZQMatrixInfoType tier) {
  for (const FieldRow& row : fieldsAddedBy(tier)) {
    row.inRecord.visit(record, [](auto& field) { field = static_cast<std::decay_t<decltype(field)>>(-1); });
  }
}

/// Copies the fields that a tier adds into a snapshot.
template <class Record>
void copyToSnapshot(Record& record, ZQMatrixInfoType tier, ZQMatrixProperties& snapshot) {
  for (const FieldRow& row : fieldsAddedBy(tier)) {
    if (row.useInBlocks == FieldRow::numberCode) continue;
    row.inRecord.visit(record, [&](const auto& field) {
      row.inProperties.visit(snapshot, [&field](auto& copy) { copy = static_cast<std::decay_t<decltype(copy)>>(field); });
    });
  }
}

}  // namespace zmatrix
