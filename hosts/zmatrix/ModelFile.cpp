#include "ModelFile.h"

#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>

#include "Failure.h"
#include "Inputs.h"
#include "Interrupt.h"
#include "Messages.h"
#include "Output.h"
#include "PendingFile.h"

namespace {

// The temporary file of the library's first save in a process (docs/file-format.md).
std::string neighbourOf(const std::string& path) {
  const std::string target = withLinksFollowed(path);
  return target.substr(0, target.rfind('/') + 1) + ".zmatrix-save-" + std::to_string(getpid()) + "-0";
}

// Protects a file that was named as the model by mistake.
bool isFileOfAnotherKind(const std::string& path) {
  std::error_code error;
  return std::filesystem::is_regular_file(path, error) && std::filesystem::file_size(path, error) > 0 && !isMatrixFile(path);
}

// The library opens files by path, and /dev/stdout leads to stderr since keepStandardOutputForResults().
std::string pathOfStandardOutput() {
  const int descriptor = descriptorOfStandardOutput();
  if (isatty(descriptor) == 1) throw Failure{ExitCode::usage, "won't write a binary model to a terminal; use --out FILE"};
  return "/dev/fd/" + std::to_string(descriptor);
}

}  // namespace

ModelFile::ModelFile(const std::string& path)
    : name_(namesStandardOutput(path) ? "standard output" : path),
      path_(namesStandardOutput(path) ? pathOfStandardOutput() : path) {
  if (isFileOfAnotherKind(path_)) {
    throw Failure{ExitCode::usage, name_ + " exists and is not a matrix file: remove it, or choose another file for the model"};
  }
  if (PendingFile::canStandFor(path_)) {
    PendingFile probe(path_);
    return;
  }
  // the path is not opened: opening a named pipe would wait for a reader, and closing it would end the reader's input
  if (access(path_.c_str(), W_OK) != 0) failToWrite("cannot write", name_);
}

void ModelFile::save(Matrix& matrix) {
  removeAtInterrupt(neighbourOf(path_));
  const bool isSaved = matrix.save(path_);
  const int reason = errno;
  removeAtInterrupt("");
  if (isSaved) return;
  throw Failure{ExitCode::limit, "cannot save to " + name_ + ": " + (reason != 0 ? std::strerror(reason) : "writing failed") +
                                     (PendingFile::canStandFor(path_) ? "; the previous file is unchanged" : "")};
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
  add(report.hasNewLinks != 0, "links rebuilt");
  add(report.levelLinksCut > 0, "links to words cut");
  return damage.empty() ? "parts of it can't be read" : damage;
}

void warnIfDamaged(Matrix& matrix, const std::string& path) {
  const std::string damage = damageOf(matrix);
  if (damage.empty()) return;
  warn(path + " is damaged (" + damage + "); for details see `zmatrix check`");
}

void requireWhole(Matrix& matrix, const std::string& path, bool isForced) {
  if (isForced) return warnIfDamaged(matrix, path);
  const std::string damage = damageOf(matrix);
  if (damage.empty()) return;
  throw Failure{ExitCode::damaged, path + " is damaged (" + damage + "); --force uses it anyway"};
}
