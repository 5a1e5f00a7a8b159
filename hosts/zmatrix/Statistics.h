// What a matrix says of itself, as one JSON value from which the table is printed too: so both have the same figures.
#pragma once

#include <nlohmann/json.hpp>
#include <string>

#include "Matrix.h"

/// The members come out in the order in which they were put in.
using Json = nlohmann::ordered_json;

/// The settings and counters of one sub-matrix.
Json statisticsOf(const ZQMatrixProperties& record, Tier tier);

/// The rest of a sub-matrix's record: how it learns, the state of its generator and its kernel, the files it learned.
Json settingsOf(const ZQMatrixProperties& record, Tier tier);

/// A record of the history, in short.
Json historyEntryOf(const ZQMatrixProperties& record, Tier tier);

/// The size of the whole matrix: slots, the highest one in use, bytes of memory that this process had at most.
Json sizeOf(const Matrix& matrix);

/// A value as text with a line end. A byte that is no UTF-8, as a file's name may have one, comes out as a replacement character.
std::string jsonText(const Json& value);

/// A line for each member of a value, with its name.
std::string membersOf(const Json& value);

/// A table with a column for each value of the list and a line for each of their members.
std::string columnsOf(const Json& list);

/// A table with a line for each value of the list, under a line with the names of their members.
std::string linesOf(const Json& list);
