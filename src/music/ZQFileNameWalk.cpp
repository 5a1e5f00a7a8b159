// The search for file names: suffixes, directories, and the recursive walk. Symbolic links are followed, so that a directory can
// contain itself: the walk never enters a directory that it is already in, and enters at most a million directories. Its depth is
// bounded by the longest path that the system accepts.
#include <dirent.h>
#include <sys/stat.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <string_view>

#include "frame/ZQDebugChannel.h"
#include "frame/ZQMemory.h"
#include "music/ZQFileNameList.h"

using zmatrix::dbPrintf;
using zmatrix::systemMallocArray;

namespace {

constexpr size_t longestSuffix = 10;
constexpr int mostDirectoriesOfAWalk = 1 << 20;

char* newText(std::string_view head, std::string_view separator = {}, std::string_view tail = {}) {
  auto* text = systemMallocArray<char>(static_cast<long long>(head.size() + separator.size() + tail.size()) + 1);
  if (text == nullptr) return nullptr;
  char* end = text;
  for (std::string_view piece : {head, separator, tail}) end += piece.copy(end, piece.size());
  *end = 0;
  return text;
}

char* newPath(std::string_view directory, std::string_view name) {
  return newText(directory, directory.empty() || directory.back() == '/' ? "" : "/", name);
}

/// The parameters of one of the four operations that collect files.
struct FileSelection {
  bool (*accepts)(const ZQFileNameList& list, const char* name);
  const char* searchMessage;  ///< or null
};

constexpr FileSelection midiFiles = {[](const ZQFileNameList& list, const char* name) { return list.fileIsMidiFile(name) == 1; },
                                     "getMidiFilesInFilePath: searching for: "};
constexpr FileSelection kernFiles = {[](const ZQFileNameList& list, const char* name) { return list.fileIsKernFile(name) == 1; },
                                     nullptr};
constexpr FileSelection textFiles = {[](const ZQFileNameList& list, const char* name) { return list.fileIsTextFile(name) == 1; },
                                     nullptr};
constexpr FileSelection midiOrKernFiles = {
    [](const ZQFileNameList& list, const char* name) { return list.fileIsMidiFile(name) == 1 || list.fileIsKernFile(name) == 1; },
    "getMidiOrKernFilesInFilePath: searching for: "};

/// The recursive walk of one directory tree.
class FileWalk {
 public:
  FileWalk(const FileSelection& selection, bool recursive, ZQFileNameList* list)
      : selection_(selection), recursive_(recursive), list_(list) {}

  void collect(const char* path) { collect(path, nullptr); }

 private:
  /// A directory that the walk is in; `parent` is the directory that contains it.
  struct Directory {
    dev_t device;
    ino_t number;
    const Directory* parent;
  };

  static bool isInside(const Directory* directory, const struct stat& status) {
    for (; directory != nullptr; directory = directory->parent)
      if (directory->device == status.st_dev && directory->number == status.st_ino) return true;
    return false;
  }

  void collect(const char* path, const Directory* parent) {
    if (selection_.searchMessage != nullptr) dbPrintf(8, "%s%s\n", selection_.searchMessage, path);
    struct stat status;
    if (stat(path, &status) == 0 && S_ISDIR(status.st_mode)) {
      if (isInside(parent, status) || numberOfDirectories_++ >= mostDirectoriesOfAWalk) return;
      const Directory directory = {status.st_dev, status.st_ino, parent};
      collectContentOf(path, directory);
    } else if (selection_.accepts(*list_, path)) {
      list_->addFileName(newText(path));
    }
  }

  void collectContentOf(const char* path, const Directory& directory) {
    ZQFileNameList* content = list_->getDirectoryContent(path);
    if (content == nullptr) return;
    for (int i = 0; i < content->getCount(); i++) {
      const char* entry = content->getFileNameAtIndex(i);
      if (recursive_ || list_->isDirectory(entry) == 0) collect(entry, &directory);
    }
    deleteZQFileNameList(content);
  }

  const FileSelection& selection_;
  bool recursive_;
  ZQFileNameList* list_;
  int numberOfDirectories_ = 0;
};

ZQFileNameList* filesInPath(const FileSelection& selection, const char* path, int recursive, ZQFileNameList* list) {
  if (list == nullptr) list = createZQFileNameList();
  if (path == nullptr || list == nullptr) return list;
  FileWalk(selection, recursive != 0, list).collect(path);
  return list;
}

bool hasSuffix(const ZQFileNameList& list, const char* name, std::initializer_list<std::string_view> suffixes) {
  const std::string_view suffix = list.getFileSuffix(name);
  return std::find(suffixes.begin(), suffixes.end(), suffix) != suffixes.end();
}

}  // namespace

char* ZQFileNameList::getFileSuffix(const char* name) const {
  static constinit thread_local char suffix[longestSuffix + 1] = {};
  suffix[0] = 0;
  const std::string_view text = name != nullptr ? name : "";
  const size_t dot = text.rfind('.');
  // A dot at the begin of a name starts no suffix.
  if (dot != std::string_view::npos && dot > 0) suffix[text.copy(suffix, longestSuffix, dot)] = 0;
  return suffix;
}

int ZQFileNameList::fileIsMidiFile(const char* name) const {
  return hasSuffix(*this, name, {".mid", ".MID", ".midi", ".MIDI"});
}

int ZQFileNameList::fileIsKernFile(const char* name) const {
  return hasSuffix(*this, name, {".krn", ".KRN"});
}

int ZQFileNameList::fileIsTextFile(const char* name) const {
  return hasSuffix(*this, name, {".txt", ".TXT"});
}

int ZQFileNameList::isDirectory(const char* path) const {
  struct stat status;
  if (path == nullptr || stat(path, &status) != 0) return -1;
  if (S_ISDIR(status.st_mode)) return 1;
  return S_ISREG(status.st_mode) ? 0 : -1;
}

ZQFileNameList* ZQFileNameList::getDirectoryContent(const char* path) const {
  if (isDirectory(path) != 1) return nullptr;
  ZQFileNameList* content = createZQFileNameList();
  dirent** entries = nullptr;
  int numberOfEntries = content != nullptr ? scandir(path, &entries, nullptr, alphasort) : 0;
  while (numberOfEntries-- > 0) {
    const std::string_view name = entries[numberOfEntries]->d_name;
    if (name != "." && name != "..") content->addFileName(newPath(path, name));
    free(entries[numberOfEntries]);
  }
  free(entries);
  return content;
}

ZQFileNameList* ZQFileNameList::getMidiFilesInFilePath(const char* path, int recursive, ZQFileNameList* list) const {
  return filesInPath(midiFiles, path, recursive, list);
}

ZQFileNameList* ZQFileNameList::getKernFilesInFilePath(const char* path, int recursive, ZQFileNameList* list) const {
  return filesInPath(kernFiles, path, recursive, list);
}

ZQFileNameList* ZQFileNameList::getTextFilesInFilePath(const char* path, int recursive, ZQFileNameList* list) const {
  return filesInPath(textFiles, path, recursive, list);
}

ZQFileNameList* ZQFileNameList::getMidiOrKernFilesInFilePath(const char* path, int recursive, ZQFileNameList* list) const {
  return filesInPath(midiOrKernFiles, path, recursive, list);
}
