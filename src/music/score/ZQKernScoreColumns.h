// The columns of a kern record, and how spine paths split, join, exchange, add and end them. A column carries all that belongs to
// its spine, so that an exchange or a join of neighbours takes nothing from it.
#pragma once

#include <string_view>
#include <vector>

#include "music/score/ZQKernScoreParts.h"
#include "music/score/ZQScoreBuilder.h"

namespace zmatrix {

/// A grace note until the note that it leads to is known.
struct KernGrace {
  long long note;
  int group;  ///< from 1: notes of one token are one
  bool opensTie;
};

struct KernColumn {
  ScoreTime onset;  ///< of the last token that took time
  ScoreTime end;    ///< of it
  long long lastNote = -1;
  std::vector<KernGrace> graces;
  int part = -1;  ///< -1: no kern spine
  int spine = 0;  ///< tells sub-spines apart
  unsigned char voice = 0;
  bool isDead = false;       ///< its time is beyond the latest
  bool isFresh = false;      ///< added, and has had no token: it begins with whatever its first one stands beside
  bool isLoose = false;      ///< split, and has had no token: what it split from may go on sounding in the other sub-spine
  bool opensPhrase = false;  ///< a phrase begins with the next note

  bool isKern() const { return part >= 0; }
};

class KernScoreColumns {
 public:
  KernScoreColumns(ScoreBuilder& score, KernScoreParts& parts) : score_(score), parts_(parts) {}

  int count() const { return static_cast<int>(columns_.size()); }
  KernColumn& at(int column) { return columns_[static_cast<size_t>(column)]; }
  const KernColumn& at(int column) const { return columns_[static_cast<size_t>(column)]; }

  /// A section of so many columns, none of them kern; at most 262,144.
  void begin(size_t numberOfColumns, const ScoreTime& onset);
  /// Makes a column kern, or not.
  void setKern(int column, bool isKern);
  /// Follows the paths of a record. `tokens` may be fewer than the columns, at `now`.
  void follow(const std::vector<std::string_view>& tokens, long long line, const ScoreTime& now);
  void clear();

 private:
  void followSplit(KernColumn&& column);
  void followAdd(KernColumn&& column, const ScoreTime& now);
  size_t followJoin(const std::vector<std::string_view>& tokens, size_t first, long long line);
  void exchange(const std::vector<std::string_view>& tokens, long long line);
  void join(KernColumn& to, KernColumn&& from);
  bool hasRoom(long long line, int place, std::string_view token);
  void leave(const KernColumn& column);
  void numberVoices();

  ScoreBuilder& score_;
  KernScoreParts& parts_;
  std::vector<KernColumn> columns_, next_;
  int numberOfSpines_ = 0;
};

}  // namespace zmatrix
