// The diagnostic channel. Each thread has its own device, level, debug file and message function, shared by all matrices that it
// uses: they are the static members that ZQMatrixBase inherits. The texts of messages are part of the interface.
//
// Thread-local variables of the library are constinit: an access calls no initialisation, and in a thread that never uses them
// they cost only their memory.
#pragma once

#include <zmatrix/zq_types.h>

#include <cstdio>

/// Where the messages of the calling thread go. A new thread begins with device 0 and level 0.
struct ZQDebugChannel {
  static constexpr int messageCapacity = 2048;  ///< bytes of one message with its terminator; a longer one is cut

  static constinit thread_local FILE* fpMatrixErr;            ///< the debug file, or null; closed at the end of its thread
  static constinit thread_local int globalDebugOutputDevice;  ///< 0 none, 1 standard output, 2 debug file, 3 both
  static constinit thread_local int globalDebugLevel;         ///< messages of a level above this are dropped
  static constinit thread_local int globalMallocDebugger;     ///< kept for hosts that look for it; nothing reads it

  static constinit thread_local zq_messageFunction messageFunction;  ///< the host's function for messages, or null
  static constinit thread_local void* messageUserData;

  /// Opens the debug file for appending; it stays closed if that fails.
  static void openDebugFile(const char* path);
  static void closeDebugFile();

  /// True if a message of this level would be printed or passed on. Hot paths test this before they collect a message's values.
  static bool shows(int level) { return globalDebugLevel >= level && (prints() || messageFunction != nullptr); }
  static bool prints() { return globalDebugOutputDevice != 0 && (globalDebugOutputDevice == 1 || fpMatrixErr != nullptr); }
};

/// Prints one message through the channel. Level 0 is for errors and warnings, 1 for notes, 2 to 9 for detail. Devices 2 and 3
/// print nothing while there is no debug file. A message that is neither printed nor passed to a function costs a few tests of
/// thread-local variables; a message of level 0 is always kept as the last message of its thread.
void dbPrintf(int level, const char* format, ...) __attribute__((format(printf, 2, 3)));

namespace zmatrix {

void setMessageFunction(zq_messageFunction function, void* userData);
/// The last message of level 0 in this thread, or an empty text.
const char* lastMessage();

}  // namespace zmatrix
