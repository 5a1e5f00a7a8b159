// A stream of the C library that is closed with its owner.
#pragma once

#include <cstdio>
#include <memory>

namespace zmatrix {

struct FileClose {
  void operator()(FILE* file) const noexcept { fclose(file); }
};

using OwnedFile = std::unique_ptr<FILE, FileClose>;

}  // namespace zmatrix
