// The one diagnostic channel. Device, level and debug file are the process's, shared by every matrix: they are the static members
// that ZQMatrixBase inherits. The sentences that go through here are part of the interface and keep their wording.
#pragma once

#include <zmatrix/zq_types.h>

#include <cstdio>

/// Where messages go, for the whole process.
struct ZQDebugChannel {
  static constexpr int messageCapacity = 2048;  ///< bytes of one message with its terminator; a longer one is cut

  static FILE* fpMatrixErr;            ///< the debug file, or null
  static int globalDebugOutputDevice;  ///< 0 none, 1 standard output, 2 debug file, 3 both
  static int globalDebugLevel;         ///< messages of a level above this are dropped
  static int globalMallocDebugger;     ///< kept for hosts that look for it; nothing reads it

  static zq_messageFunction messageFunction;  ///< what a host has called for each message, or null
  static void* messageUserData;

  /// True if a message of this level would be printed or passed on. Hot paths ask this before they format a message.
  static bool shows(int level) { return globalDebugLevel >= level && (prints() || messageFunction != nullptr); }
  static bool prints() { return globalDebugOutputDevice != 0 && (globalDebugOutputDevice == 1 || fpMatrixErr != nullptr); }
};

/// Prints one message through the channel. Level 0 is for errors and warnings, 1 for notes, 2 to 9 for detail. Devices 2 and 3
/// print nothing while there is no debug file. A message that is neither printed nor passed to a function costs a few tests of
/// globals; a message of level 0 is always kept as the last message.
void dbPrintf(int level, const char* format, ...) __attribute__((format(printf, 2, 3)));

namespace zmatrix {

void setMessageFunction(zq_messageFunction function, void* userData);
/// The last message of level 0, or an empty text.
const char* lastMessage();

}  // namespace zmatrix
