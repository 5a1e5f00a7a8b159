#include "memory/FailingMemory.h"

#include <dirent.h>

#include <cerrno>
#include <cstddef>
#include <cstdio>
#include <new>

#ifdef __linux__
#include <sys/mman.h>
#endif

namespace {

long failing = 0;  // counted down; the allocation that makes it 0 fails. 0 and below: none fails
bool isLasting = false;
bool hasFailed = false;

bool fails() {
  if (hasFailed && isLasting) return true;
  if (failing <= 0 || --failing > 0) return false;
  hasFailed = true;
  return true;
}

}  // namespace

namespace zmatrix {

FailingMemory::FailingMemory(long n, bool lasting) {
  hasFailed = false;
  isLasting = lasting;
  failing = n;
}

FailingMemory::~FailingMemory() {
  failing = 0;
  isLasting = false;
}

bool anAllocationHasFailed() {
  return hasFailed;
}

}  // namespace zmatrix

// The linker replaces a name of the C library by __wrap_name; __real_name is the original.
#define WRAPPED(Result, name, parameters, arguments)    \
  extern "C" Result __real_##name parameters;           \
  extern "C" Result __wrap_##name parameters {          \
    errno = ENOMEM;                                     \
    return fails() ? nullptr : __real_##name arguments; \
  }

WRAPPED(void*, malloc, (size_t size), (size))
WRAPPED(void*, calloc, (size_t count, size_t size), (count, size))
WRAPPED(void*, realloc, (void* pointer, size_t size), (pointer, size))
WRAPPED(FILE*, fopen, (const char* path, const char* mode), (path, mode))
WRAPPED(FILE*, fdopen, (int descriptor, const char* mode), (descriptor, mode))
WRAPPED(FILE*, tmpfile, (), ())
WRAPPED(FILE*, fmemopen, (void* buffer, size_t size, const char* mode), (buffer, size, mode))
WRAPPED(DIR*, fdopendir, (int descriptor), (descriptor))

#ifdef __linux__
// After a failed mremap the library maps new pages and copies.
extern "C" void* __real_mmap(void*, size_t, int, int, int, off_t);
extern "C" void* __wrap_mmap(void* address, size_t size, int protection, int flags, int descriptor, off_t offset) {
  errno = ENOMEM;
  return fails() ? MAP_FAILED : __real_mmap(address, size, protection, flags, descriptor, offset);
}
extern "C" void* __real_mremap(void*, size_t, size_t, int, ...);
extern "C" void* __wrap_mremap(void* pages, size_t size, size_t newSize, int flags, ...) {
  errno = ENOMEM;
  return fails() ? MAP_FAILED : __real_mremap(pages, size, newSize, flags);
}
#endif

extern "C" void free(void*) noexcept;

void* operator new(size_t size) {
  void* memory = fails() ? nullptr : __real_malloc(size > 0 ? size : 1);
  if (memory == nullptr) throw std::bad_alloc();
  return memory;
}
void* operator new[](size_t size) {
  return operator new(size);
}
void* operator new(size_t size, const std::nothrow_t&) noexcept {
  return fails() ? nullptr : __real_malloc(size > 0 ? size : 1);
}
void* operator new[](size_t size, const std::nothrow_t& tag) noexcept {
  return operator new(size, tag);
}
void operator delete(void* memory) noexcept {
  free(memory);
}
void operator delete[](void* memory) noexcept {
  free(memory);
}
void operator delete(void* memory, size_t) noexcept {
  free(memory);
}
void operator delete[](void* memory, size_t) noexcept {
  free(memory);
}
