// Catches what the library prints, in memory. It takes the debug file's place while it lives; a matrix that is created, or
// deleted, meanwhile sets the channel anew, so create before and delete after, or call listen() again.
#pragma once

#include <cstdio>
#include <cstdlib>
#include <string>

#include "frame/ZQDebugChannel.h"

namespace zmatrix {

class CapturedMessages {
 public:
  explicit CapturedMessages(int aLevel) : level(aLevel) { listen(); }
  ~CapturedMessages() { stop(); }
  CapturedMessages(const CapturedMessages&) = delete;
  CapturedMessages& operator=(const CapturedMessages&) = delete;

  void listen() {
    stop();
    stream = open_memstream(&text, &length);
    ZQDebugChannel::fpMatrixErr = stream;
    ZQDebugChannel::globalDebugOutputDevice = 2;
    ZQDebugChannel::globalDebugLevel = level;
  }

  /// What was printed since the last call.
  std::string take() {
    fflush(stream);
    std::string result(text, length);
    rewind(stream);
    return result;
  }

 private:
  void stop() {
    if (stream != nullptr && ZQDebugChannel::fpMatrixErr == stream) fclose(stream);  // otherwise a deletion has closed it
    ZQDebugChannel::fpMatrixErr = nullptr;
    ZQDebugChannel::globalDebugOutputDevice = 0;
    ZQDebugChannel::globalDebugLevel = 0;
    stream = nullptr;
    free(text);
    text = nullptr;
  }

  int level;
  FILE* stream = nullptr;
  char* text = nullptr;
  size_t length = 0;
};

}  // namespace zmatrix
