// Where results go: standard output, or a file that appears whole or not at all. Devices and pipes are written straight.
#pragma once

#include <cstdio>
#include <memory>
#include <string>

#include "PendingFile.h"

class Output {
 public:
  /// Opens now, so that a folder that can't be written is known before hours of learning. An empty path means standard output, as
  /// its names do.
  explicit Output(const std::string& path);
  ~Output();
  Output(const Output&) = delete;
  Output& operator=(const Output&) = delete;

  void write(const std::string& bytes);
  void write(char byte);
  bool isOnTerminal() const;
  /// Throws a Failure if anything of what was written could not be kept.
  void commit();

 private:
  std::string name_;                      ///< for messages
  std::unique_ptr<PendingFile> pending_;  ///< null if written straight
  std::FILE* stream_ = nullptr;
};

/// True for the names that lead to standard output on every system: "-", "/dev/stdout" and the like.
bool namesStandardOutput(const std::string& path);

/// The descriptor of what was standard output when the command began. Throws a Failure if that was closed.
int descriptorOfStandardOutput();

/// True if what is written to this path, as an Output takes it, can't come out on a terminal: it is a file, or nothing at all. Of
/// a pipe nobody knows where it ends.
bool goesToAFile(const std::string& path);

/// To be called first of all: a file that is opened while standard input, output or error is closed would come to stand for it.
void fillClosedStandardStreams();

/// To be called before anything is learned: from then on what anyone prints on standard output, the library's messages above all,
/// comes out on standard error, and only an Output still writes to the true standard output. So results stay clean.
void keepStandardOutputForResults();
