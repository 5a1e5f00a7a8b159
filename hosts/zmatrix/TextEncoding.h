// Converts between the bytes of texts and the items that a matrix learns. The item of a character is its byte in Windows-1252,
// for which the library's rules for sentences are made and which keeps fields narrow; characters that Windows-1252 lacks have
// their code point. The encoding of the file doesn't matter to a model, so its text can be written in any encoding.
#pragma once

#include <CLI/CLI.hpp>
#include <optional>
#include <string>
#include <vector>

enum class Encoding { utf8, utf16, utf16LittleEndian, utf16BigEndian, windows1252, latin1 };

const char* nameOf(Encoding encoding);

/// The largest item of a character.
constexpr int greatestCharacter = 0x10FFFF;

/// The item of a character, and the character of an item. Windows-1252 uses most bytes from 0x80 to 0x9F for other characters;
/// the control characters U+0080 to U+009F of these bytes get their code point plus 0xDC00. An item without a character gives
/// U+FFFD.
int itemOfCharacter(char32_t character);
char32_t characterOfItem(int item);

struct DecodedText {
  std::vector<int> items;
  Encoding encoding;
  bool isGuessed;      ///< Windows-1252 was assumed because there is no byte order mark and the bytes aren't UTF-8
  long long replaced;  ///< the number of invalid sequences, each replaced by U+FFFD
};

/// Decodes a text. Without an encoding, the byte order mark decides; without a mark it is UTF-8 if all bytes are valid UTF-8,
/// else Windows-1252. The mark is not part of the text.
DecodedText decodeText(const std::string& bytes, std::optional<Encoding> encoding);

/// Decodes a command-line argument: by the locale, else as UTF-8 if it is valid UTF-8, else as Windows-1252.
std::vector<int> itemsOfArgument(const std::string& argument);

/// True if more than one item in twenty is a control character that doesn't occur in texts, as in a program, an image or an
/// archive.
bool looksBinary(const std::vector<int>& items);

/// Encodes items as bytes, and counts the characters that the encoding lacks.
class TextEncoder {
 public:
  explicit TextEncoder(std::optional<Encoding> encoding) : encoding_(encoding.value_or(Encoding::utf8)) {}

  /// The byte order mark to write first; empty for all encodings but utf-16.
  std::string mark() const;
  /// A character that the encoding lacks becomes a question mark.
  std::string bytesOf(int item);
  std::string bytesOf(const std::vector<int>& items);
  long long lost() const { return lost_; }

 private:
  Encoding encoding_;
  long long lost_ = 0;
};

/// Adds --encoding with the help text `what`.
void addEncodingOption(CLI::App& verb, std::optional<Encoding>& encoding, const std::string& what);
