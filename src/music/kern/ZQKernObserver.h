// What the check and the reading of a kern file tell to who listens: each broken rule with its place, what was taken, and where
// the reading departs from the score. A reading is the same whether anybody listens or not.
#pragma once

#include <string_view>

namespace zmatrix {

enum class KernRule : int;

/// Where something stands: line from 1; column from 1, or 0 for the whole line; the token, which lives as long as the call.
struct KernPlace {
  int line = 0;
  int column = 0;
  std::string_view token;
};

/// In what the notes that are learned differ from the notes of the score.
enum class KernDeparture : int {
  noPitch,            ///< a token without a pitch takes time and gives no note
  noDuration,         ///< a note or rest without a duration takes no time
  cutDuration,        ///< a duration that is no whole number of quanta was cut, or the part behind a % was not read
  timeSetBack,        ///< the end or join of a spine set the time back
  resynchronised,     ///< a bar line found a spine that was not at its end
  missingToken,       ///< the record has fewer tokens than there are spines: the missing ones count as empty
  surplusToken,       ///< the record has more tokens than there are spines: the others are passed over
  timingError,        ///< the spines disagree on the time: the reading ended here
  lostNote,           ///< a note behind a timing error
  longLine,           ///< a line that came in pieces, of which each counts as a record
  uncheckedLastLine,  ///< the last line has no line feed, so that the check doesn't see it
  tooManySpines       ///< no room for a further spine
};

class KernObserver {
 public:
  virtual ~KernObserver() = default;
  /// The reading is to go on counting behind a timing error, without making objects.
  virtual bool wantsLostNotes() const { return false; }
  virtual void brokeRule(KernRule, const KernPlace&) {}
  /// `amount` in quanta: of a cut what was lost if that is known, of a step back its length, of a bar line the distance.
  virtual void departed(KernDeparture, const KernPlace&, int /*amount*/) {}

  virtual void beganSection(int /*spines*/) {}
  virtual void sawKernSpine() {}
  virtual void tookNote(int /*channel*/) {}
  virtual void tookRest() {}
  virtual void continuedTie() {}
  virtual void tookGraceNote() {}
  virtual void splitSpine() {}
  virtual void addedSpine() {}
  virtual void exchangedSpines() {}
  virtual void joinedSpine() {}
  virtual void endedSpine() {}
  virtual void sawMeter(int /*numerator*/, int /*denominator*/, const KernPlace&) {}
  virtual void sawBarLine() {}
  virtual void finished(int /*barOffset*/) {}
};

}  // namespace zmatrix
