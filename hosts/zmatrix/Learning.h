// Making a matrix as the options want it, and feeding files to it, with the line that shows how far it is.
#pragma once

#include <memory>
#include <vector>

#include "Inputs.h"
#include "Matrix.h"
#include "Options.h"
#include "Progress.h"

/// An empty matrix for the texts of a verb. Throws a Failure for options that contradict each other.
std::unique_ptr<Matrix> makeMatrix(const LearningOptions& options, Loudness loudness);

/// Throws a Failure for options that a matrix which has learned before can't take, and lets it have the others.
void adjustMatrix(Matrix& matrix, const LearningOptions& options);

/// Returns for each input the ID that learned it, -1 for one that held nothing.
std::vector<int> learnFiles(Matrix& matrix, const std::vector<InputFile>& inputs, Progress& progress);

/// Items of all texts that the matrix has learned, those of the level of words left out.
long long itemsOfTexts(Matrix& matrix);
