#include "numbers/ZQOcronBuffers.h"

#include <algorithm>
#include <climits>

#include "frame/ZQDebugChannel.h"
#include "frame/ZQGrowth.h"

namespace zmatrix {

void pushOnOcronStack(long long* stack, int* stackPointer, int value) {
  const int held = std::max(*stackPointer, 0);
  if (held >= mostOcronStackValues) {
    dbPrintf(2, "pushOnOcronStack: max stack Ptr exceeded!\n");
    return;
  }
  std::copy_backward(stack, stack + held, stack + held + 1);
  stack[0] = value;
  *stackPointer = held + 1;
}

long long popFromOcronStack(long long* stack, int* stackPointer) {
  const int held = std::min(*stackPointer, ocronStackSize);
  if (held < 1) return 0;
  const long long value = stack[0];
  std::copy(stack + 1, stack + held, stack);
  *stackPointer = held - 1;
  return value;
}

char* addOcronItem(char* buffer, int* length, int* capacity, int character) {
  if (buffer == nullptr) return nullptr;
  if (*length >= INT_MAX - 3) {
    systemFree(buffer);
    return nullptr;
  }
  if (*length + 2 >= *capacity) {
    *capacity = std::max(grownCapacity(*capacity), *length + 2);  // a capacity of 0 or 1 would not grow
    auto* grown = static_cast<char*>(systemRealloc(buffer, static_cast<size_t>(*capacity) + 1));
    if (grown == nullptr) systemFree(buffer);
    buffer = grown;
  }
  if (buffer == nullptr) return nullptr;
  buffer[(*length)++] = static_cast<char>(character);
  buffer[*length] = 0;
  return buffer;
}

char* addOcronString(char* buffer, int* length, int* capacity, const char* text, int count) {
  for (int i = 0; i < count && buffer != nullptr; i++) buffer = addOcronItem(buffer, length, capacity, text[i]);
  return buffer;
}

int* addIntegerItemToOcronVector(int* vector, int* count, int* capacity, int item) {
  if (*count == INT_MAX) return vector;
  if (*count + 1 >= *capacity) {
    const auto resized = [vector](int size) {
      return static_cast<int*>(systemRealloc(vector, static_cast<size_t>(size) * sizeof(int)));
    };
    int larger = std::max(grownCapacity(*capacity), *count + 1);
    int* grown = resized(larger);
    if (grown == nullptr) {
      dbPrintf(1, "addIntegerItemToOcronVector: realloc failed try again...\n");
      larger = static_cast<int>(std::min(1.2 * larger, static_cast<double>(INT_MAX)));
      grown = resized(larger);
    }
    if (grown == nullptr) {
      dbPrintf(1, "addIntegerItemToOcronVector: realloc failed, not enough memory...\n");
      return vector;
    }
    vector = grown;
    *capacity = larger;
  }
  vector[(*count)++] = item;
  return vector;
}

}  // namespace zmatrix
