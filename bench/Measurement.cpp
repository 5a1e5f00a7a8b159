#include "Measurement.h"

#include <malloc.h>
#include <sys/wait.h>
#include <time.h>
#include <unistd.h>

#include <cstdio>

namespace bench {

Measurement measureInChild(const std::function<Measurement()>& function) {
  int ends[2];
  if (pipe(ends) != 0) return {};
  fflush(nullptr);
  const pid_t child = fork();
  if (child == 0) {
    close(ends[0]);
    releaseFreeMemory();
    const Measurement measured = function();
    const bool isSent = write(ends[1], &measured, sizeof measured) == sizeof measured;
    _exit(isSent ? 0 : 1);
  }
  close(ends[1]);
  Measurement measured;
  const bool isReceived = child > 0 && read(ends[0], &measured, sizeof measured) == sizeof measured;
  close(ends[0]);
  if (child > 0) waitpid(child, nullptr, 0);
  if (!isReceived) measured = {};
  return measured;
}

void releaseFreeMemory() {
  malloc_trim(0);
}

double StopWatch::now() const {
  timespec time{};
  clock_gettime(clock_ == Clock::wall ? CLOCK_MONOTONIC : CLOCK_PROCESS_CPUTIME_ID, &time);
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

long long peakBytes() {
  long long kilobytes = 0;
  if (FILE* file = fopen("/proc/self/status", "r")) {
    char line[256];
    while (kilobytes == 0 && fgets(line, sizeof line, file) != nullptr) {
      if (sscanf(line, "VmHWM: %lld", &kilobytes) != 1) kilobytes = 0;
    }
    fclose(file);
  }
  return kilobytes * 1024;
}

long long resetPeakBytes() {
  if (FILE* file = fopen("/proc/self/clear_refs", "w")) {
    fputs("5", file);
    fclose(file);
  }
  return residentBytes();
}

long long residentBytes() {
  long long size = 0, resident = 0;
  if (FILE* file = fopen("/proc/self/statm", "r")) {
    if (fscanf(file, "%lld %lld", &size, &resident) != 2) resident = 0;
    fclose(file);
  }
  return resident * sysconf(_SC_PAGESIZE);
}

}  // namespace bench
