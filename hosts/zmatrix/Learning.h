// Feeding files to a matrix, with the line that shows how far it is.
#pragma once

#include <vector>

#include "Inputs.h"
#include "Matrix.h"
#include "Progress.h"

void learnFiles(Matrix& matrix, const std::vector<InputFile>& inputs, Progress& progress);
