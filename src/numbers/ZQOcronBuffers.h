// The growing buffers and the stack that ocrons are made in and evaluated on.
#pragma once

#include "frame/ZQMemory.h"

namespace zmatrix {

constexpr int ocronStackSize = 128;
constexpr int mostOcronStackValues = ocronStackSize - 1;
constexpr int firstOcronCapacity = 16;

/// The newest value goes to index 0, the others move up. At 127 values it is dropped, with a message at level 2.
void pushOnOcronStack(long long* stack, int* stackPointer, int value);
/// Takes index 0 out, the others move down; 0 from an empty stack.
long long popFromOcronStack(long long* stack, int* stackPointer);

/// Appends a character and a terminator. The buffer comes from the heap and may move; null for null, and if there is no memory,
/// where the old buffer is released.
char* addOcronItem(char* buffer, int* length, int* capacity, int character);
/// The same for `count` characters.
char* addOcronString(char* buffer, int* length, int* capacity, const char* text, int count);
/// Appends an integer. Without memory the old vector is returned and *count stays.
int* addIntegerItemToOcronVector(int* vector, int* count, int* capacity, int item);

}  // namespace zmatrix
