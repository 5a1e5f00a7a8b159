// The bytes of the heap in use, which the tests for leaks read.
#include <malloc.h>
#include <stddef.h>

size_t bytesInUse(void) { return (size_t)mallinfo().uordblks; }
