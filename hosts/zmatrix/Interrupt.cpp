#include "Interrupt.h"

#include <unistd.h>

#include <atomic>
#include <csignal>
#include <cstring>

namespace {

// A fixed array, because a signal handler must not allocate. It is valid while isUnfinished is true.
char unfinishedFile[4096];
std::atomic<bool> isUnfinished{false};
static_assert(std::atomic<bool>::is_always_lock_free);

extern "C" void removeUnfinishedFile(int signalNumber) {
  if (isUnfinished) unlink(unfinishedFile);
  signal(signalNumber, SIG_DFL);
  raise(signalNumber);
}

}  // namespace

void removeAtInterrupt(const std::string& path) {
  isUnfinished = false;
  if (path.empty() || path.size() >= sizeof unfinishedFile) return;
  std::memcpy(unfinishedFile, path.c_str(), path.size() + 1);
  isUnfinished = true;
  for (int signalNumber : {SIGINT, SIGTERM, SIGHUP}) {
    // a signal that is ignored, as under nohup, stays ignored
    if (signal(signalNumber, removeUnfinishedFile) == SIG_IGN) signal(signalNumber, SIG_IGN);
  }
}
