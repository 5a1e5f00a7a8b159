#include "Output.h"

#include <unistd.h>

namespace {
int standardOutput = -1;
}  // namespace

void keepStandardOutputForResults() {
  standardOutput = dup(STDOUT_FILENO);
  dup2(STDERR_FILENO, STDOUT_FILENO);
  setvbuf(stdout, nullptr, _IOLBF, BUFSIZ);
}

bool namesStandardOutput(const std::string& path) {
  return path == "-" || path == "/dev/stdout" || path == "/dev/fd/1" || path == "/proc/self/fd/1";
}

int descriptorOfStandardOutput() {
  return standardOutput;
}

Output::Output(const std::string& path) : name_(path) {
  if (path.empty() || namesStandardOutput(path)) {
    name_ = "standard output";
    if (standardOutput >= 0) stream_ = fdopen(standardOutput, "wb");
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
