// Feeding files to a matrix, with the line that shows how far it is.
#pragma once

#include <vector>

#include "Inputs.h"
#include "Material.h"
#include "Progress.h"

/// Returns for each input the ID that learned it, -1 for one that held nothing or went to several. Unless `quiet`, says what was
/// left out.
std::vector<int> learnFiles(Material& material, Matrix& matrix, const std::vector<InputFile>& inputs, Progress& progress,
                            bool quiet);
