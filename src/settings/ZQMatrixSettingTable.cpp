#include "settings/ZQMatrixSettingTable.h"

#include <iterator>

namespace {

#define ZQ_BLOCK_COLUMNS(type, name)                                 \
  [](const ZQMatrixProperties& block) -> int { return block.name; }, \
      [](ZQMatrixProperties& block, int value) { block.name = static_cast<type>(value); }

constexpr zmatrix::SettingRow settingRows[] = {
#define ZQ_SETTING(type, name, Name, initial, symbolInitial, sinceVersion)     \
  {#name, sinceVersion, ZQ_BLOCK_COLUMNS(type, name),                          \
   [](const ZQMatrixMediumInfo& record) -> int { return record.get##Name(); }, \
   [](ZQMatrixMediumInfo& record, int value) { record.set##Name(value); }},
#define ZQ_FULL_SETTING(type, name, Name, initial, symbolInitial, sinceVersion) \
  {#name, sinceVersion, ZQ_BLOCK_COLUMNS(type, name), nullptr, nullptr},
#include "settings/ZQMatrixSettings.def"
};

#undef ZQ_BLOCK_COLUMNS

static_assert(std::size(settingRows) == static_cast<size_t>(zmatrix::Setting::numberOfSettings));

}  // namespace

const zmatrix::SettingRow& zmatrix::rowOf(Setting setting) {
  return settingRows[static_cast<int>(setting)];
}
