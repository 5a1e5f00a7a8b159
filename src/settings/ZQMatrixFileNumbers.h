// Single numbers of a matrix file on a plain stream: 2, 4 and 8 bytes, little-endian. The result of a read or write is 1, or 0 at
// the end of the file or on a full disk. The swaps reverse the bytes in place, for hosts that bring data of other machines.
#pragma once

#include <cstdint>
#include <cstdio>

namespace zmatrix {

size_t zqFwriteShort(const int16_t* value, FILE* file);
size_t zqFwriteLong(const int32_t* value, FILE* file);
size_t zqFwriteLongLong(const int64_t* value, FILE* file);

size_t zqFreadShort(int16_t* value, FILE* file);
size_t zqFreadLong(int32_t* value, FILE* file);
size_t zqFreadLongLong(int64_t* value, FILE* file);

void zqSwapShort(int16_t* value);
void zqSwapLong(int32_t* value);
void zqSwapLongLong(int64_t* value);

}  // namespace zmatrix
