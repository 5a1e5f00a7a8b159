// Learning from texts that a host has in memory, decoded: what a file's feed does before it learns.
#pragma once

class ZQMatrix;
class ZQMatrixMedium;

namespace zmatrix {

/// Makes the sub-matrix that is to learn a text the current one and sets it up, as for a file of this name with these characters.
/// Its ID, or -1 with a message if none is free.
int prepareMatrixForText(ZQMatrix* matrix, const int* characters, int length, const char* name);
int prepareMatrixForText(ZQMatrixMedium* matrix, const int* characters, int length, const char* name);

}  // namespace zmatrix
