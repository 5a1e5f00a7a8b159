// Choosing the sub-matrix that continues a start, and writing what it says.
#pragma once

#include "Matrix.h"
#include "Options.h"
#include "Output.h"
#include "Progress.h"

/// Selects the sub-matrix that knows the longest ending of the start, of equals the one that learned most, and returns its ID.
/// Throws a Failure if nothing was learned.
int selectSubMatrix(Matrix& matrix, const std::string& start);

/// Writes the start and what comes next, from the sub-matrix that is selected.
void writeContinuation(Matrix& matrix, const GenerationOptions& options, Output& output, Progress& progress);
