#include "frame/ZQDebugChannel.h"

#include <cstdarg>

#if defined(__linux__) && !defined(__EMSCRIPTEN__)
#include <sys/syscall.h>
#include <unistd.h>
#endif

namespace zmatrix {

constinit thread_local FILE* ZQDebugChannel::fpMatrixErr = nullptr;
constinit thread_local int ZQDebugChannel::globalDebugOutputDevice = 0;
constinit thread_local int ZQDebugChannel::globalDebugLevel = 0;
constinit thread_local int ZQDebugChannel::globalMallocDebugger = 0;
constinit thread_local zq_messageFunction ZQDebugChannel::messageFunction = nullptr;
constinit thread_local void* ZQDebugChannel::messageUserData = nullptr;

namespace {

constinit thread_local char lastMessageOfLevel0[ZQDebugChannel::messageCapacity] = {};

/// True in the process's first thread. Its debug file is left to the end of the process, which closes all files: until then the
/// destructors of a host's globals may still print messages.
bool isFirstThread() {
#if defined(__linux__) && !defined(__EMSCRIPTEN__)
  return syscall(SYS_gettid) == getpid();
#else
  return false;
#endif
}

struct ClosesDebugFileAtEndOfThread {
  void watch() {}  // makes the compiler register the destructor with the thread
  ~ClosesDebugFileAtEndOfThread() {
    if (!isFirstThread()) ZQDebugChannel::closeDebugFile();
  }
};
thread_local ClosesDebugFileAtEndOfThread endOfThread;

}  // namespace

void ZQDebugChannel::openDebugFile(const char* path) {
  fpMatrixErr = fopen(path, "a");
  if (fpMatrixErr != nullptr) endOfThread.watch();
}

void ZQDebugChannel::closeDebugFile() {
  if (fpMatrixErr != nullptr) fclose(fpMatrixErr);
  fpMatrixErr = nullptr;
}

void dbPrintf(int level, const char* format, ...) {
  if (level > 0 && !ZQDebugChannel::shows(level)) return;
  char detail[ZQDebugChannel::messageCapacity];
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

void setMessageFunction(zq_messageFunction function, void* userData) {
  ZQDebugChannel::messageFunction = function;
  ZQDebugChannel::messageUserData = userData;
}

const char* lastMessage() {
  return lastMessageOfLevel0;
}

}  // namespace zmatrix
