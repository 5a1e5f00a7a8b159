// The C functions that print to standard output, independently of the debug device: for hosts in other languages that want their
// output in the library's buffer, and for tests of bindings, which print the arrays that they pass.
#include <cstdarg>
#include <cstdio>

#include <zmatrix/zmatrix.h>

namespace {

/// Prints an array: a head line, a line per entry, and an empty line.
template <class Value, class PrintEntry>
int printArray(const char* name, const Value* pointer, int length, PrintEntry printEntry) {
  std::printf("%s %p (length %d):\n", name, static_cast<const void*>(pointer), length);
  if (pointer != nullptr) {
    for (int index = 0; index < length; ++index) printEntry(index, pointer[index]);
  }
  std::printf("\n");
  return 1;
}

}  // namespace

[[gnu::format(printf, 1, 2)]] int s_printf(const char* format, ...) {
  char text[2048];
  std::va_list arguments;
  va_start(arguments, format);
  const int length = std::vsnprintf(text, sizeof(text), format, arguments);
  va_end(arguments);
  return length < 0 ? length : std::printf("%s", text);
}

void s_flushStdOut(void) {
  std::fflush(stdout);
}

int printJavaIntPointer(const int* pointer, int length) {
  return printArray("printJavaIntPointer", pointer, length,
                    [](int index, int value) { std::printf("p(%d) = %d\n", index, value); });
}

int printJavaBytePointer(const signed char* pointer, int length) {
  return printArray("printJavaBytePointer", pointer, length,
                    [](int index, signed char value) { std::printf("p(%d) = %d\n", index, value); });
}

int printJavaLongPointer(const long long* pointer, int length) {
  return printArray("printJavaLongPointer", pointer, length,
                    [](int index, long long value) { std::printf("p(%d) = %ld\n", index, static_cast<long>(value)); });
}

int printJavaPointerPointer(void* const* pointer, int length) {
  return printArray("printJavaPointerPointer", pointer, length,
                    [](int index, void* value) { std::printf("p(%d) = %p\n", index, value); });
}
