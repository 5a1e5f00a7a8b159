#include "ModelFile.h"

#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>

#include "Failure.h"
#include "Inputs.h"
#include "Interrupt.h"
#include "Output.h"
#include "PendingFile.h"
#include "Talk.h"

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

// The library opens files by their path, and the process's own name for standard output leads elsewhere by now.
std::string pathOfStandardOutput() {
  const int descriptor = descriptorOfStandardOutput();
  if (isatty(descriptor) == 1) throw Failure{ExitCode::usage, "a model is no text for a terminal: name a file for it"};
  return "/dev/fd/" + std::to_string(descriptor);
}

}  // namespace

ModelFile::ModelFile(const std::string& path)
    : name_(namesStandardOutput(path) ? "standard output" : path),
      path_(namesStandardOutput(path) ? pathOfStandardOutput() : path) {
  if (isFileOfAnotherKind(path_)) {
    throw Failure{ExitCode::usage, name_ + " is there and holds no matrix: remove it, or name another file for the model"};
  }
  if (PendingFile::canStandFor(path_)) {
    PendingFile probe(path_);
    return;
  }
  // not opened: at a pipe that would wait for a reader, and take the pipe's end for him
  if (access(path_.c_str(), W_OK) != 0) failToWrite("cannot write", name_);
}

void ModelFile::save(Matrix& matrix) {
  removeAtInterrupt(neighbourOf(path_));
  const bool isSaved = matrix.save(path_);
  const int reason = errno;
  removeAtInterrupt("");
  if (isSaved) return;
  throw Failure{ExitCode::limit, "cannot save to " + name_ + ": " + (reason != 0 ? std::strerror(reason) : "writing failed") +
                                     (PendingFile::canStandFor(path_) ? "; what was there stands" : "")};
}

std::string damageOf(Matrix& matrix) {
  const zq_loadReport report = matrix.loadReport();
  if (report.state == zq_loadWhole) return "";
  std::string damage;
  const auto add = [&damage](bool isSo, const std::string& what) {
    if (isSo) damage += (damage.empty() ? "" : ", ") + what;
  };
  const long long missing =
      static_cast<long long>(report.elementsCounted) - report.elementsRead + static_cast<long long>(report.elementsDropped);
  add(report.isCutShort != 0, "cut off");
  add(report.recordsMissing > 0,
      std::to_string(report.recordsMissing) + " of " + std::to_string(report.recordsCounted) + " sub-matrices lost");
  add(missing > 0, std::to_string(missing) + " of " + std::to_string(report.elementsCounted) + " elements missing");
  add(missing <= 0 && report.elementsDropped > 0, std::to_string(report.elementsDropped) + " elements dropped");
  add(report.hasNewLinks != 0, "links made anew");
  add(report.levelLinksCut > 0, "links to words cut");
  return damage.empty() ? "parts of it can't be read" : damage;
}

void warnIfDamaged(Matrix& matrix, const std::string& path) {
  const std::string damage = damageOf(matrix);
  if (damage.empty()) return;
  warn(path + " is damaged (" + damage + "): what is lost is not used; `zmatrix check` tells more");
}

void requireWhole(Matrix& matrix, const std::string& path, bool isForced) {
  if (isForced) return warnIfDamaged(matrix, path);
  const std::string damage = damageOf(matrix);
  if (damage.empty()) return;
  throw Failure{ExitCode::damaged, path + " is damaged (" + damage + "); --force goes on with what is left of it"};
}
