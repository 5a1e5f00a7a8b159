// What a file holds, told by its first bytes, and of what files a folder is searched for.
#pragma once

#include <optional>
#include <string>
#include <vector>

enum class Kind { text, midi, kern, numbers };

/// What one matrix learns: files of one subject, never of several.
enum class Subject { texts, music, numbers };

const char* nameOf(Kind kind);
const char* nameOf(Subject subject);
Subject subjectOf(Kind kind);

/// MIDI begins with its signature; in kern the first record that is no comment names its columns, **kern among them; numbers are
/// a file whose every token is an integer; all else is text. Reads no more of the file than it needs.
Kind kindOfContent(const std::string& path);

/// True if a folder's file of this name is learned: as one of `kind`, without one as one of any kind.
bool isSought(const std::string& name, std::optional<Kind> kind);

/// The kind of a folder's file, if its name tells: .txt may be text or numbers.
std::optional<Kind> kindOfSuffix(const std::string& name);

/// The suffixes that isSought goes by, as a list for a sentence: ".mid, .midi or .krn".
std::string soughtSuffixes(std::optional<Kind> kind);
