// The destination of results: standard output, or a file that is replaced whole or not at all. Devices and pipes are written
// directly.
#pragma once

#include <cstdio>
#include <memory>
#include <string>

#include "PendingFile.h"

class Output {
 public:
  /// Opens the file at once, so that a path that can't be written is known before learning. An empty path means standard output,
  /// as
  /// "-" and "/dev/stdout" do.
  explicit Output(const std::string& path);
  ~Output();
  Output(const Output&) = delete;
  Output& operator=(const Output&) = delete;

  void write(const std::string& bytes);
  void write(char byte);
  bool isOnTerminal() const;
  /// Flushes, and puts a file in its place. Throws a Failure if not all could be written.
  void commit();

 private:
  std::string name_;                      ///< for messages
  std::unique_ptr<PendingFile> pending_;  ///< null if written directly
  std::FILE* stream_ = nullptr;
};

/// True for "-", "/dev/stdout", "/dev/fd/1" and "/proc/self/fd/1".
bool namesStandardOutput(const std::string& path);

/// A descriptor of the original standard output. Throws a Failure if it was closed when the command began.
int descriptorOfStandardOutput();

/// True if an Output to this path can't appear on a terminal: it is a regular or new file, or /dev/null. False for a pipe, which
/// may lead to a pager.
bool isFileOrDevNull(const std::string& path);

/// Opens /dev/null for each closed standard stream. Must be called first: otherwise the next file that is opened would get the
/// descriptor of the closed stream.
void fillClosedStandardStreams();

/// Redirects standard output to stderr, and keeps a duplicate of the original for Output. The library's messages, which it prints
/// on standard output, then don't mix with results. Must be called before learning.
void keepStandardOutputForResults();
