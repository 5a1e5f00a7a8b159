// What a kern file gives and what is wrong with it, as the check and the reading themselves tell it.
#pragma once

#include <zmatrix/zq_types.h>

namespace zmatrix {

ZQKernReport* createKernReport(const char* fileName);
void deleteKernReport(ZQKernReport* report);

}  // namespace zmatrix
