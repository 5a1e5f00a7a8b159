// The list of file names that a batch feed works through, and the search of a directory tree for files by suffix. The list owns
// its names, which come from systemMalloc.
#pragma once

#include "music/ZQSortByFunction.h"

class ZQFileNameList {
 public:
  ZQFileNameList();
  ~ZQFileNameList();
  ZQFileNameList(const ZQFileNameList&) = delete;
  ZQFileNameList& operator=(const ZQFileNameList&) = delete;

  /// Makes an empty list with the initial capacity.
  void init();
  /// Takes ownership of the name; null is ignored.
  void addFileName(char* name);
  int getCount() const { return numberOfFileNames_; }
  /// Null outside the range.
  char* getFileNameAtIndex(int index) const;
  void deleteFileNameAtIndex(int index);
  void deleteAllFileNames();
  char** getFileNameList() const { return fileNameList_; }
  void setFileNameList(char** names) { fileNameList_ = names; }
  void setNumberOfFileNames(int number) { numberOfFileNames_ = number; }
  void setInternalNumberOfFileNames(int number) { internalNumberOfFileNames_ = number; }
  void sortByFunction(zmatrix::ZQCompareFunction compare);

  /// The suffix of a name with its dot, at most ten characters, in a buffer of the calling thread. Empty if there is no dot
  /// behind the first character.
  char* getFileSuffix(const char* name) const;
  int fileIsMidiFile(const char* name) const;
  int fileIsKernFile(const char* name) const;
  int fileIsTextFile(const char* name) const;
  /// 1 for a directory, 0 for a regular file, -1 for anything else or a path that can't be read.
  int isDirectory(const char* path) const;
  /// The full paths of all entries of a directory, in reverse alphabetical order; null if the path is no directory.
  ZQFileNameList* getDirectoryContent(const char* path) const;

  /// Each adds the files of its kind in a directory, or a single file, to `list`, or to a new list if that is null, and returns
  /// the list. Without `recursive` sub-directories are not searched.
  ZQFileNameList* getMidiFilesInFilePath(const char* path, int recursive, ZQFileNameList* list) const;
  ZQFileNameList* getKernFilesInFilePath(const char* path, int recursive, ZQFileNameList* list) const;
  ZQFileNameList* getTextFilesInFilePath(const char* path, int recursive, ZQFileNameList* list) const;
  ZQFileNameList* getMidiOrKernFilesInFilePath(const char* path, int recursive, ZQFileNameList* list) const;

 private:
  friend void deleteZQFileNameListOnlyReferences(ZQFileNameList* list);

  int numberOfFileNames_ = 0;
  int internalNumberOfFileNames_ = 0;
  char** fileNameList_ = nullptr;
};

ZQFileNameList* createZQFileNameList();
/// Releases list and names; null is ignored.
void deleteZQFileNameList(ZQFileNameList* list);
/// Releases the list only; the caller keeps the names.
void deleteZQFileNameListOnlyReferences(ZQFileNameList* list);

/// Compares at most 256 characters of two names, given by pointers to them; 0 if one is null. Hosts may call it too.
extern "C" __attribute__((visibility("default"))) int ZQCompareFileNames(const void* a, const void* b);
