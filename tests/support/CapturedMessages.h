// Captures the library's messages in memory, in place of the debug file. Creating or deleting a matrix resets the debug channel:
// create before, delete after, or call listen() again.
#pragma once

#include <cstdio>
#include <cstdlib>
#include <string>

#include "frame/ZQDebugChannel.h"

namespace zmatrix {

class CapturedMessages {
 public:
  explicit CapturedMessages(int level) : level_(level) { listen(); }
  ~CapturedMessages() { stop(); }
  CapturedMessages(const CapturedMessages&) = delete;
  CapturedMessages& operator=(const CapturedMessages&) = delete;

  void listen() {
    stop();
    stream_ = open_memstream(&text_, &length_);
    ZQDebugChannel::fpMatrixErr = stream_;
    ZQDebugChannel::globalDebugOutputDevice = 2;
    ZQDebugChannel::globalDebugLevel = level_;
  }

  /// The messages since the last call.
  std::string take() {
    fflush(stream_);
    std::string result(text_, length_);
    rewind(stream_);
    return result;
  }

 private:
  void stop() {
    if (stream_ != nullptr && ZQDebugChannel::fpMatrixErr == stream_)
      fclose(stream_);  // else the deletion of a matrix has closed the file
    ZQDebugChannel::fpMatrixErr = nullptr;
    ZQDebugChannel::globalDebugOutputDevice = 0;
    ZQDebugChannel::globalDebugLevel = 0;
    stream_ = nullptr;
    free(text_);
    text_ = nullptr;
  }

  int level_;
  FILE* stream_ = nullptr;
  char* text_ = nullptr;
  size_t length_ = 0;
};

}  // namespace zmatrix
