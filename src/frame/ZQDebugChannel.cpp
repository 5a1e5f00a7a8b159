#include "frame/ZQDebugChannel.h"

#include <cstdarg>

FILE* ZQDebugChannel::fpMatrixErr = nullptr;
int ZQDebugChannel::globalDebugOutputDevice = 0;
int ZQDebugChannel::globalDebugLevel = 0;
int ZQDebugChannel::globalMallocDebugger = 0;

void dbPrintf(int level, const char* format, ...) {
  if (!ZQDebugChannel::shows(level)) return;
  static char text[ZQDebugChannel::messageCapacity];
  va_list arguments;
  va_start(arguments, format);
  vsnprintf(text, sizeof text, format, arguments);
  va_end(arguments);
  if (ZQDebugChannel::globalDebugOutputDevice == 1 || ZQDebugChannel::globalDebugOutputDevice == 3) printf("%s", text);
  if (ZQDebugChannel::globalDebugOutputDevice >= 2) fputs(text, ZQDebugChannel::fpMatrixErr);
}
