// What the check and the reading of a kern file tell to who listens: each broken rule with its place, what was taken, and where
// the reading departs from the score. A reading is the same whether anybody listens or not.
#pragma once

#include <zmatrix/zq_types.h>

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
using KernDeparture = zq_KernDeparture;

class KernObserver {
 public:
  virtual ~KernObserver() = default;
  /// The reading is to go on counting behind a timing error, without making objects.
  virtual bool wantsLostNotes() const { return false; }
  virtual void brokeRule(KernRule, const KernPlace&) {}
  /// `amount` as zq_KernFinding has it.
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
