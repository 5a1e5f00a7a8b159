// The profiles: bundles of settings, one per kind of data, which can be set and checked in a sub-matrix or in the header's global
// block; and the copying of the global blocks to a sub-matrix. The values set and accepted are in the rows of ZQMatrixFields.cpp.
// The full tier has one more field, keepSymbolsWhenRemoveOverdeterminedElements, which its functions set and check too.
#pragma once

#include "settings/ZQMatrixFields.h"
#include "settings/ZQMatrixFileHeader.h"

namespace zmatrix {

/// Sets the profile's values in an empty sub-matrix, and the name of its update file unless that is null.
void setDefaultMatrixProperties(Profile profile, ZQMatrixMediumInfo& record, ZQMatrixFileHeader& header, const char* updateFile);
void setDefaultMatrixProperties(Profile profile, ZQMatrixInfo& record, ZQMatrixFileHeader& header, const char* updateFile);

/// The base tier's only profile.
void setDefaultMatrixPropertiesForRandomReadWrite(ZQMatrixBaseInfo& record);

/// Sets the profile's values in the block of the basic level, for a matrix of this tier.
void setGlobalDefaultMatrixProperties(Profile profile, ZQMatrixFileHeader& header, ZQMatrixInfoType tier);
/// Sets the values of the symbol profile in the block of the symbol level.
void setGlobalSymbolDefaultMatrixProperties(ZQMatrixFileHeader& header, ZQMatrixInfoType tier);

// The checks change nothing. 1 if the settings fit the profile; 0 at the first one that doesn't, with a message.
int checkMatrixProperties(Profile profile, const ZQMatrixMediumInfo& record);
int checkGlobalMatrixProperties(Profile profile, ZQMatrixFileHeader& header, ZQMatrixInfoType tier);
/// Checks the block of the symbol level for the symbol profile.
int checkGlobalSymbolMatrixProperties(ZQMatrixFileHeader& header, ZQMatrixInfoType tier);

/// Copies the block of the basic level to the sub-matrix by its setters; a setter that refuses keeps the old value.
void applyGlobalMatrixProperties(ZQMatrixMediumInfo& record, ZQMatrixFileHeader& header);
void applyGlobalMatrixProperties(ZQMatrixInfo& record, ZQMatrixFileHeader& header);
/// The same from the block of the symbol level, without the number codes.
void applyGlobalSymbolMatrixProperties(ZQMatrixMediumInfo& record, ZQMatrixFileHeader& header);
void applyGlobalSymbolMatrixProperties(ZQMatrixInfo& record, ZQMatrixFileHeader& header);

const char* nameOf(Profile profile);

}  // namespace zmatrix
