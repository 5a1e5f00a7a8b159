#include "Kind.h"

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <memory>

#include "Inputs.h"
#include "NumberFile.h"

namespace {

struct KindEntry {
  Kind kind;
  const char* name;
  Subject subject;
  std::vector<std::string> suffixes;
};

const std::vector<KindEntry>& kinds() {
  static const std::vector<KindEntry> table = {{Kind::text, "text", Subject::texts, {".txt"}},
                                               {Kind::midi, "midi", Subject::music, {".mid", ".midi"}},
                                               {Kind::kern, "kern", Subject::music, {".krn"}},
                                               {Kind::numbers, "numbers", Subject::numbers, {".txt"}}};
  return table;
}

const KindEntry& entryOf(Kind kind) {
  return kinds()[static_cast<std::size_t>(kind)];
}

// The suffixes of a kind, or of all, each once.
std::vector<std::string> suffixesFor(std::optional<Kind> kind) {
  std::vector<std::string> suffixes;
  for (const KindEntry& entry : kinds()) {
    if (kind && *kind != entry.kind) continue;
    for (const std::string& suffix : entry.suffixes) {
      if (std::find(suffixes.begin(), suffixes.end(), suffix) == suffixes.end()) suffixes.push_back(suffix);
    }
  }
  return suffixes;
}

std::string beginningOf(const std::string& path) {
  std::string bytes(65536, '\0');
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(path.c_str(), "rb"), std::fclose);
  bytes.resize(file ? std::fread(bytes.data(), 1, bytes.size(), file.get()) : 0);
  return bytes;
}

bool namesKern(const std::string& record) {
  for (std::size_t column = 0; column != std::string::npos; column = record.find('\t', column)) {
    if (record[column] == '\t') ++column;
    if (record.compare(column, 6, "**kern") == 0) return true;
  }
  return false;
}

bool isKern(const std::string& bytes) {
  const std::size_t mark = bytes.rfind("\xEF\xBB\xBF", 0) == 0 ? 3 : 0;
  for (std::size_t begin = mark; begin < bytes.size();) {
    const std::size_t end = std::min(bytes.find_first_of("\r\n", begin), bytes.size());
    const std::string record = bytes.substr(begin, end - begin);
    if (record.rfind("**", 0) == 0) return namesKern(record);
    if (!record.empty() && record[0] != '!') return false;
    begin = end + 1;
  }
  return false;
}

bool isNumbers(const std::string& path, const std::string& beginning) {
  // the last token of `beginning` may be cut off
  const std::size_t whole = beginning.find_last_of(" \t\r\n,;");
  if (whole == std::string::npos ? beginning.empty() : !holdsOnlyIntegers(beginning.substr(0, whole + 1))) return false;
  return holdsIntegers(readFile(path));
}

}  // namespace

const char* nameOf(Kind kind) {
  return entryOf(kind).name;
}

const char* nameOf(Subject subject) {
  static const char* const names[] = {"text", "music", "numbers"};
  return names[static_cast<int>(subject)];
}

Subject subjectOf(Kind kind) {
  return entryOf(kind).subject;
}

Kind kindOfContent(const std::string& path) {
  const std::string beginning = beginningOf(path);
  if (beginning.rfind("MThd", 0) == 0) return Kind::midi;
  if (isKern(beginning)) return Kind::kern;
  return isNumbers(path, beginning) ? Kind::numbers : Kind::text;
}

bool isSought(const std::string& name, std::optional<Kind> kind) {
  std::string lowered = name;
  for (char& character : lowered) character = static_cast<char>(std::tolower(static_cast<unsigned char>(character)));
  for (const std::string& suffix : suffixesFor(kind)) {
    if (lowered.size() > suffix.size() && lowered.compare(lowered.size() - suffix.size(), suffix.size(), suffix) == 0)
      return true;
  }
  return false;
}

std::optional<Kind> kindOfSuffix(const std::string& name) {
  std::optional<Kind> kind;
  for (const KindEntry& entry : kinds()) {
    if (!isSought(name, entry.kind)) continue;
    if (kind) return std::nullopt;
    kind = entry.kind;
  }
  return kind;
}

std::string soughtSuffixes(std::optional<Kind> kind) {
  const std::vector<std::string> suffixes = suffixesFor(kind);
  std::string list;
  for (const std::string& suffix : suffixes) {
    list += (list.empty() ? "" : suffix == suffixes.back() ? " or " : ", ") + suffix;
  }
  return list;
}
