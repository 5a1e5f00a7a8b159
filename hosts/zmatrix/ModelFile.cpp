#include "ModelFile.h"

#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>

#include "Failure.h"
#include "Inputs.h"
#include "Interrupt.h"
#include "PendingFile.h"

namespace {

// The library writes beside the target, under this name for the first save of a process (docs/file-format.md).
std::string neighbourOf(const std::string& path) {
  const std::string target = withLinksFollowed(path);
  return target.substr(0, target.rfind('/') + 1) + ".zmatrix-save-" + std::to_string(getpid()) + "-0";
}

// A text named where the model goes is a slip, and would be lost.
bool isFileOfAnotherKind(const std::string& path) {
  std::error_code error;
  return std::filesystem::is_regular_file(path, error) && std::filesystem::file_size(path, error) > 0 && !isMatrixFile(path);
}

}  // namespace

ModelFile::ModelFile(const std::string& path) : path_(path) {
  if (isFileOfAnotherKind(path)) {
    throw Failure{ExitCode::usage, path + " is there and holds no matrix: remove it, or name another file for the model"};
  }
  if (PendingFile::canStandFor(path)) {
    PendingFile probe(path);
    return;
  }
  std::FILE* file = std::fopen(path.c_str(), "ab");
  if (file == nullptr) failToWrite("cannot write", path);
  std::fclose(file);
}

void ModelFile::save(Matrix& matrix) {
  removeAtInterrupt(neighbourOf(path_));
  const bool isSaved = matrix.save(path_);
  const int reason = errno;
  removeAtInterrupt("");
  if (isSaved) return;
  throw Failure{ExitCode::limit, "cannot save to " + path_ + ": " + (reason != 0 ? std::strerror(reason) : "writing failed") +
                                     (PendingFile::canStandFor(path_) ? "; what was there stands" : "")};
}

void warnOfDamage(const std::string& path, const TalkOptions& talk) {
  if (talk.quiet) return;
  std::fflush(stdout);
  std::fprintf(stderr, "zmatrix: warning: %s is damaged or was cut off: what is lost is not used; `zmatrix check` tells more\n",
               path.c_str());
}
