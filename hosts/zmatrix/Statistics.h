// Counters and settings of a matrix as JSON. Tables are printed from the same JSON, so both show the same figures.
#pragma once

#include <nlohmann/json.hpp>
#include <string>

#include "Matrix.h"

/// Members keep the order in which they were added.
using Json = nlohmann::ordered_json;

/// The counters of one sub-matrix.
Json statisticsOf(const ZQMatrixProperties& record, Tier tier);

/// The other fields of its record: settings, random generator, length of the kernel, files learned.
Json settingsOf(const ZQMatrixProperties& record, Tier tier);

/// The main fields of a record of the history.
Json historyEntryOf(const ZQMatrixProperties& record, Tier tier);

/// Slots of the block, the highest slot in use, and the peak memory of this process in bytes.
Json sizeOf(const Matrix& matrix);

/// A value as JSON text with a line end. Bytes that aren't UTF-8, which a file name may contain, become U+FFFD.
std::string jsonText(const Json& value);

/// A line per member: name and value.
std::string membersOf(const Json& value);

/// A table with a column per object of the list and a line per member.
std::string columnsOf(const Json& list);

/// A table with a line per object of the list, below a line with the names of the members.
std::string linesOf(const Json& list);
