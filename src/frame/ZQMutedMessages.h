// Silence for reports: they tell by their result what a reading tells by messages.
#pragma once

#include "frame/ZQDebugChannel.h"

namespace zmatrix {

/// Keeps the channel quiet for a while: a report is no news.
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
