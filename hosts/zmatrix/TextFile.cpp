#include "TextFile.h"

#include <algorithm>

#include "Failure.h"

DecodedText readText(const InputFile& input, std::optional<Encoding> encoding, bool isForced) {
  DecodedText text = decodeText(readFile(input.path), encoding);
  if (isForced || !looksBinary(text.items)) return text;
  throw Failure{ExitCode::badInput, input.name + " is not a text: it has too many control characters (" +
                                        (encoding ? "" : "--encoding sets another encoding, for example utf-16le; ") +
                                        "--force learns it anyway)"};
}

bool isBlank(const std::vector<int>& items) {
  return std::all_of(items.begin(), items.end(), [](int item) { return item <= ' ' || item == 0xA0; });
}
