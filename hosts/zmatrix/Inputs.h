// Finds the files that the INPUT arguments of a verb name, and makes sure that all can be read before any is learned.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "Kind.h"

struct InputFile {
  std::string name;     ///< for messages and records
  std::string path;     ///< for opening it; differs from the name for standard input and pipes
  std::uintmax_t size;  ///< bytes
  Kind kind;
};

/// The files that are named, including standard input (-) and pipes, and the files of each folder that have the suffix of a kind,
/// ordered by name; with `recursive` those of subfolders too. `as` sets the kind of all files; without it the kind is detected
/// from the content. Throws a Failure if an argument can't be read, or if a folder has no such file.
std::vector<InputFile> findInputs(const std::vector<std::string>& arguments, bool recursive, std::optional<Kind> as);

/// The subject of all inputs. Throws a Failure if they are of several subjects.
Subject subjectOf(const std::vector<InputFile>& inputs);

/// Throws a Failure if `output` is one of the inputs.
void refuseInputAsOutput(const std::string& output, const std::vector<InputFile>& inputs);

/// Throws a Failure unless `path` is a regular file that can be opened for reading.
void requireReadable(const std::string& path);

/// All bytes of a file. Throws a Failure if it can't be read.
std::string readFile(const std::string& path);

/// True if `path` is a regular file that begins with the signature of a matrix file.
bool isMatrixFile(const std::string& path);
