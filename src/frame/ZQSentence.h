// Formats that are stored in a table or passed as a parameter: the compiler checks them against the types of their values, as it
// checks a format in the call of a print function.
#pragma once

#include <cstdio>
#include <type_traits>

#include "frame/ZQDebugChannel.h"

namespace zmatrix {

/// A format for `Values`, in this order. It may use fewer values, the first ones, and may be null.
template <class... Values>
class ZQSentence {
 public:
  consteval ZQSentence(const char* format) : text_(format) {
    if (format != nullptr && !suits(format)) throw "the format doesn't suit the values";
  }
  constexpr const char* text() const { return text_; }
  constexpr bool isThere() const { return text_ != nullptr; }

 private:
  enum Kind { integer, longInteger, longLongInteger, real, string, other };

  template <class Value>
  static consteval Kind kindOf() {
    if constexpr (std::is_same_v<Value, int>) return integer;
    if constexpr (std::is_same_v<Value, long>) return longInteger;
    if constexpr (std::is_same_v<Value, long long>) return longLongInteger;
    if constexpr (std::is_same_v<Value, double>) return real;
    if constexpr (std::is_same_v<Value, const char*>) return string;
    return other;
  }
  static constexpr bool isIn(char c, const char* characters) {
    while (*characters != 0 && *characters != c) ++characters;
    return *characters != 0;
  }
  static consteval bool suits(const char* format) {
    const Kind kinds[] = {kindOf<Values>()..., other};
    size_t number = 0;
    for (const char* at = format; *at != 0; ++at) {
      if (*at != '%') continue;
      if (*++at == '%') continue;
      while (isIn(*at, "-+ #.0123456789")) ++at;
      int longs = 0;
      for (; *at == 'l'; ++at) ++longs;
      const Kind kind = isIn(*at, "dixuc") ? static_cast<Kind>(longs) : isIn(*at, "feg") ? real : *at == 's' ? string : other;
      if (longs > 2 || kind == other || number == sizeof...(Values) || kinds[number++] != kind) return false;
    }
    return true;
  }

  const char* text_;
};

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
#pragma GCC diagnostic ignored "-Wformat-security"
template <class... Values>
void dbPrintf(int level, const ZQSentence<Values...>& sentence, std::type_identity_t<Values>... values) {
  dbPrintf(level, sentence.text(), values...);
}

template <class... Values>
void printTo(FILE* stream, const ZQSentence<Values...>& sentence, std::type_identity_t<Values>... values) {
  fprintf(stream, sentence.text(), values...);
}

template <class... Values>
void printInto(char* text, size_t size, const ZQSentence<Values...>& sentence, std::type_identity_t<Values>... values) {
  snprintf(text, size, sentence.text(), values...);
}

#pragma GCC diagnostic pop

}  // namespace zmatrix
