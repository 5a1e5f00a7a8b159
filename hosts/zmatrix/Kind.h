// The kind of a file, detected from its content, and the suffixes by which files of a folder are selected.
#pragma once

#include <optional>
#include <string>
#include <vector>

enum class Kind { text, midi, kern, numbers };

/// The subject of a matrix. All files that it learns are of one subject.
enum class Subject { texts, music, numbers };

const char* nameOf(Kind kind);
const char* nameOf(Subject subject);
Subject subjectOf(Kind kind);

/// A MIDI file begins with "MThd". In a kern file the first record that isn't a comment names the columns, **kern among them. In
/// a file of numbers every token is an integer. Anything else is text.
Kind kindOfContent(const std::string& path);

/// True if a file of this name in a folder is learned: it has a suffix of `kind`, or of any kind if that is null.
bool isSought(const std::string& name, std::optional<Kind> kind);

/// The kind that a suffix implies; null if it implies none, or several as .txt does.
std::optional<Kind> kindOfSuffix(const std::string& name);

/// The suffixes that isSought accepts, for a message: ".mid, .midi or .krn".
std::string soughtSuffixes(std::optional<Kind> kind);
