#include "PendingFile.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>

#include "Failure.h"
#include "Interrupt.h"

namespace {

namespace fs = std::filesystem;

// mkstemp() makes a file that only its owner can read. The result gets the rights of the file that it replaces, or the default
// ones.
mode_t rightsFor(const std::string& target) {
  struct stat status;
  if (stat(target.c_str(), &status) == 0) return status.st_mode & 07777;
  const mode_t mask = umask(0);
  umask(mask);
  return 0666 & ~mask;
}

}  // namespace

bool PendingFile::canStandFor(const std::string& path) {
  std::error_code error;
  const fs::file_status status = fs::status(path, error);
  if (!fs::exists(status) || fs::is_directory(status)) return true;  // the constructor throws for a folder
  if (!fs::is_regular_file(status)) return false;
  const fs::path folder = fs::path(withLinksFollowed(path)).parent_path();
  return access(folder.empty() ? "." : folder.c_str(), W_OK) == 0;
}

PendingFile::PendingFile(const std::string& path) : target_(withLinksFollowed(path)) {
  std::error_code error;
  if (isDanglingLink(path)) failToWrite("cannot write", path);
  if (fs::is_directory(target_, error)) throw Failure{ExitCode::limit, "cannot write " + path + ": it is a folder"};
  // rename() would replace a read-only file too
  if (fs::exists(target_, error) && access(target_.c_str(), W_OK) != 0) failToWrite("cannot write", path);
  std::string pattern = target_ + ".XXXXXX";
  const int descriptor = mkstemp(pattern.data());
  if (descriptor < 0) failToWrite("cannot write", path);
  temporary_ = pattern;
  removeAtInterrupt(temporary_);
  fchmod(descriptor, rightsFor(target_));
  close(descriptor);
}

PendingFile::~PendingFile() {
  if (!temporary_.empty()) unlink(temporary_.c_str());
  removeAtInterrupt("");
}

bool PendingFile::keep() {
  if (std::rename(temporary_.c_str(), target_.c_str()) != 0) return false;
  temporary_.clear();
  removeAtInterrupt("");
  return true;
}

void failToWrite(const std::string& what, const std::string& path) {
  const std::string reason = std::strerror(errno);
  throw Failure{ExitCode::limit,
                what + " " + path + ": " + (isDanglingLink(path) ? "it is " + descriptionOfDanglingLink(path) : reason)};
}

std::string withLinksFollowed(const std::string& path) {
  std::error_code error;
  const fs::path resolved = fs::weakly_canonical(path, error);
  return error ? path : resolved.string();
}

bool isDanglingLink(const std::string& path) {
  std::error_code error;
  return fs::is_symlink(path, error) && !fs::exists(path, error);
}

std::string descriptionOfDanglingLink(const std::string& path) {
  std::error_code error;
  return "a symbolic link to " + fs::read_symlink(path, error).string() + ", which does not exist";
}
