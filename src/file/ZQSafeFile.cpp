#include "file/ZQSafeFile.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <filesystem>

#include "file/ZQFileStream.h"

namespace zmatrix {

namespace {

constexpr int mostLinksFollowed = 40;
constexpr int mostNamesTried = 1000;
constexpr int modeOfNewFile = 0666;
constexpr int modeUntilThatOfTarget = 0600;
constexpr int bitsOfMode = 07777;
constexpr char startOfNeighbour[] = ".zmatrix-save-";  // followed by process id and number

std::string folderOf(const std::string& path) {
  const size_t slash = path.rfind('/');
  return slash == std::string::npos ? std::string() : path.substr(0, slash + 1);
}

// The path at the end of a chain of links, whether or not a file is there; empty for a cycle.
std::string withLinksFollowed(const char* path) {
  std::string name = path;
  std::error_code error;
  for (int i = 0; std::filesystem::is_symlink(name, error); ++i) {
    const std::string next = std::filesystem::read_symlink(name, error).string();
    if (error || i == mostLinksFollowed) return "";
    name = !next.empty() && next[0] == '/' ? next : folderOf(name).append(next);
  }
  return name;
}

bool canBeWritten(const std::string& path) {
  const int descriptor = ::open(path.c_str(), O_WRONLY | O_CLOEXEC);
  if (descriptor >= 0) close(descriptor);
  return descriptor >= 0;
}

/// True for errors that forbid to create a file here or to replace the old one; false for a full disk.
bool forbidsReplacing(int error) {
  return error == EACCES || error == EPERM || error == EROFS || error == EBUSY || error == EXDEV || error == ENAMETOOLONG;
}

int openFolder(const std::string& folder) {
  return ::open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
}

void syncFolder(const std::string& folder) {
  const int descriptor = openFolder(folder);
  if (descriptor < 0) return;
  fsync(descriptor);
  close(descriptor);
}

/// True for the name of a neighbour whose process no longer exists.
bool isNameOfLeftover(const char* name) {
  const size_t lengthOfStart = sizeof startOfNeighbour - 1;
  if (strncmp(name, startOfNeighbour, lengthOfStart) != 0) return false;
  char* end = nullptr;
  const long process = strtol(name + lengthOfStart, &end, 10);
  return *end == '-' && process > 0 && process != getpid() && kill(static_cast<pid_t>(process), 0) != 0 && errno == ESRCH;
}

/// A process of another machine or container is not seen from here, but its file is locked.
void removeIfUnlocked(int folder, const char* name) {
  const int descriptor = openat(folder, name, O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
  if (descriptor < 0) return;
  struct stat status;
  const bool isLeftover = fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode) && flock(descriptor, LOCK_EX | LOCK_NB) == 0;
  if (isLeftover) unlinkat(folder, name, 0);
  close(descriptor);
}

void removeLeftovers(const std::string& folder) {
  const int descriptor = openFolder(folder);
  DIR* entries = descriptor >= 0 ? fdopendir(descriptor) : nullptr;
  if (entries == nullptr) {
    if (descriptor >= 0) close(descriptor);
    return;
  }
  while (const dirent* entry = readdir(entries)) {
    if (isNameOfLeftover(entry->d_name)) removeIfUnlocked(descriptor, entry->d_name);
  }
  closedir(entries);
}

}  // namespace

ZQSafeFile::~ZQSafeFile() {
  if (stream_ != nullptr) fclose(stream_);
  if (!neighbour_.empty()) unlink(neighbour_.c_str());
}

bool ZQSafeFile::open(const char* path) {
  if (path == nullptr || *path == 0) return false;
  try {
    return openTarget(path);
  } catch (const std::bad_alloc&) {  // from the names of target and neighbour; the destructor cleans up
    return false;
  }
}

bool ZQSafeFile::openTarget(const char* path) {
  struct stat status;
  const bool isThere = stat(path, &status) == 0;
  if (isThere && !S_ISREG(status.st_mode)) {
    // Links to an open pipe, such as /dev/stdout, have no path behind them: only the system can follow them.
    target_ = path;
    if (S_ISDIR(status.st_mode) || faccessat(AT_FDCWD, path, W_OK, AT_EACCESS) != 0) return false;
    stream_ = tmpfile();
    isSpool_ = stream_ != nullptr;
    return isSpool_;
  }
  target_ = withLinksFollowed(path);
  folder_ = folderOf(target_);
  if (target_.empty() || (isThere && !canBeWritten(target_))) return false;
  const int error =
      isThere ? openNeighbour(status.st_mode & bitsOfMode, status.st_uid, status.st_gid) : openNeighbour(-1, -1, -1);
  if (error == 0) return true;
  stream_ = isThere && forbidsReplacing(error) ? fopen(target_.c_str(), "wbe") : nullptr;
  return stream_ != nullptr;
}

// The name is unique to this process and save, so files of killed processes don't matter.
int ZQSafeFile::openNeighbour(int modeOfTarget, long long owner, long long group) {
  static constinit std::atomic<unsigned> numberOfSaves = 0;
  removeLeftovers(folder_);
  for (int i = 0; i < mostNamesTried; ++i) {
    std::string name = folder_ + startOfNeighbour + std::to_string(getpid()) + "-" + std::to_string(numberOfSaves++);
    const int descriptor =
        ::open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, modeOfTarget >= 0 ? modeUntilThatOfTarget : modeOfNewFile);
    if (descriptor < 0 && errno != EEXIST) return errno;
    if (descriptor < 0) continue;
    neighbour_.swap(name);
    return takeNeighbour(descriptor, modeOfTarget, owner, group);
  }
  return EEXIST;
}

int ZQSafeFile::takeNeighbour(int descriptor, int modeOfTarget, long long owner, long long group) {
  flock(descriptor, LOCK_EX | LOCK_NB);  // without locks in the file system, only the process ID in the name shows the owner
  if (modeOfTarget >= 0) {
    // The new file keeps the target's owner and group where that is permitted, or at least the group; it keeps the mode always.
    const auto newGroup = static_cast<gid_t>(group);
    if (fchown(descriptor, static_cast<uid_t>(owner), newGroup) != 0 && fchown(descriptor, static_cast<uid_t>(-1), newGroup) != 0)
      errno = 0;
    if (fchmod(descriptor, static_cast<mode_t>(modeOfTarget)) != 0) errno = 0;
  }
  stream_ = fdopen(descriptor, "wb");
  if (stream_ != nullptr) return 0;
  close(descriptor);
  return ENOMEM;
}

bool ZQSafeFile::closeStream() {
  const bool isFlushed = fflush(stream_) == 0 && fsync(fileno(stream_)) == 0;
  const bool isClosed = fclose(stream_) == 0;
  stream_ = nullptr;
  return isFlushed && isClosed;
}

bool ZQSafeFile::commit() {
  if (isSpool_) return copyToTarget();
  if (!closeStream()) return false;
  if (neighbour_.empty()) return true;
  if (rename(neighbour_.c_str(), target_.c_str()) != 0) {
    // A mount point, or another user's file in a sticky folder: it can only be overwritten.
    if (!forbidsReplacing(errno)) return false;
    stream_ = fopen(neighbour_.c_str(), "rbe");
    return stream_ != nullptr && copyToTarget();
  }
  neighbour_.clear();
  syncFolder(folder_);
  return true;
}

bool ZQSafeFile::copyToTarget() {
  FILE* from = stream_;
  stream_ = fopen(target_.c_str(), "wbe");
  if (stream_ == nullptr) {
    fclose(from);
    return false;
  }
  rewind(from);
  int error = 0;  // the first error
  const auto hold = [&error](bool isDone) {
    if (!isDone && error == 0) error = errno != 0 ? errno : EIO;
  };
  errno = 0;
  {
    ZQFileWriter writer(stream_);
    const bool isRead = copyRest(from, writer);
    hold(writer.flush() && isRead);
  }
  fclose(from);
  hold(fflush(stream_) == 0);
  hold(fsync(fileno(stream_)) == 0 || errno == EINVAL);  // pipes and devices can't be synced
  hold(fclose(stream_) == 0);
  stream_ = nullptr;
  errno = error;
  return error == 0;
}

}  // namespace zmatrix
