// The file names that a batch feed works through, and the walk over a directory tree that collects them by suffix. The list owns
// its names, which come from systemMalloc.
#pragma once

#include "music/ZQSortByFunction.h"

class ZQFileNameList {
 public:
  ZQFileNameList();
  ~ZQFileNameList();
  ZQFileNameList(const ZQFileNameList&) = delete;
  ZQFileNameList& operator=(const ZQFileNameList&) = delete;

  /// An empty list of the first capacity.
  void init();
  /// Takes over the name; null is ignored.
  void addFileName(char* name);
  int getCount() const { return numberOfFileNames; }
  /// Null outside the range.
  char* getFileNameAtIndex(int index) const;
  void deleteFileNameAtIndex(int index);
  void deleteAllFileNames();
  char** getFileNameList() const { return fileNameList; }
  void setFileNameList(char** names) { fileNameList = names; }
  void setNumberOfFileNames(int number) { numberOfFileNames = number; }
  void setInternalNumberOfFileNames(int number) { internalNumberOfFileNames = number; }
  void sortByFunction(zmatrix::ZQCompareFunction compare);

  /// The suffix with its dot, at most ten characters of it, in one buffer of the calling thread. Empty for a name without a dot
  /// behind its first character.
  char* getFileSuffix(const char* name) const;
  int fileIsMidiFile(const char* name) const;
  int fileIsKernFile(const char* name) const;
  int fileIsTextFile(const char* name) const;
  /// 1 for a directory, 0 for a regular file, -1 for anything else or a path that can't be read.
  int isDirectory(const char* path) const;
  /// The full paths of all that lies in a directory, in reverse alphabetical order; null if the path is no directory.
  ZQFileNameList* getDirectoryContent(const char* path) const;

  /// Each adds the files of its kind in a directory, or a single file, to `list`, or to a new one if that is null, and returns
  /// it. Without `recursive` only what lies directly in the directory is taken.
  ZQFileNameList* getMidiFilesInFilePath(const char* path, int recursive, ZQFileNameList* list) const;
  ZQFileNameList* getKernFilesInFilePath(const char* path, int recursive, ZQFileNameList* list) const;
  ZQFileNameList* getTextFilesInFilePath(const char* path, int recursive, ZQFileNameList* list) const;
  ZQFileNameList* getMidiOrKernFilesInFilePath(const char* path, int recursive, ZQFileNameList* list) const;

 private:
  friend void deleteZQFileNameListOnlyReferences(ZQFileNameList* list);

  int numberOfFileNames = 0;
  int internalNumberOfFileNames = 0;
  char** fileNameList = nullptr;
};

ZQFileNameList* createZQFileNameList();
/// Releases list and names; null is ignored.
void deleteZQFileNameList(ZQFileNameList* list);
/// Releases the list and leaves the names to whoever holds them.
void deleteZQFileNameListOnlyReferences(ZQFileNameList* list);

/// Compares at most 256 characters of two names, given by pointers to them; 0 if one is null. Hosts may call it too.
extern "C" __attribute__((visibility("default"))) int ZQCompareFileNames(const void* a, const void* b);
