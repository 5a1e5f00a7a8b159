// The property profiles: seven bundles of settings, one per kind of data, which can be set in a sub-matrix or in the header's
// global block and checked in both; and the copies of the global blocks into a sub-matrix. The overloads for the full tier's
// record add its own field to what the medium tier does.
#pragma once

#include "settings/ZQMatrixFileHeader.h"
#include "settings/ZQMatrixInfo.h"

namespace zmatrix {

enum class Profile : int {
#define ZQ_PROFILE(Name) Name,
#include "settings/ZQMatrixProfiles.def"
  numberOfProfiles
};

/// Sets the profile's values in an empty sub-matrix, and the name of its update file unless null.
void setDefaultMatrixProperties(Profile profile, ZQMatrixMediumInfo& record, ZQMatrixFileHeader& header, const char* updateFile);
void setDefaultMatrixProperties(Profile profile, ZQMatrixInfo& record, ZQMatrixFileHeader& header, const char* updateFile);

/// The base tier's only profile.
void setDefaultMatrixPropertiesForRandomReadWrite(ZQMatrixBaseInfo& record);

/// Sets the profile's values in the block of the basic level.
void setGlobalDefaultMatrixProperties(Profile profile, ZQMatrixFileHeader& header);
void setGlobalDefaultMatrixPropertiesOfFullTier(Profile profile, ZQMatrixFileHeader& header);
/// Sets the values of the symbol profile in the block of the symbol level.
void setGlobalSymbolDefaultMatrixPropertiesForSymbols(ZQMatrixFileHeader& header);
void setGlobalSymbolDefaultMatrixPropertiesForSymbolsOfFullTier(ZQMatrixFileHeader& header);

// The checks change nothing. 1 if the settings fit the profile, 0 at the first that does not, with its message.
int checkMatrixProperties(Profile profile, const ZQMatrixMediumInfo& record);
int checkGlobalMatrixProperties(Profile profile, ZQMatrixFileHeader& header);
int checkGlobalMatrixPropertiesOfFullTier(Profile profile, ZQMatrixFileHeader& header);
int checkGlobalSymbolMatrixPropertiesForSymbols(ZQMatrixFileHeader& header);
int checkGlobalSymbolMatrixPropertiesForSymbolsOfFullTier(ZQMatrixFileHeader& header);

/// Copies the block of the basic level into the sub-matrix through its setters. One that refuses keeps its value.
void applyGlobalMatrixProperties(ZQMatrixMediumInfo& record, ZQMatrixFileHeader& header);
void applyGlobalMatrixProperties(ZQMatrixInfo& record, ZQMatrixFileHeader& header);
/// The same from the block of the symbol level, without the number codes.
void applyGlobalSymbolMatrixProperties(ZQMatrixMediumInfo& record, ZQMatrixFileHeader& header);
void applyGlobalSymbolMatrixProperties(ZQMatrixInfo& record, ZQMatrixFileHeader& header);

const char* nameOf(Profile profile);

}  // namespace zmatrix
