// The events that the check and the reading of a kern file report to an observer: each broken rule with its place, each object
// taken, and each departure of the result from the score. The result does not depend on the observer.
#pragma once

#include <zmatrix/zq_types.h>

#include <string_view>

namespace zmatrix {

enum class KernRule : int;

/// A place in the file: line from 1; column from 1, or 0 for the whole line; the token, valid during the call only.
struct KernPlace {
  int line = 0;
  int column = 0;
  std::string_view token;
};

/// A difference between the notes that are learned and the notes of the score.
using KernDeparture = zq_KernDeparture;

class KernObserver {
 public:
  virtual ~KernObserver() = default;
  /// True if the reader should go on counting notes behind a timing error, without making objects.
  virtual bool wantsLostNotes() const { return false; }
  virtual void brokeRule(KernRule, const KernPlace&) {}
  /// `amount`: see zq_KernFinding.
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
