// Mutes the diagnostic channel while a report reads a file: a report returns its findings as its result.
#pragma once

#include "frame/ZQDebugChannel.h"

namespace zmatrix {

/// Mutes the channel for its own lifetime.
class MutedMessages {
 public:
  MutedMessages() : device_(ZQDebugChannel::globalDebugOutputDevice), function_(ZQDebugChannel::messageFunction) {
    ZQDebugChannel::globalDebugOutputDevice = 0;
    ZQDebugChannel::messageFunction = nullptr;
  }
  ~MutedMessages() {
    ZQDebugChannel::globalDebugOutputDevice = device_;
    ZQDebugChannel::messageFunction = function_;
  }
  MutedMessages(const MutedMessages&) = delete;
  MutedMessages& operator=(const MutedMessages&) = delete;

 private:
  int device_;
  zq_messageFunction function_;
};

}  // namespace zmatrix
