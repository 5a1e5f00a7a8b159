// Notes of kern that are held by a tie. A tie is continued at the end of the held note, on the same pitch and in the same part,
// in any sub-spine, or else in another part: voices move between staves.
#pragma once

#include <map>
#include <vector>

#include "music/score/ZQScoreTime.h"

namespace zmatrix {

struct KernTie {
  int pitch = 0;
  ScoreTime end;  ///< the end of the notes tied so far
  int part = 0;
};

class KernScoreTies {
 public:
  /// `spine` distinguishes sub-spines; take() returns `note`.
  void hold(const KernTie& tie, int spine, long long note) { held_.emplace(tie, Held{spine, note}); }
  /// Removes and returns a held note of the part, preferably of the same sub-spine; -1 if there is none.
  long long take(const KernTie& tie, int spine);
  /// The same for all parts.
  long long takeOfAnyPart(const KernTie& tie);
  /// The indices of the notes that are still held.
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
