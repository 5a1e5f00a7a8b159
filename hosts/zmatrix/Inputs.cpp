#include "Inputs.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <memory>
#include <system_error>

#include "Failure.h"
#include "PendingFile.h"
#include "Reopenable.h"

namespace {

namespace fs = std::filesystem;

[[noreturn]] void cannotRead(const fs::path& path, const std::string& reason) {
  const std::string name = path.string();
  throw Failure{ExitCode::badInput,
                "cannot read " + name + ": " + (isDanglingLink(name) ? "it is " + descriptionOfDanglingLink(name) : reason)};
}

using Stream = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

Stream openForReading(const fs::path& path) {
  Stream file(std::fopen(path.c_str(), "rb"), std::fclose);
  if (!file) cannotRead(path, std::strerror(errno));
  return file;
}

// The library counts the bytes of a text in an int and allocates somewhat more.
constexpr std::uintmax_t mostBytes = INT_MAX / 2;

InputFile readableFile(const fs::path& name, const fs::path& path, std::optional<Kind> kind) {
  openForReading(path);
  if (isMatrixFile(path)) cannotRead(name, "it is a model file (`zmatrix generate` continues it)");
  std::error_code error;
  const std::uintmax_t size = fs::file_size(path, error);
  if (error) cannotRead(name, error.message());
  if (size > mostBytes) throw Failure{ExitCode::limit, name.string() + " is too large: the limit is 1 GiB per file"};
  return {name.string(), path.string(), size, kind ? *kind : kindOfContent(path.string())};
}

bool isSoughtFile(const fs::directory_entry& entry, std::optional<Kind> as) {
  std::error_code error;
  return isSought(entry.path().filename().string(), as) && entry.is_regular_file(error) && !error;
}

template <class Iterator>
std::vector<fs::path> filesBelow(const fs::path& folder, std::optional<Kind> as) {
  std::vector<fs::path> found;
  std::error_code error;
  for (Iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
    if (isSoughtFile(*entry, as)) found.push_back(entry->path());
  }
  if (error) cannotRead(folder, error.message());
  std::sort(found.begin(), found.end());
  return found;
}

std::vector<fs::path> filesOfFolder(const fs::path& folder, bool recursive, std::optional<Kind> as) {
  std::vector<fs::path> files =
      recursive ? filesBelow<fs::recursive_directory_iterator>(folder, as) : filesBelow<fs::directory_iterator>(folder, as);
  if (files.empty()) {
    cannotRead(folder, "no " + soughtSuffixes(as) + " file in it" +
                           (recursive ? " or its subfolders" : " (--recursive includes subfolders)"));
  }
  return files;
}

}  // namespace

std::vector<InputFile> findInputs(const std::vector<std::string>& arguments, bool recursive, std::optional<Kind> as) {
  std::vector<InputFile> inputs;
  for (const std::string& argument : arguments) {
    const fs::path name = nameOfArgument(argument), path = reopenable(argument, mostBytes);
    std::error_code error;
    const fs::file_status status = fs::status(path, error);
    if (error) cannotRead(name, error.message());
    if (fs::is_directory(status)) {
      for (const fs::path& file : filesOfFolder(path, recursive, as)) {
        inputs.push_back(readableFile(file, file, as ? as : kindOfSuffix(file.filename().string())));
      }
    } else if (fs::is_regular_file(status)) {
      inputs.push_back(readableFile(name, path, as));
    } else {
      cannotRead(name, "neither a file nor a folder");
    }
  }
  return inputs;
}

Subject subjectOf(const std::vector<InputFile>& inputs) {
  const InputFile& first = inputs.front();
  for (const InputFile& input : inputs) {
    if (subjectOf(input.kind) == subjectOf(first.kind)) continue;
    throw Failure{ExitCode::badInput, first.name + " holds " + nameOf(subjectOf(first.kind)) + " and " + input.name + " " +
                                          nameOf(subjectOf(input.kind)) +
                                          ": a model learns only one of them (--as text|midi|kern|numbers selects files)"};
  }
  return subjectOf(first.kind);
}

void refuseInputAsOutput(const std::string& output, const std::vector<InputFile>& inputs) {
  for (const InputFile& input : inputs) {
    std::error_code error;
    if (fs::equivalent(output, input.path, error)) {
      throw Failure{ExitCode::usage, output + " is an input; choose another file for the result"};
    }
  }
}

void requireReadable(const std::string& path) {
  std::error_code error;
  const fs::file_status status = fs::status(path, error);
  if (error) cannotRead(path, error.message());
  if (!fs::is_regular_file(status)) cannotRead(path, "it is not a regular file");
  openForReading(path);
}

std::string readFile(const std::string& path) {
  const Stream file = openForReading(path);
  std::string bytes;
  char piece[65536];
  std::size_t length;
  while ((length = std::fread(piece, 1, sizeof piece, file.get())) > 0) bytes.append(piece, length);
  if (std::ferror(file.get())) cannotRead(path, std::strerror(errno));
  return bytes;
}

bool isMatrixFile(const std::string& path) {
  std::error_code error;
  if (!fs::is_regular_file(path, error)) return false;
  const std::string type("zmatrix\0", 8);
  std::string start(type.size(), ' ');
  const Stream file(std::fopen(path.c_str(), "rb"), std::fclose);
  return file && std::fread(start.data(), 1, start.size(), file.get()) == start.size() && start == type;
}
