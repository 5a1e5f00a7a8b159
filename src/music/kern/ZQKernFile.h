// A kern file as a whole: it is checked, and read if no fault refuses it. The object has no state; it is what the operations are
// called on.
#pragma once

#include "music/kern/ZQKernLines.h"
#include "music/kern/ZQKernObserver.h"
#include "music/kern/ZQKernTrackList.h"

namespace zmatrix {

class ZQKernFile {
 public:
  /// Fills the list with one track of the file's objects. A file that can't be opened or is refused leaves the list as it was; a
  /// timing error leaves what was read up to there.
  ///
  /// If memory runs out during the check, the process ends with exit code 1 and a message; if it does later, the reading ends.
  void readKernObjectsFromFileWithPath(ZQKernTrackList* list, const char* path);
  /// Nothing: kern is only read.
  void writeKernObjectsToFileWithPath(ZQKernTrackList* list, const char* path);
};

ZQKernFile* createZQKernFile();
void deleteZQKernFile(ZQKernFile* file);

// The two passes, each told to an observer. They throw std::bad_alloc if memory runs out.

/// Opens a file, with a message if it can't be.
bool openKernFile(KernLines& lines, const char* path);
/// True if no fault refuses the file.
bool checkKernFile(KernLines& lines, KernObserver& observer);
/// Reads the file into a new track, which becomes the list's only one.
void readKernFile(KernLines& lines, ZQKernTrackList* list, KernObserver& observer);

}  // namespace zmatrix
