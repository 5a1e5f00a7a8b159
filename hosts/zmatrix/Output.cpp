#include "Output.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <filesystem>

#include "Failure.h"

namespace {

int standardOutput = -1;

// What an interrupt has to remove; a fixed array, since a signal handler may touch nothing that allocates.
char unfinishedFile[4096];

extern "C" void removeUnfinishedFile(int signalNumber) {
  if (unfinishedFile[0] != '\0') unlink(unfinishedFile);
  signal(signalNumber, SIG_DFL);
  raise(signalNumber);
}

void removeAtInterrupt(const std::string& path) {
  if (path.size() >= sizeof unfinishedFile) return;
  std::memcpy(unfinishedFile, path.c_str(), path.size() + 1);
  for (int signalNumber : {SIGINT, SIGTERM, SIGHUP}) signal(signalNumber, removeUnfinishedFile);
}

// A temporary file is made for its owner alone; the result gets the rights of the file it replaces or those of any new file.
mode_t rightsFor(const std::string& target) {
  struct stat status;
  if (stat(target.c_str(), &status) == 0) return status.st_mode & 07777;
  const mode_t mask = umask(0);
  umask(mask);
  return 0666 & ~mask;
}

}  // namespace

void keepStandardOutputForResults() {
  standardOutput = dup(STDOUT_FILENO);
  dup2(STDERR_FILENO, STDOUT_FILENO);
  setvbuf(stdout, nullptr, _IOLBF, BUFSIZ);
}

Output::Output(const std::string& path) : name_(path.empty() ? "standard output" : path) {
  if (path.empty()) {
    if (standardOutput >= 0) stream_ = fdopen(standardOutput, "wb");
    if (stream_ == nullptr) fail("cannot write");
    return;
  }
  std::error_code error;
  const std::filesystem::file_status status = std::filesystem::status(path, error);
  if (std::filesystem::is_directory(status)) throw Failure{ExitCode::limit, "cannot write " + name_ + ": it is a folder"};
  if (std::filesystem::exists(status) && !std::filesystem::is_regular_file(status)) {
    stream_ = std::fopen(path.c_str(), "wb");
    if (stream_ == nullptr) fail("cannot write");
    return;
  }
  const std::filesystem::path resolved = std::filesystem::weakly_canonical(path, error);
  openBeside(error ? path : resolved.string());
}

void Output::openBeside(const std::string& target) {
  target_ = target;
  std::string pattern = target + ".XXXXXX";
  const int descriptor = mkstemp(pattern.data());
  if (descriptor < 0) fail("cannot write");
  temporary_ = pattern;
  removeAtInterrupt(temporary_);
  fchmod(descriptor, rightsFor(target));
  stream_ = fdopen(descriptor, "wb");
  if (stream_ != nullptr) return;
  unlink(temporary_.c_str());
  close(descriptor);
  fail("cannot write");
}

Output::~Output() {
  if (stream_ != nullptr) std::fclose(stream_);
  if (!temporary_.empty()) unlink(temporary_.c_str());
  unfinishedFile[0] = '\0';
}

void Output::write(const std::string& bytes) {
  std::fwrite(bytes.data(), 1, bytes.size(), stream_);
}

void Output::write(char byte) {
  std::putc(byte, stream_);
}

bool Output::isOnTerminal() const {
  return isatty(fileno(stream_)) == 1;
}

void Output::commit() {
  const bool kept = std::fflush(stream_) == 0 && !std::ferror(stream_) && (temporary_.empty() || fsync(fileno(stream_)) == 0);
  if (!kept) fail("cannot write all of");
  std::FILE* stream = stream_;
  stream_ = nullptr;
  if (std::fclose(stream) != 0) fail("cannot write all of");
  if (temporary_.empty()) return;
  if (std::rename(temporary_.c_str(), target_.c_str()) != 0) fail("cannot write");
  temporary_.clear();
}

void Output::fail(const std::string& what) const {
  throw Failure{ExitCode::limit, what + " " + name_ + ": " + std::strerror(errno)};
}
