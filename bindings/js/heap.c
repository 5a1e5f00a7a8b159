// What only the module of WebAssembly tells.
#include <malloc.h>
#include <stddef.h>

size_t bytesInUse(void) { return (size_t)mallinfo().uordblks; }
