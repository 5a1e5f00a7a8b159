#include "frame/ZQVersion.h"

#include <zmatrix/version.h>

#define ZMATRIX_TEXT_OF(number) #number
#define ZMATRIX_VERSION_TEXT(major, minor, patch) ZMATRIX_TEXT_OF(major) "." ZMATRIX_TEXT_OF(minor) "." ZMATRIX_TEXT_OF(patch)

namespace zmatrix {

const char* version() {
  return ZMATRIX_VERSION_TEXT(ZMATRIX_VERSION_MAJOR, ZMATRIX_VERSION_MINOR, ZMATRIX_VERSION_PATCH);
}

}  // namespace zmatrix
