#include "music/score/ZQKernScoreParts.h"

#include <algorithm>

#include "music/midi/ZQMidiSounds.h"
#include "music/score/ZQKernInstruments.h"
#include "music/score/ZQKernScoreToken.h"

namespace zmatrix {

namespace {

constexpr int numberOfChannels = 16;
constexpr int percussionChannel = 9;

/// Parts are assigned to the MIDI channels in turn, except for the percussion channel.
int channelOfPart(int part) {
  const int channel = part % (numberOfChannels - 1);
  return channel < percussionChannel ? channel : channel + 1;
}

}  // namespace

int KernScoreParts::add(int column) {
  KernScorePart part;
  part.channel = channelOfPart(static_cast<int>(parts_.size()));
  parts_.push_back(part);
  return score_.addPart(column, part.channel);
}

void KernScoreParts::interpret(int part, std::string_view token, long long line, int column) {
  if (isKernTempo(token)) {
    double tempo = 0;
    if (!parseKernTempo(token, tempo)) {
      score_.addFinding(zq_ScoreBadTempo, line, column, token);
    } else if (lineOfTempo_ != line) {
      tempo_ = tempo;
      lineOfTempo_ = line;
      hasTempo_ = true;
    }
  } else if (isKernMeter(token)) {
    KernMeter meter;
    if (!parseKernMeter(token, meter)) return score_.addFinding(zq_ScoreBadMeter, line, column, token);
    wait(part);
    at(part).meter = meter;
    at(part).lineOfMeter = line;
    at(part).hasMeter = true;
  } else if (token.starts_with("*I")) {
    readInstrument(part, token.substr(2));
  } else if (token.starts_with("*Ch")) {
    readChannel(part, token, line, column);
  } else {
    readKey(part, token);
  }
}

/// Reads an instrument: a name, or a code or class of instruments that selects the part's program. A code has precedence over a
/// class.
void KernScoreParts::readInstrument(int part, std::string_view text) {
  KernScorePart& of = at(part);
  if (text.starts_with('"')) {
    text = text.substr(std::min(text.find_first_not_of('"'), text.size()));
    if (text.ends_with('"')) text.remove_suffix(1);
    score_.setNameOfPart(part, text);
  } else if (text.starts_with('C') && of.instrument != KernScorePart::byName) {
    const int program = programOfKernInstrumentClass(text.substr(1));
    if (program < 0) return;
    setProgram(of, program);
    of.instrument = KernScorePart::byClass;
  } else {
    const int program = programOfKernInstrument(text);
    if (program < 0) return;
    setProgram(of, program);
    of.instrument = KernScorePart::byName;
  }
}

void KernScoreParts::setProgram(KernScorePart& part, int program) {
  part.program = static_cast<unsigned char>(program);
  part.sound = static_cast<unsigned char>(getSoundIDFromGMProgramChange(part.program, nullptr));
}

/// *Ch3 assigns a MIDI channel to the part.
void KernScoreParts::readChannel(int part, std::string_view token, long long line, int column) {
  std::string_view text = token.substr(3);
  const bool hasNumber = !text.empty() && text[0] >= '0' && text[0] <= '9';
  const long long channel = scanKernNumber(text);
  if (!hasNumber || !text.empty() || channel >= numberOfChannels) {
    return score_.addFinding(zq_ScoreUnknownToken, line, column, token);
  }
  at(part).channel = static_cast<int>(channel);
  score_.setChannelOfPart(part, at(part).channel);
}

/// A key signature and its key mostly stand in two records and make one entry.
void KernScoreParts::readKey(int part, std::string_view token) {
  KernScorePart& of = at(part);
  int fifths = 0;
  bool isMinor = false;
  if (token.starts_with("*k[")) {
    wait(part);
    if (!of.hasKey) of.isMinor = false;
    of.fifths = fifthsOfKernSignature(token);
    of.hasSignature = of.hasKey = true;
  } else if (parseKernKey(token, fifths, isMinor)) {
    wait(part);
    if (!of.hasSignature) of.fifths = fifths;
    of.isMinor = isMinor;
    of.hasKey = true;
  }
}

void KernScoreParts::wait(int part) {
  if (!at(part).hasMeter && !at(part).hasKey) waiting_.push_back(part);
}

template <class Agree, class Enter>
void KernScoreParts::enter(Agree agree, Enter enterOne) {
  const KernScorePart* first = nullptr;
  int number = 0;
  bool areAlike = true;
  for (const int index : waiting_) {
    const KernScorePart& part = at(index);
    if (!agree(part, part)) continue;
    if (first == nullptr) first = &part;
    areAlike = areAlike && part.columns > 0 && agree(part, *first);
    number++;
  }
  if (first == nullptr) return;
  if (areAlike && number == numberInUse_) return enterOne(*first, -1);
  for (const int index : waiting_) {
    if (agree(at(index), at(index))) enterOne(at(index), index);
  }
}

void KernScoreParts::enterSigns(const ScoreTime& onset) {
  if (hasTempo_) score_.addTempo(onset, tempo_);
  hasTempo_ = false;
  enter([](const KernScorePart& one, const KernScorePart& other) { return one.hasMeter && one.meter == other.meter; },
        [&](const KernScorePart& part, int index) {
          score_.addMeter(onset, part.lineOfMeter, index, part.meter.numerator, part.meter.denominator);
        });
  enter([](const KernScorePart& one,
           const KernScorePart& other) { return one.hasKey && one.fifths == other.fifths && one.isMinor == other.isMinor; },
        [&](const KernScorePart& part, int index) { score_.addKey(onset, index, part.fifths, part.isMinor); });
  for (const int part : waiting_) at(part).hasMeter = at(part).hasKey = false;
  waiting_.clear();
}

}  // namespace zmatrix
