// The growing buffers in which ocrons are built, and the stack on which they are evaluated.
#pragma once

#include "frame/ZQMemory.h"

namespace zmatrix {

constexpr int ocronStackSize = 128;
constexpr int mostOcronStackValues = ocronStackSize - 1;
constexpr int firstOcronCapacity = 16;

/// Pushes a value at index 0 and moves the others up. With 127 values on the stack the value is dropped, with a message at level
/// 2.
void pushOnOcronStack(long long* stack, int* stackPointer, int value);
/// Removes and returns the value at index 0 and moves the others down; 0 if the stack is empty.
long long popFromOcronStack(long long* stack, int* stackPointer);

/// Appends a character and a terminator. The buffer is a heap block and may move. Null if `buffer` is null, and if memory runs
/// out, where the old buffer is released.
char* addOcronItem(char* buffer, int* length, int* capacity, int character);
/// The same for `count` characters.
char* addOcronString(char* buffer, int* length, int* capacity, const char* text, int count);
/// Appends an integer. Without memory the old vector is returned and *count is unchanged.
int* addIntegerItemToOcronVector(int* vector, int* count, int* capacity, int item);

}  // namespace zmatrix
