// The reader's tandem interpretations: tempo, meter and key.
#include "frame/ZQDebugChannel.h"
#include "music/kern/ZQKernReader.h"
#include "music/kern/ZQKernTokens.h"

namespace zmatrix {

namespace {

/// The number of accidentals of a key signature as a scan for "%c#%c#..." counts them: at most seven, and one more than there are
/// sharps, since the character that ends the scan is counted. So flats give 1, as does a signature without accidentals.
int countOfSharps(std::string_view text) {
  constexpr int mostSharps = 7;
  int count = 0;
  while (count < mostSharps && !text.empty()) {
    count++;
    if (text.size() < 2 || text[1] != '#') break;
    text.remove_prefix(2);
  }
  return count;
}

}  // namespace

void KernReader::readTandem(int column, std::string_view text) {
  if (text.size() < 3 || text[0] != '*') return;
  std::string_view rest = text;
  float tempo = 0, otherTempo = 0;
  int numerator = 0, denominator = 0;
  const auto skip = [&rest](std::string_view prefix) {
    if (!rest.starts_with(prefix)) return false;
    rest.remove_prefix(prefix.size());
    return true;
  };
  if (skip("*MM") && scanFloat(rest, tempo)) {
    if (skip("-") && scanFloat(rest, otherTempo)) tempo = (tempo + otherTempo) / 2;
    if (ZQKernObject* object = addObject(ZQKernObjectTempo, abstime_, 0)) object->setTempo(tempo);
    return;
  }
  rest = text;
  if (skip("*M") && scanInteger(rest, numerator) && skip("/") && scanInteger(rest, denominator)) {
    bars_.sawSignature(numerator, denominator);
    observer_.sawMeter(numerator, denominator, place(column));
    // A time signature object always gets the time 0.
    if (ZQKernObject* object = addObject(ZQKernObjectTimeSignature, 0, 0))
      object->setTimeSignature(bars_.getNumerator(), bars_.getDenominator());
    if (bars_.getNumberOfSignatures() > 1)
      dbPrintf(0, "reading KERN file: more than one time signature found (%d)\n", bars_.getNumberOfSignatures());
    return;
  }
  rest = text;
  if (!skip("*k[") || rest.empty()) return;
  if (ZQKernObject* object = addObject(ZQKernObjectKeySignature, abstime_, 0)) object->setKeySignature(countOfSharps(rest), 0);
}

}  // namespace zmatrix
