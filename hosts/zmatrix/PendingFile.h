// A file that is replaced whole or not at all. It is written under a temporary name in the same folder, and renamed by keep(). If
// the command ends before that, by an error or an interrupt, the temporary file is removed.
#pragma once

#include <sys/types.h>

#include <string>

class PendingFile {
 public:
  /// True for a new file, or a regular file in a folder where files can be made. Anything else (a device, a pipe, a file in a
  /// read-only folder) must be written directly.
  static bool canStandFor(const std::string& path);

  /// Makes an empty temporary file with the rights of the file at `path`, or those of a new file. Symbolic links are followed.
  /// Throws a Failure if that fails.
  explicit PendingFile(const std::string& path);
  ~PendingFile();
  PendingFile(const PendingFile&) = delete;
  PendingFile& operator=(const PendingFile&) = delete;

  const std::string& temporaryName() const { return temporary_; }
  /// Renames the file to `path`. False, with errno set, if that fails.
  bool keep();

 private:
  std::string target_;
  std::string temporary_;  ///< empty after keep()
};

/// Throws a Failure "WHAT PATH: REASON", with the reason from errno.
[[noreturn]] void failToWrite(const std::string& what, const std::string& path);

/// The path with symbolic links resolved; the file need not exist.
std::string withLinksFollowed(const std::string& path);

/// True for a symbolic link whose target doesn't exist.
bool isDanglingLink(const std::string& path);
/// "a symbolic link to TARGET, which does not exist".
std::string descriptionOfDanglingLink(const std::string& path);
