// From the INPUT arguments of a verb to the files to learn, each known to be readable before anything is learned.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "Kind.h"

struct InputFile {
  std::string name;     ///< for messages and records
  std::string path;     ///< to open it; of standard input and pipes another
  std::uintmax_t size;  ///< bytes
  Kind kind;
};

/// Takes files as they are named, standard input (-) and pipes among them, and, of each folder, the files with the suffix of a
/// kind in the order of their names, with `recursive` those of the folders below too. `as` says what all of them hold; without it
/// each file's content does. Throws a Failure if an argument can't be read, or if a folder holds no such file.
std::vector<InputFile> findInputs(const std::vector<std::string>& arguments, bool recursive, std::optional<Kind> as);

/// The one subject of all inputs. Throws a Failure if there are several.
Subject subjectOf(const std::vector<InputFile>& inputs);

/// Throws a Failure if a result that is to be written to `output` would replace one of the inputs.
void refuseInputAsOutput(const std::string& output, const std::vector<InputFile>& inputs);

/// Throws a Failure unless `path` is a regular file that can be opened for reading.
void requireReadable(const std::string& path);

/// All bytes of a file. Throws a Failure if it can't be read.
std::string readFile(const std::string& path);

/// True if `path` is a file that begins as a matrix file does.
bool isMatrixFile(const std::string& path);
