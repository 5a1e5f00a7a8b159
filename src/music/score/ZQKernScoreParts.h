// The parts of a kern score while it is read: a part is a kern spine with the sub-spines that split from it. Meters, keys and
// tempi are kept until the next record with a time, and get its onset.
#pragma once

#include <string_view>
#include <vector>

#include "music/score/ZQKernSigns.h"
#include "music/score/ZQScoreBuilder.h"

namespace zmatrix {

struct KernScorePart {
  int columns = 0;         ///< current number of sub-spines
  int numberedVoices = 0;  ///< used while sub-spines are numbered
  int channel = 0;
  unsigned char program = 0;
  unsigned char sound = 0;
  enum { none, byClass, byName } instrument = none;

  KernMeter meter;  ///< not yet in the score, if `hasMeter`
  long long lineOfMeter = 0;
  int fifths = 0;
  bool isMinor = false;
  bool hasMeter = false, hasKey = false;  ///< not yet in the score
  bool hasSignature = false;              ///< the part had a *k[...]
};

class KernScoreParts {
 public:
  explicit KernScoreParts(ScoreBuilder& score) : score_(score) {}

  /// Adds a part without sub-spines that begins in a column, from 1.
  int add(int column);
  KernScorePart& at(int part) { return parts_[static_cast<size_t>(part)]; }
  void joinColumn(int part) { numberInUse_ += at(part).columns++ == 0; }
  void leaveColumn(int part) { numberInUse_ -= --at(part).columns == 0; }

  /// Handles an interpretation of a part; unknown ones are ignored.
  void interpret(int part, std::string_view token, long long line, int column);
  bool hasSigns() const { return hasTempo_ || !waiting_.empty(); }
  /// Adds the pending meters, keys and tempi to the score. One that is the same in all parts in use is added for the whole score.
  void enterSigns(const ScoreTime& onset);

 private:
  void readInstrument(int part, std::string_view text);
  void readChannel(int part, std::string_view token, long long line, int column);
  void setProgram(KernScorePart& part, int program);
  void readKey(int part, std::string_view token);
  void wait(int part);
  /// Adds the pending entries of one kind, as a single entry if all parts in use agree. `agree(one, other)`: `one` has an entry
  /// and it equals that of `other`.
  template <class Agree, class Enter>
  void enter(Agree agree, Enter enterOne);

  ScoreBuilder& score_;
  std::vector<KernScorePart> parts_;
  int numberInUse_ = 0;
  std::vector<int> waiting_;  // parts with a pending meter or key
  double tempo_ = 0;
  long long lineOfTempo_ = 0;
  bool hasTempo_ = false;
};

}  // namespace zmatrix
