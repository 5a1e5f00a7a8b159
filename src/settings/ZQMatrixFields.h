// All that is known of a field of the info records stands in one row: its member, name and default, the first file version that
// has it, how it is printed, its setter, its place in the header's blocks, and what the profiles set and accept. The rows are in
// ZQMatrixFields.cpp, in the order of the file; defaults, codec, print-outs, snapshots, copies of the blocks, profiles and their
// checks are loops over them.
#pragma once

#include <climits>
#include <span>

#include "settings/ZQMatrixInfo.h"
#include "settings/ZQNumberMember.h"

namespace zmatrix {

/// The bundles of settings that there are, one per kind of data. The names are the ends of their operations' names.
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

/// A value for each profile, in their order.
struct ProfileValues {
  int of[numberOfProfiles];
  constexpr int operator[](Profile profile) const { return of[static_cast<int>(profile)]; }
};
constexpr int notSet = INT_MIN;

/// Where a profile's value goes: sub-matrices, the basic level's block, the symbol level's block.
enum ProfilePlaces : int { inRecord = 1, inBlock = 2, inSymbolBlock = 4, inLevelBlocks = 3, everywhere = 7 };

/// What the check of a profile accepts: a range and one further value. A breach fails the check or only prints.
struct CheckRule {
  int lowest = INT_MIN;
  int highest = INT_MAX;
  int alternative = 0;
  bool onlyWarns = false;

  constexpr bool accepts(int value) const { return (value >= lowest && value <= highest) || value == alternative; }
};

/// A rule for each profile, in their order.
struct CheckRules {
  CheckRule of[numberOfProfiles];
  constexpr const CheckRule& operator[](Profile profile) const { return of[static_cast<int>(profile)]; }
};

struct FieldRow {
  /// What stands at this place of the file: a number, or one of the three that are none.
  enum Kind { number, coordinateSizes, nameOfUpdateFile, midiChannelFilter };
  /// What the header's blocks do with the field: nothing; hold and print it; save, copy and set it too; the same, but for the
  /// symbol level, which has no number codes, and snapshots, which leave them out.
  enum UseInBlocks { none, held, saved, numberCode };

  using Setter = void (ZQMatrixInfo::*)(int);

  Kind kind = number;
  const char* name = nullptr;
  NumberMember<ZQMatrixInfo> inRecord;  ///< of the full tier's record, which has the fields of all tiers
  NumberMember<ZQMatrixProperties> inProperties;
  int initial = 0;            ///< its default in records and the basic block, and its value where a file is older than the field
  int initialForSymbols = 0;  ///< its default in the symbol level's block
  int firstVersion = 0;       ///< of the files that have it; 0 for all
  long long lowestInFile = LLONG_MIN;
  long long highestInFile = LLONG_MAX;
  const char* refusal = nullptr;       ///< printed where a file has another value
  bool isBehindChannelFilter = false;  ///< in the file of a record, not where its row stands
  const char* label = nullptr;         ///< in the print-out of a record
  const char* endOfLine = ": \n";
  Setter setter = nullptr;
  UseInBlocks useInBlocks = none;
  int turnInProfiles = 0;  ///< place in the order in which profiles set and check; 0 for neither
  int placesOfProfiles = 0;
  ProfileValues valuesOfProfiles{};
  ProfileValues valuesInBlock{};
  const char* textOfCheck = nullptr;  ///< null where no check looks at it
  bool isMidiSetting = false;         ///< a failed check prints at level 1
  CheckRules rules{};

  // --- what a row says, for the table
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

  // --- what the loops ask
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
  /// Stores through the record's setter, with its guards.
  template <class Record>
  void set(Record& record, int value) const {
    (record.*static_cast<void (Record::*)(int)>(setter))(value);
  }
};

/// The fields that a tier's record adds to the one below.
[[nodiscard]] std::span<const FieldRow> fieldsAddedBy(ZQMatrixInfoType tier) noexcept;
/// All fields of a tier's record.
[[nodiscard]] std::span<const FieldRow> fieldsUpTo(ZQMatrixInfoType tier) noexcept;
/// The fields that profiles set or check, in the order in which they do, but for the one that only the full tier has.
[[nodiscard]] std::span<const FieldRow* const> fieldsInProfileOrder() noexcept;

/// Calls `use` with each row of the header's blocks, in their order; `highest` leaves out what only higher tiers' records have.
template <class Use>
void forEachBlockField(ZQMatrixInfoType highest, Use use) {
  for (const FieldRow& row : fieldsUpTo(highest)) {
    if (row.useInBlocks != FieldRow::none) use(row);
  }
}

/// Sets the fields of a tier to their defaults.
template <class Record>
void setToDefaults(Record& record, ZQMatrixInfoType tier) {
  for (const FieldRow& row : fieldsAddedBy(tier)) {
    row.inRecord.visit(record, [&row](auto& field) { field = static_cast<std::decay_t<decltype(field)>>(row.initial); });
  }
}

/// Sets the fields of a tier to -1: what a record that is of no use any more has.
template <class Record>
void setToUnusable(Record& record, ZQMatrixInfoType tier) {
  for (const FieldRow& row : fieldsAddedBy(tier)) {
    row.inRecord.visit(record, [](auto& field) { field = static_cast<std::decay_t<decltype(field)>>(-1); });
  }
}

/// Copies the fields of a tier into a snapshot.
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
