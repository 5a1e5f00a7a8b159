// The property profiles: bundles of settings, one per kind of data, which can be set in a sub-matrix or in the header's global
// block and checked in both; and the copies of the global blocks into a sub-matrix. What they set and accept stands in the rows
// of ZQMatrixFields.cpp. The full tier's record and block have one field more, which its operations set and check too.
#pragma once

#include "settings/ZQMatrixFields.h"
#include "settings/ZQMatrixFileHeader.h"

namespace zmatrix {

/// Sets the profile's values in an empty sub-matrix, and the name of its update file unless null.
void setDefaultMatrixProperties(Profile profile, ZQMatrixMediumInfo& record, ZQMatrixFileHeader& header, const char* updateFile);
void setDefaultMatrixProperties(Profile profile, ZQMatrixInfo& record, ZQMatrixFileHeader& header, const char* updateFile);

/// The base tier's only profile.
void setDefaultMatrixPropertiesForRandomReadWrite(ZQMatrixBaseInfo& record);

/// Sets the profile's values in the block of the basic level, as the tier does.
void setGlobalDefaultMatrixProperties(Profile profile, ZQMatrixFileHeader& header, ZQMatrixInfoType tier);
/// Sets the values of the symbol profile in the block of the symbol level.
void setGlobalSymbolDefaultMatrixProperties(ZQMatrixFileHeader& header, ZQMatrixInfoType tier);

// The checks change nothing. 1 if the settings fit the profile, 0 at the first that does not, with its message.
int checkMatrixProperties(Profile profile, const ZQMatrixMediumInfo& record);
int checkGlobalMatrixProperties(Profile profile, ZQMatrixFileHeader& header, ZQMatrixInfoType tier);
/// Of the block of the symbol level, for the symbol profile.
int checkGlobalSymbolMatrixProperties(ZQMatrixFileHeader& header, ZQMatrixInfoType tier);

/// Copies the block of the basic level into the sub-matrix through its setters. One that refuses keeps its value.
void applyGlobalMatrixProperties(ZQMatrixMediumInfo& record, ZQMatrixFileHeader& header);
void applyGlobalMatrixProperties(ZQMatrixInfo& record, ZQMatrixFileHeader& header);
/// The same from the block of the symbol level, without the number codes.
void applyGlobalSymbolMatrixProperties(ZQMatrixMediumInfo& record, ZQMatrixFileHeader& header);
void applyGlobalSymbolMatrixProperties(ZQMatrixInfo& record, ZQMatrixFileHeader& header);

const char* nameOf(Profile profile);

}  // namespace zmatrix
