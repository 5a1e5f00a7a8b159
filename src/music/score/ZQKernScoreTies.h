// Notes of kern that a tie holds on to. A tie goes on where the held note ends, on the same pitch and in the same part, whatever
// has become of the sub-spine by then, or in another part if nothing else fits: voices go from staff to staff.
#pragma once

#include <map>
#include <vector>

#include "music/score/ZQScoreTime.h"

namespace zmatrix {

struct KernTie {
  int pitch = 0;
  ScoreTime end;  ///< of what was tied so far
  int part = 0;
};

class KernScoreTies {
 public:
  /// `spine` tells sub-spines apart; `note` is what take() gives.
  void hold(const KernTie& tie, int spine, long long note) { held_.emplace(tie, Held{spine, note}); }
  /// Ends a held note of the part, if possible one of the same sub-spine; -1 if there is none.
  long long take(const KernTie& tie, int spine);
  /// The same of any part.
  long long takeOfAnyPart(const KernTie& tie);
  /// The notes that are still held, by index.
  std::vector<long long> rest() const;

 private:
  struct Held {
    int spine;
    long long note;
  };
  struct IsBefore {
    bool operator()(const KernTie& one, const KernTie& other) const;
  };

  std::multimap<KernTie, Held, IsBefore> held_;
};

}  // namespace zmatrix
