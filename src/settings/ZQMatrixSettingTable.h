// The rows of the settings table at run time: each setting with its name and the ways to read and store it in a global block and
// in an info record. Storing in a record goes through the record's setter with its guards.
#pragma once

#include "settings/ZQMatrixFileHeader.h"
#include "settings/ZQMatrixMediumInfo.h"

namespace zmatrix {

/// The settings that are numbers, in the order of ZQMatrixProperties.
enum class Setting : int {
#define ZQ_SETTING(type, name, Name, initial, symbolInitial, sinceVersion) name,
#include "settings/ZQMatrixSettings.def"
  numberOfSettings
};

struct SettingRow {
  const char* name;
  int sinceVersion;  ///< first file version that has it, 0 for all
  int (*readInBlock)(const ZQMatrixProperties& block);
  void (*storeInBlock)(ZQMatrixProperties& block, int value);
  // Null for what only the full tier's record has.
  int (*readInRecord)(const ZQMatrixMediumInfo& record);
  void (*storeInRecord)(ZQMatrixMediumInfo& record, int value);
};

const SettingRow& rowOf(Setting setting);

}  // namespace zmatrix
