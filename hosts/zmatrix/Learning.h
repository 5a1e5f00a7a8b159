// Feeding files to a matrix, with a progress line.
#pragma once

#include <vector>

#include "Inputs.h"
#include "Material.h"
#include "Progress.h"

/// Returns for each input the ID of the sub-matrix that learned it; -1 if the input held nothing or was learned by several.
/// Unless `quiet`, prints what was left out.
std::vector<int> learnFiles(Material& material, Matrix& matrix, const std::vector<InputFile>& inputs, Progress& progress,
                            bool quiet);
