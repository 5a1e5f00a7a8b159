#include "Output.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "Failure.h"

namespace {

int standardOutput = -1;
bool isStandardOutputClosed = false;

bool isRegularOrDevNull(const struct stat& status) {
  struct stat nothing {};
  return S_ISREG(status.st_mode) ||
         (S_ISCHR(status.st_mode) && stat("/dev/null", &nothing) == 0 && status.st_rdev == nothing.st_rdev);
}

}  // namespace

void fillClosedStandardStreams() {
  for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
    if (fcntl(descriptor, F_GETFD) != -1) continue;
    if (descriptor == STDOUT_FILENO) isStandardOutputClosed = true;
    open("/dev/null", O_RDWR);  // open() returns the lowest free descriptor, which is this one
  }
}

void keepStandardOutputForResults() {
  if (!isStandardOutputClosed) standardOutput = dup(STDOUT_FILENO);
  dup2(STDERR_FILENO, STDOUT_FILENO);
  setvbuf(stdout, nullptr, _IOLBF, BUFSIZ);
}

bool namesStandardOutput(const std::string& path) {
  return path == "-" || path == "/dev/stdout" || path == "/dev/fd/1" || path == "/proc/self/fd/1";
}

int descriptorOfStandardOutput() {
  if (standardOutput < 0) throw Failure{ExitCode::limit, "cannot write standard output: it is closed"};
  return standardOutput;
}

bool isFileOrDevNull(const std::string& path) {
  struct stat status {};
  if (path.empty() || namesStandardOutput(path)) {
    return standardOutput >= 0 && fstat(standardOutput, &status) == 0 && isRegularOrDevNull(status);
  }
  return stat(path.c_str(), &status) != 0 || isRegularOrDevNull(status);
}

Output::Output(const std::string& path) : name_(path) {
  if (path.empty() || namesStandardOutput(path)) {
    name_ = "standard output";
    stream_ = fdopen(descriptorOfStandardOutput(), "wb");
  } else if (PendingFile::canStandFor(path)) {
    pending_ = std::make_unique<PendingFile>(path);
    stream_ = std::fopen(pending_->temporaryName().c_str(), "wb");
  } else {
    stream_ = std::fopen(path.c_str(), "wb");
  }
  if (stream_ == nullptr) failToWrite("cannot write", name_);
}

Output::~Output() {
  if (stream_ != nullptr) std::fclose(stream_);
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
  const bool kept = std::fflush(stream_) == 0 && !std::ferror(stream_) && (!pending_ || fsync(fileno(stream_)) == 0);
  if (!kept) failToWrite("cannot write all of", name_);
  std::FILE* stream = stream_;
  stream_ = nullptr;
  if (std::fclose(stream) != 0) failToWrite("cannot write all of", name_);
  if (pending_ && !pending_->keep()) failToWrite("cannot write", name_);
}
