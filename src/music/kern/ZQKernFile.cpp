#include "music/kern/ZQKernFile.h"

#include <cstdlib>
#include <new>

#include "frame/ZQDebugChannel.h"
#include "music/kern/ZQKernReader.h"
#include "music/kern/ZQKernValidator.h"

namespace zmatrix {

bool openKernFile(KernLines& lines, const char* path) {
  if (lines.open(path)) return true;
  dbPrintf(0, "error readKernObjectsFromFileWithPath: cannot open %s\n", path != nullptr ? path : "");
  return false;
}

bool checkKernFile(KernLines& lines, KernObserver& observer) {
  return KernValidator(lines, observer).check() < 1;
}

void readKernFile(KernLines& lines, ZQKernTrackList* list, KernObserver& observer) {
  lines.rewind();
  list->deleteAllKernObjectTracks();
  ZQKernObjectTrack* track = createZQKernObjectTrack();
  if (track == nullptr || !list->addKernObjectTrack(track)) {
    deleteZQKernObjectTrack(track);
    throw std::bad_alloc();
  }
  KernReader(lines, track, observer).read();
}

void ZQKernFile::readKernObjectsFromFileWithPath(ZQKernTrackList* list, const char* path) {
  if (list == nullptr) return;
  KernLines lines;
  KernObserver nobody;
  try {
    if (!openKernFile(lines, path) || !checkKernFile(lines, nobody)) return;
  } catch (const std::bad_alloc&) {
    dbPrintf(0, "humdrum: ERROR: Out of Memory\n");
    std::exit(1);
  }
  try {
    readKernFile(lines, list, nobody);
  } catch (const std::bad_alloc&) {
    return;  // the list keeps what was read so far
  }
}

void ZQKernFile::writeKernObjectsToFileWithPath(ZQKernTrackList*, const char*) {
}

ZQKernFile* createZQKernFile() {
  return new (std::nothrow) ZQKernFile;
}

void deleteZQKernFile(ZQKernFile* file) {
  delete file;
}

}  // namespace zmatrix
