#include "music/text/ZQTextFeed.h"

namespace zmatrix {

namespace {

constexpr char announcement[] = "update with--> ";
constexpr size_t mostShownCharacters = 1024;

}  // namespace

void showTextPhrase(std::span<const int> phrase) {
  const int device = ZQDebugChannel::globalDebugOutputDevice;
  const std::span<const int> shown = phrase.first(std::min(phrase.size(), mostShownCharacters));
  if (device == 1 || device == 3) {
    printf("%s", announcement);
    for (int value : shown) printfANSI("%c", static_cast<unsigned>(value));
    printf("\n");
  }
  FILE* debugFile = ZQDebugChannel::fpMatrixErr;
  if ((device == 2 || device == 3) && debugFile != nullptr) {
    fputs(announcement, debugFile);
    for (int value : shown) fputc(value & 0xFF, debugFile);
    fputc('\n', debugFile);
  }
}

}  // namespace zmatrix
