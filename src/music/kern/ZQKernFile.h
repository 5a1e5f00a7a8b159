// Reads a whole kern file: checks it, then reads it if no error refuses it. The class has no state.
#pragma once

#include "music/kern/ZQKernLines.h"
#include "music/kern/ZQKernObserver.h"
#include "music/kern/ZQKernTrackList.h"

namespace zmatrix {

class ZQKernFile {
 public:
  /// Fills the list with one track of the file's objects. The list is unchanged if the file can't be opened or is refused; after
  /// a timing error the track holds the objects read so far.
  ///
  /// If memory runs out during the check, the process ends with exit code 1 and a message; later, only the reading ends.
  void readKernObjectsFromFileWithPath(ZQKernTrackList* list, const char* path);
  /// Does nothing: kern files are not written.
  void writeKernObjectsToFileWithPath(ZQKernTrackList* list, const char* path);
};

[[nodiscard]] ZQKernFile* createZQKernFile();
void deleteZQKernFile(ZQKernFile* file);

// The two passes over a file, each with an observer. They throw std::bad_alloc if memory runs out.

/// Opens a file; false, with a message, if it can't be opened.
[[nodiscard]] bool openKernFile(KernLines& lines, const char* path);
/// True if no error refuses the file.
[[nodiscard]] bool checkKernFile(KernLines& lines, KernObserver& observer);
/// Reads the file into a new track, the only one of the list.
void readKernFile(KernLines& lines, ZQKernTrackList* list, KernObserver& observer);

}  // namespace zmatrix
