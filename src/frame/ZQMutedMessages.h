// Mutes the diagnostic channel while a report reads a file: a report returns its findings as its result.
#pragma once

#include "frame/ZQDebugChannel.h"

namespace zmatrix {

/// Mutes the channel for its own lifetime.
class MutedMessages {
 public:
  MutedMessages() : device(ZQDebugChannel::globalDebugOutputDevice), function(ZQDebugChannel::messageFunction) {
    ZQDebugChannel::globalDebugOutputDevice = 0;
    ZQDebugChannel::messageFunction = nullptr;
  }
  ~MutedMessages() {
    ZQDebugChannel::globalDebugOutputDevice = device;
    ZQDebugChannel::messageFunction = function;
  }
  MutedMessages(const MutedMessages&) = delete;
  MutedMessages& operator=(const MutedMessages&) = delete;

 private:
  int device;
  zq_messageFunction function;
};

}  // namespace zmatrix
