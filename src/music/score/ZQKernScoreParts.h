// The parts of a kern score while it is read: a part is a kern spine with what splits from it. Meters, keys and tempi wait here
// until the next token that takes time or stands at a time, so that they get the onset of what they stand before.
#pragma once

#include <string_view>
#include <vector>

#include "music/score/ZQKernSigns.h"
#include "music/score/ZQScoreBuilder.h"

namespace zmatrix {

struct KernScorePart {
  int columns = 0;         ///< sub-spines that there are now
  int numberedVoices = 0;  ///< while sub-spines are counted
  int channel = 0;
  unsigned char program = 0;
  unsigned char sound = 0;
  enum { none, byClass, byName } instrument = none;

  KernMeter meter;  ///< what waits, if `hasMeter`
  long long lineOfMeter = 0;
  int fifths = 0;
  bool isMinor = false;
  bool hasMeter = false, hasKey = false;  ///< what waits
  bool hasSignature = false;              ///< the part had a *k[...]
};

class KernScoreParts {
 public:
  explicit KernScoreParts(ScoreBuilder& score) : score_(score) {}

  /// A new part without columns that begins in a column, from 1.
  int add(int column);
  KernScorePart& at(int part) { return parts_[static_cast<size_t>(part)]; }
  void joinColumn(int part) { numberInUse_ += at(part).columns++ == 0; }
  void leaveColumn(int part) { numberInUse_ -= --at(part).columns == 0; }

  /// Reads an interpretation that stands for a part. It may be any.
  void interpret(int part, std::string_view token, long long line, int column);
  bool hasSigns() const { return hasTempo_ || !waiting_.empty(); }
  /// Enters what waits into the score. What all parts in use say alike is for the whole score.
  void enterSigns(const ScoreTime& onset);

 private:
  void readInstrument(int part, std::string_view text);
  void readChannel(int part, std::string_view token, long long line, int column);
  void setProgram(KernScorePart& part, int program);
  void readKey(int part, std::string_view token);
  void wait(int part);
  /// Enters what parts say of one kind, once if all parts in use say the same. `says(one, other)`: one says what the other does.
  template <class Says, class Enter>
  void enter(Says says, Enter enterOne);

  ScoreBuilder& score_;
  std::vector<KernScorePart> parts_;
  int numberInUse_ = 0;
  std::vector<int> waiting_;  // parts with a meter or key that waits
  double tempo_ = 0;
  long long lineOfTempo_ = 0;
  bool hasTempo_ = false;
};

}  // namespace zmatrix
