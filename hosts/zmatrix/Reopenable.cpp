#include "Reopenable.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <map>
#include <vector>

#include "Failure.h"
#include "PendingFile.h"

namespace {

[[noreturn]] void cannotRead(const std::string& argument) {
  throw Failure{ExitCode::badInput, "cannot read " + nameOfArgument(argument) + ": " + std::strerror(errno)};
}

// The number of the open descriptor that a path names ("/dev/fd/63" for a shell's <(...)), or -1.
int descriptorNamed(const std::string& path) {
  if (path == "/dev/stdin") return STDIN_FILENO;
  for (const std::string folder : {"/dev/fd/", "/proc/self/fd/"}) {
    const std::string number = path.rfind(folder, 0) == 0 ? path.substr(folder.size()) : "";
    if (number.empty() || number.size() > 6 || number.find_first_not_of("0123456789") != std::string::npos) continue;
    return std::atoi(number.c_str());
  }
  return -1;
}

void writeAll(int descriptor, const char* bytes, std::size_t length) {
  while (length > 0) {
    const ssize_t written = write(descriptor, bytes, length);
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) failToWrite("cannot write", "a file in memory");
    bytes += written;
    length -= static_cast<std::size_t>(written);
  }
}

// Reads a descriptor to its end into a file in memory.
int keptBytes(int source, const std::string& argument, std::uintmax_t limit) {
  const int kept = memfd_create("zmatrix", MFD_CLOEXEC);
  if (kept < 0) failToWrite("cannot write", "a file in memory");
  std::vector<char> piece(1 << 18);
  for (std::uintmax_t sum = 0;;) {
    const ssize_t length = read(source, piece.data(), piece.size());
    if (length < 0 && errno == EINTR) continue;
    if (length < 0) cannotRead(argument);
    if (length == 0) return kept;
    sum += static_cast<std::uintmax_t>(length);
    if (sum > limit) throw Failure{ExitCode::limit, nameOfArgument(argument) + " is too large: the limit is 1 GiB per file"};
    writeAll(kept, piece.data(), static_cast<std::size_t>(length));
  }
}

// True for a folder, and for a regular file, which is read from its start each time it is opened. Standard input must not have
// been read yet.
bool canBeOpenedAgain(const struct stat& status, int descriptor, const std::string& argument) {
  if (S_ISDIR(status.st_mode)) return true;
  return S_ISREG(status.st_mode) && (argument != "-" || lseek(descriptor, 0, SEEK_CUR) <= 0);
}

std::string keep(const std::string& argument, const std::string& path, int descriptor, std::uintmax_t limit) {
  if (descriptor >= 0) {
    const int kept = keptBytes(descriptor, argument, limit);
    if (dup2(kept, descriptor) < 0) cannotRead(argument);  // from now on the given path opens the file in memory
    close(kept);
    return path;
  }
  const int source = open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (source < 0) cannotRead(argument);
  const int kept = keptBytes(source, argument, limit);
  close(source);
  return "/proc/self/fd/" + std::to_string(kept);
}

}  // namespace

std::string reopenable(const std::string& argument, std::uintmax_t limit) {
  static std::map<std::string, std::string> paths;
  std::string path = argument == "-" ? "/dev/stdin" : argument;
  if (const auto known = paths.find(path); known != paths.end()) return known->second;
  const int descriptor = descriptorNamed(path);
  struct stat status;
  const bool isThere = (descriptor >= 0 ? fstat(descriptor, &status) : stat(path.c_str(), &status)) == 0;
  if (!isThere || canBeOpenedAgain(status, descriptor, argument)) return path;
  return paths[path] = keep(argument, path, descriptor, limit);
}

std::string nameOfArgument(const std::string& argument) {
  return argument == "-" ? "standard input" : argument;
}
