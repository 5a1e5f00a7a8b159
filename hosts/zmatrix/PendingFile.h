// A file that appears whole or not at all: it is written beside its place under a temporary name and moved there by keep();
// whatever ends the command before that, an interrupt too, removes it.
#pragma once

#include <sys/types.h>

#include <string>

class PendingFile {
 public:
  /// True for a path that a file can be put beside and moved to: no file yet or a regular one, in a folder that takes files.
  /// Everything else (a device, a pipe, a file in a folder that is closed) has to be written straight.
  static bool canStandFor(const std::string& path);

  /// Makes the temporary file, empty, with the rights that the file at `path` has or a new one would get; links are followed.
  /// Throws a Failure if it can't.
  explicit PendingFile(const std::string& path);
  ~PendingFile();
  PendingFile(const PendingFile&) = delete;
  PendingFile& operator=(const PendingFile&) = delete;

  const std::string& temporaryName() const { return temporary_; }
  /// Moves the file to its place. False, with errno set, if it can't.
  bool keep();

 private:
  std::string target_;
  std::string temporary_;  ///< empty once the file is in its place
};

/// Throws the Failure that tells that `path` can't be written, for the reason that errno holds.
[[noreturn]] void failToWrite(const std::string& what, const std::string& path);

/// The file that a path leads to, whether or not it is there.
std::string withLinksFollowed(const std::string& path);

/// True for a symbolic link to what is not there.
bool isDanglingLink(const std::string& path);
/// "a symbolic link to TARGET, which is not there".
std::string descriptionOfDanglingLink(const std::string& path);
