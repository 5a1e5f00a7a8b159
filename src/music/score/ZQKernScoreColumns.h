// The columns of a kern record, and how spine paths split, join, exchange, add and end them. All state of a spine is in its
// column, so that an exchange or a join of neighbours keeps it.
#pragma once

#include <string_view>
#include <vector>

#include "music/score/ZQKernScoreParts.h"
#include "music/score/ZQScoreBuilder.h"

namespace zmatrix {

/// A grace note whose main note is not known yet.
struct KernGrace {
  long long note;
  int group;  ///< from 1; the notes of one token are one group
  bool opensTie;
};

struct KernColumn {
  ScoreTime onset;  ///< of the last token with a duration
  ScoreTime end;    ///< of the same token
  long long lastNote = -1;
  std::vector<KernGrace> graces;
  int part = -1;  ///< -1 for a spine that is not kern
  int spine = 0;  ///< distinguishes sub-spines
  unsigned char voice = 0;
  bool isDead = false;       ///< its time is beyond the latest representable time
  bool isFresh = false;      ///< added, and still without a token: its time is that of the record of its first token
  bool isLoose = false;      ///< split, and still without a token: the note before may be continued by the other sub-spine
  bool opensPhrase = false;  ///< the next note begins a phrase

  bool isKern() const { return part >= 0; }
};

class KernScoreColumns {
 public:
  KernScoreColumns(ScoreBuilder& score, KernScoreParts& parts) : score_(score), parts_(parts) {}

  int count() const { return static_cast<int>(columns_.size()); }
  KernColumn& at(int column) { return columns_[static_cast<size_t>(column)]; }
  const KernColumn& at(int column) const { return columns_[static_cast<size_t>(column)]; }

  /// Begins a section with this many columns, none of them kern; at most 262,144.
  void begin(size_t numberOfColumns, const ScoreTime& onset);
  /// Marks a column as kern or not.
  void setKern(int column, bool isKern);
  /// Carries out the paths of a record at the time `now`. There may be fewer `tokens` than columns.
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
