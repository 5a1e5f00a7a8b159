// Characters as files and terminals spell them, and as items, which are what a matrix learns. An item is the byte that a
// character has in Windows-1252, where the rules for sentences are at home and fields stay narrow; of every other character it is
// the code point. So an item tells its character by itself, and a model can be written in any encoding.
#pragma once

#include <CLI/CLI.hpp>
#include <optional>
#include <string>
#include <vector>

enum class Encoding { utf8, utf16, utf16LittleEndian, utf16BigEndian, windows1252, latin1 };

const char* nameOf(Encoding encoding);

/// The greatest item that a character has.
constexpr int greatestCharacter = 0x10FFFF;

/// The item of a character, and back. The control characters from U+0080 on whose bytes Windows-1252 gives to other characters
/// have items that no character has: 0xDC00 more. An item that stands for no character is U+FFFD.
int itemOfCharacter(char32_t character);
char32_t characterOfItem(int item);

struct DecodedText {
  std::vector<int> items;
  Encoding encoding;
  bool isGuessed;      ///< nothing in the bytes tells the encoding: they are no UTF-8, and any bytes are Windows-1252
  long long replaced;  ///< places that the encoding has no character for, each now U+FFFD
};

/// Without an encoding a byte order mark tells it; without that it is UTF-8 if all of it is, else Windows-1252. The mark is no
/// part of the text.
DecodedText decodeText(const std::string& bytes, std::optional<Encoding> encoding);

/// A text from the command line, in the terminal's encoding.
std::vector<int> itemsOfArgument(const std::string& argument);

/// True for items of which more than one in twenty is a control character that texts don't have: a program, an image, an archive.
bool looksBinary(const std::vector<int>& items);

/// Turns items into bytes, one after the other.
class TextEncoder {
 public:
  explicit TextEncoder(std::optional<Encoding> encoding) : encoding_(encoding.value_or(Encoding::utf8)) {}

  /// What stands before the first character: the byte order mark of utf-16, which says nothing of its byte order elsewhere.
  std::string mark() const;
  /// A character that the encoding lacks becomes a question mark.
  std::string bytesOf(int item);
  std::string bytesOf(const std::vector<int>& items);
  long long lost() const { return lost_; }

 private:
  Encoding encoding_;
  long long lost_ = 0;
};

/// Adds --encoding, with what it is for.
void addEncodingOption(CLI::App& verb, std::optional<Encoding>& encoding, const std::string& what);
