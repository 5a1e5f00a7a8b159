// A simple alternative to the library: a Markov chain of one fixed order, as in chapter 3 of The Practice of Programming
// (Kernighan and Pike, 1999). A hash map leads from the last words to all words that followed them, one entry per occurrence, so
// that a random entry is drawn by frequency. A word is a number; in texts read character by character it is the character.
#pragma once

#include <cctype>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace bench {

/// Numbers the distinct words of texts, from 1 on.
class Vocabulary {
 public:
  int numberOf(std::string_view word) {
    return numbers_.try_emplace(std::string(word), static_cast<int>(numbers_.size()) + 1).first->second;
  }
  /// The words of a text, separated by white space.
  std::vector<int> wordsOf(std::string_view text) {
    const auto isWhite = [&](size_t i) { return isspace(static_cast<unsigned char>(text[i])) != 0; };
    std::vector<int> words;
    for (size_t begin = 0, end = 0; begin < text.size(); begin = end + 1) {
      for (end = begin; end < text.size() && !isWhite(end);) end++;
      if (end > begin) words.push_back(numberOf(text.substr(begin, end - begin)));
    }
    return words;
  }
  size_t size() const { return numbers_.size(); }

 private:
  std::unordered_map<std::string, int> numbers_;
};

class WordChain {
 public:
  /// The order is the number of words that determine the next one.
  explicit WordChain(size_t order) : begin_(order, endOfSentence), context_(begin_) {}

  void learn(std::span<const int> sentence) {
    std::u32string context = begin_;
    for (int word : sentence) {
      followers_[context].push_back(static_cast<char32_t>(word));
      shift(context, static_cast<char32_t>(word));
    }
    followers_[context].push_back(endOfSentence);
  }

  /// The next word; after the end of a sentence the first word of another. 0 if nothing was learned.
  template <class Random>
  int next(Random& random) {
    for (int tries = 0; tries < 2; tries++) {
      const auto found = followers_.find(context_);
      if (found == followers_.end()) return 0;
      const char32_t word = found->second[random() % found->second.size()];
      if (word != endOfSentence) {
        shift(context_, word);
        return static_cast<int>(word);
      }
      context_ = begin_;
    }
    return 0;
  }
  size_t getNumberOfContexts() const { return followers_.size(); }

 private:
  static constexpr char32_t endOfSentence = 0;

  static void shift(std::u32string& context, char32_t word) {
    context.erase(0, 1);
    context.push_back(word);
  }

  std::unordered_map<std::u32string, std::vector<char32_t>> followers_;
  std::u32string begin_;
  std::u32string context_;
};

}  // namespace bench
