// Learning from decoded texts in memory: chooses and sets up the sub-matrix, as the feed of a text file does before it learns.
#pragma once

class ZQMatrix;
class ZQMatrixMedium;

namespace zmatrix {

/// Chooses the sub-matrix for a text, makes it current and sets it up, as for a file of this name with these characters. Returns
/// its ID, or -1 with a message if none is free.
int prepareMatrixForText(ZQMatrix* matrix, const int* characters, int length, const char* name);
int prepareMatrixForText(ZQMatrixMedium* matrix, const int* characters, int length, const char* name);

}  // namespace zmatrix
