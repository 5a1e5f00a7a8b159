#include "frame/ZQDebugChannel.h"

#include <cstdarg>

FILE* ZQDebugChannel::fpMatrixErr = nullptr;
int ZQDebugChannel::globalDebugOutputDevice = 0;
int ZQDebugChannel::globalDebugLevel = 0;
int ZQDebugChannel::globalMallocDebugger = 0;
zq_messageFunction ZQDebugChannel::messageFunction = nullptr;
void* ZQDebugChannel::messageUserData = nullptr;

namespace {

char lastMessageOfLevel0[ZQDebugChannel::messageCapacity];

}  // namespace

void dbPrintf(int level, const char* format, ...) {
  if (level > 0 && !ZQDebugChannel::shows(level)) return;
  static char detail[ZQDebugChannel::messageCapacity];
  char* text = level > 0 ? detail : lastMessageOfLevel0;
  va_list arguments;
  va_start(arguments, format);
  vsnprintf(text, ZQDebugChannel::messageCapacity, format, arguments);
  va_end(arguments);
  if (!ZQDebugChannel::shows(level)) return;
  const int device = ZQDebugChannel::globalDebugOutputDevice;
  if (ZQDebugChannel::prints()) {
    if (device == 1 || device == 3) printf("%s", text);
    if (device >= 2) fputs(text, ZQDebugChannel::fpMatrixErr);
  }
  if (ZQDebugChannel::messageFunction != nullptr) {
    ZQDebugChannel::messageFunction(level, text, ZQDebugChannel::messageUserData);
  }
}

namespace zmatrix {

void setMessageFunction(zq_messageFunction function, void* userData) {
  ZQDebugChannel::messageFunction = function;
  ZQDebugChannel::messageUserData = userData;
}

const char* lastMessage() {
  return lastMessageOfLevel0;
}

}  // namespace zmatrix
