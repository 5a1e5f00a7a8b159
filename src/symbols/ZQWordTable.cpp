#include "symbols/ZQWordTable.h"

#include <algorithm>
#include <cstdint>
#include <unordered_map>

#include "frame/ZQTextCharacters.h"

namespace zmatrix {

namespace {

struct HashOfWord {
  size_t operator()(std::span<const int> letters) const {
    uint64_t hash = 0xCBF29CE484222325;
    for (const int letter : letters) hash = (hash ^ static_cast<unsigned>(letter)) * 0x100000001B3;
    return static_cast<size_t>(hash ^ (hash >> 29));
  }
};

struct SameWord {
  bool operator()(std::span<const int> a, std::span<const int> b) const {
    return std::equal(a.begin(), a.end(), b.begin(), b.end());
  }
};

}  // namespace

WordTable wordsOfText(std::span<const int> text, int mostLetters) {
  WordTable table;
  std::unordered_map<std::span<const int>, int, HashOfWord, SameWord> places;
  bool lineFeedPending = false;
  for (size_t i = 0; i < text.size();) {
    if (isWhiteCharacter(text[i])) {
      lineFeedPending = lineFeedPending || text[i] == lineEndCharacter;
      ++i;
      continue;
    }
    const size_t begin = i;
    while (i < text.size() && !isWhiteCharacter(text[i])) ++i;
    if (lineFeedPending) table.sequence.push_back(WordTable::lineFeed);
    lineFeedPending = false;
    const std::span<const int> letters = text.subspan(begin, i - begin);
    if (letters.size() > static_cast<size_t>(mostLetters)) {
      ++table.numberLeftOut;
      table.sequence.push_back(WordTable::leftOut);
      continue;
    }
    const auto [entry, isNew] = places.try_emplace(letters, static_cast<int>(table.words.size()));
    if (isNew) table.words.push_back({letters, 0});
    ++table.words[static_cast<size_t>(entry->second)].count;
    table.sequence.push_back(entry->second);
  }
  return table;
}

}  // namespace zmatrix
