// Reads and writes single numbers of 2, 4 and 8 bytes, little-endian, on a stream. The result is 1, or 0 at the end of the file
// or on a full disk. The swaps reverse the bytes in place, for hosts with data from other machines.
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
