#include "TextEncoding.h"

#include <langinfo.h>
#include <locale.h>

#include <algorithm>
#include <cwchar>
#include <map>

#include "OptionChecks.h"

namespace {

constexpr char32_t replacement = 0xFFFD;
constexpr int displaced = 0xDC00;  // added to the code point of a displaced control character

// The characters of the bytes 0x80 to 0x9F in Windows-1252. Five bytes have none; as in browsers they stand for the control
// character of the same number.
constexpr char32_t windowsCharacters[32] = {
    0x20AC, 0x81,   0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x8D, 0x017D, 0x8F,
    0x90,   0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x9D, 0x017E, 0x0178};

const std::map<std::string, Encoding>& encodings() {
  static const std::map<std::string, Encoding> table = {{"utf-8", Encoding::utf8},
                                                        {"utf-16", Encoding::utf16},
                                                        {"utf-16le", Encoding::utf16LittleEndian},
                                                        {"utf-16be", Encoding::utf16BigEndian},
                                                        {"windows-1252", Encoding::windows1252},
                                                        {"iso-8859-1", Encoding::latin1}};
  return table;
}

bool isDisplacedControl(char32_t character) {
  return character >= 0x80 && character < 0xA0 && windowsCharacters[character - 0x80] != character;
}

bool isSurrogate(char32_t character) {
  return character >= 0xD800 && character < 0xE000;
}

unsigned char byteAt(const std::string& bytes, std::size_t at) {
  return static_cast<unsigned char>(bytes[at]);
}

bool beginsWith(const std::string& bytes, const char* mark) {
  return bytes.rfind(mark, 0) == 0;
}

constexpr const char* markOfUtf8 = "\xEF\xBB\xBF";
constexpr const char* markOfLittleEndian = "\xFF\xFE";
constexpr const char* markOfBigEndian = "\xFE\xFF";

/// A decoded UTF-8 character, or the length of an invalid sequence.
struct Utf8Step {
  char32_t character;
  std::size_t length;
  bool isBroken;
};

// The range of the second byte excludes overlong forms, surrogates and code points above U+10FFFF.
Utf8Step readUtf8(const std::string& bytes, std::size_t at) {
  const unsigned char first = byteAt(bytes, at);
  if (first < 0x80) return {first, 1, false};
  const std::size_t length = first < 0xC2 || first > 0xF4 ? 1 : first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
  if (length == 1) return {replacement, 1, true};
  char32_t character = first & (0x7F >> length);
  for (std::size_t place = 1; place < length; ++place) {
    const unsigned char byte = at + place < bytes.size() ? byteAt(bytes, at + place) : 0;
    unsigned char lowest = 0x80, highest = 0xBF;
    if (place == 1) {
      if (first == 0xE0) lowest = 0xA0;
      if (first == 0xED) highest = 0x9F;
      if (first == 0xF0) lowest = 0x90;
      if (first == 0xF4) highest = 0x8F;
    }
    if (byte < lowest || byte > highest) return {replacement, place, true};
    character = character << 6 | (byte & 0x3F);
  }
  return {character, length, false};
}

DecodedText decodeUtf8(const std::string& bytes) {
  DecodedText text{{}, Encoding::utf8, false, 0};
  text.items.reserve(bytes.size());
  for (std::size_t at = beginsWith(bytes, markOfUtf8) ? 3 : 0; at < bytes.size();) {
    const Utf8Step step = readUtf8(bytes, at);
    text.items.push_back(itemOfCharacter(step.character));
    text.replaced += step.isBroken;
    at += step.length;
  }
  return text;
}

bool isUtf8(const std::string& bytes) {
  for (std::size_t at = 0; at < bytes.size();) {
    const Utf8Step step = readUtf8(bytes, at);
    if (step.isBroken) return false;
    at += step.length;
  }
  return true;
}

/// The UTF-16 unit at `at`; a lone last byte gives a surrogate, which decodes to U+FFFD.
char32_t unitOfUtf16(const std::string& bytes, std::size_t at, bool isBigEndian) {
  if (at + 1 >= bytes.size()) return at < bytes.size() ? 0xD800 : 0;
  const unsigned char first = byteAt(bytes, at), second = byteAt(bytes, at + 1);
  return static_cast<char32_t>(isBigEndian ? first << 8 | second : second << 8 | first);
}

DecodedText decodeUtf16(const std::string& bytes, Encoding encoding) {
  const bool hasBigMark = beginsWith(bytes, markOfBigEndian), hasLittleMark = beginsWith(bytes, markOfLittleEndian);
  const bool isBigEndian = encoding == Encoding::utf16BigEndian || (encoding == Encoding::utf16 && hasBigMark);
  DecodedText text{{}, encoding, false, 0};
  text.items.reserve(bytes.size() / 2 + 1);
  for (std::size_t at = (isBigEndian ? hasBigMark : hasLittleMark) ? 2 : 0; at < bytes.size(); at += 2) {
    char32_t character = unitOfUtf16(bytes, at, isBigEndian);
    const char32_t next = unitOfUtf16(bytes, at + 2, isBigEndian);
    if (character >= 0xD800 && character < 0xDC00 && next >= 0xDC00 && next < 0xE000) {
      character = 0x10000 + ((character - 0xD800) << 10) + (next - 0xDC00);
      at += 2;
    } else if (isSurrogate(character)) {
      character = replacement;
      ++text.replaced;
    }
    text.items.push_back(itemOfCharacter(character));
  }
  return text;
}

DecodedText decodeBytes(const std::string& bytes, Encoding encoding) {
  DecodedText text{{}, encoding, false, 0};
  text.items.reserve(bytes.size());
  for (const char byte : bytes) {
    const unsigned char value = static_cast<unsigned char>(byte);
    text.items.push_back(encoding == Encoding::latin1 ? itemOfCharacter(value) : value);
  }
  return text;
}

Encoding encodingOf(const std::string& bytes) {
  if (beginsWith(bytes, markOfBigEndian) || beginsWith(bytes, markOfLittleEndian)) return Encoding::utf16;
  return isUtf8(bytes) ? Encoding::utf8 : Encoding::windows1252;
}

void appendUnit(std::string& bytes, char32_t unit, bool isBigEndian) {
  const char high = static_cast<char>(unit >> 8 & 0xFF), low = static_cast<char>(unit & 0xFF);
  bytes += isBigEndian ? high : low;
  bytes += isBigEndian ? low : high;
}

std::string utf16Of(char32_t character, bool isBigEndian) {
  std::string bytes;
  if (character >= 0x10000) {
    appendUnit(bytes, 0xD800 + ((character - 0x10000) >> 10), isBigEndian);
    character = 0xDC00 + (character & 0x3FF);
  }
  appendUnit(bytes, character, isBigEndian);
  return bytes;
}

std::string utf8Of(char32_t character) {
  if (character < 0x80) return {static_cast<char>(character)};
  std::string bytes;
  const int following = character < 0x800 ? 1 : character < 0x10000 ? 2 : 3;
  bytes += static_cast<char>((0xF0 << (3 - following) & 0xFF) | character >> (6 * following));
  for (int place = following - 1; place >= 0; --place) bytes += static_cast<char>(0x80 | (character >> (6 * place) & 0x3F));
  return bytes;
}

/// Switches to the user's locale for its lifetime; elsewhere the command uses the "C" locale.
class TerminalLocale {
 public:
  TerminalLocale() : locale_(newlocale(LC_CTYPE_MASK, "", nullptr)) {
    if (locale_ != nullptr) before_ = uselocale(locale_);
  }
  ~TerminalLocale() {
    if (locale_ == nullptr) return;
    uselocale(before_);
    freelocale(locale_);
  }
  TerminalLocale(const TerminalLocale&) = delete;
  TerminalLocale& operator=(const TerminalLocale&) = delete;

  /// True unless the encoding of the locale is UTF-8 or ASCII, which are decoded without the locale.
  bool isOfItsOwn() const {
    if (locale_ == nullptr) return false;
    const std::string name = nl_langinfo_l(CODESET, locale_);
    return name != "UTF-8" && name != "ANSI_X3.4-1968";
  }

 private:
  locale_t locale_;
  locale_t before_ = nullptr;
};

std::optional<std::vector<int>> decodeByLocale(const std::string& bytes) {
  std::vector<int> items;
  std::mbstate_t state{};
  for (std::size_t at = 0; at < bytes.size();) {
    wchar_t character = 0;
    const std::size_t length = std::mbrtowc(&character, bytes.data() + at, bytes.size() - at, &state);
    if (length == 0 || length > bytes.size() - at) return std::nullopt;
    items.push_back(itemOfCharacter(static_cast<char32_t>(character)));
    at += length;
  }
  return items;
}

bool isStrange(int item) {
  if (item < 32) return item < 9 || (item > 13 && item != 26 && item != 27);  // allows white space, end of file (DOS) and escape
  if (item == 127 || item == static_cast<int>(replacement)) return true;
  return item < 256 ? characterOfItem(item) < 0xA0 && item > 127 : isSurrogate(static_cast<char32_t>(item));
}

}  // namespace

const char* nameOf(Encoding encoding) {
  for (const auto& [name, value] : encodings()) {
    if (value == encoding) return name.c_str();
  }
  return "";
}

int itemOfCharacter(char32_t character) {
  if (isDisplacedControl(character)) return displaced + static_cast<int>(character);
  if (character < 0x100) return static_cast<int>(character);
  const auto* const end = windowsCharacters + 32;
  const auto* const found = character > 0x2122 ? end : std::find(windowsCharacters, end, character);
  return found == end ? static_cast<int>(character) : 0x80 + static_cast<int>(found - windowsCharacters);
}

char32_t characterOfItem(int item) {
  if (item < 0 || item > greatestCharacter) return replacement;
  const auto character = static_cast<char32_t>(item);
  if (character >= 0x80 && character < 0xA0) return windowsCharacters[character - 0x80];
  if (!isSurrogate(character)) return character;
  return isDisplacedControl(character - displaced) ? character - displaced : replacement;
}

DecodedText decodeText(const std::string& bytes, std::optional<Encoding> encoding) {
  const Encoding found = encoding ? *encoding : encodingOf(bytes);
  DecodedText text = found == Encoding::utf8                                       ? decodeUtf8(bytes)
                     : found == Encoding::windows1252 || found == Encoding::latin1 ? decodeBytes(bytes, found)
                                                                                   : decodeUtf16(bytes, found);
  text.isGuessed = !encoding && found == Encoding::windows1252;
  return text;
}

std::vector<int> itemsOfArgument(const std::string& argument) {
  const TerminalLocale locale;
  if (locale.isOfItsOwn()) {
    if (const std::optional<std::vector<int>> items = decodeByLocale(argument)) return *items;
  }
  return isUtf8(argument) ? decodeUtf8(argument).items : decodeBytes(argument, Encoding::windows1252).items;
}

bool looksBinary(const std::vector<int>& items) {
  return static_cast<std::size_t>(std::count_if(items.begin(), items.end(), isStrange)) > items.size() / 20;
}

std::string TextEncoder::mark() const {
  return encoding_ == Encoding::utf16 ? markOfLittleEndian : "";
}

std::string TextEncoder::bytesOf(int item) {
  const char32_t character = characterOfItem(item);
  switch (encoding_) {
    case Encoding::utf8:
      return utf8Of(character);
    case Encoding::windows1252:
      if (item >= 0 && item < 0x100) return {static_cast<char>(item)};
      break;
    case Encoding::latin1:
      if (character < 0x100) return {static_cast<char>(character)};
      break;
    default:
      return utf16Of(character, encoding_ == Encoding::utf16BigEndian);
  }
  ++lost_;
  return "?";
}

std::string TextEncoder::bytesOf(const std::vector<int>& items) {
  std::string bytes;
  for (const int item : items) bytes += bytesOf(item);
  return bytes;
}

void addEncodingOption(CLI::App& verb, std::optional<Encoding>& encoding, const std::string& what) {
  verb.add_option("--encoding", encoding, what)->transform(oneOf(encodings()))->option_text("ENCODING")->group("Texts");
}
