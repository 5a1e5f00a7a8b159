// The version of the library, for hosts that load it at run time.
#pragma once

namespace zmatrix {

/// "major.minor.patch"; the text lives as long as the process.
const char* version();

}  // namespace zmatrix
