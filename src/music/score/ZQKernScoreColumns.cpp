#include "music/score/ZQKernScoreColumns.h"

#include <algorithm>

namespace zmatrix {

namespace {

constexpr size_t mostColumns = 1 << 18;  // bounds the memory of a file that consists of splits
constexpr int mostVoices = 256;

}  // namespace

void KernScoreColumns::begin(size_t numberOfColumns, const ScoreTime& onset) {
  clear();
  KernColumn column;
  column.onset = column.end = onset;
  columns_.assign(std::min(numberOfColumns, mostColumns), column);
  for (KernColumn& each : columns_) each.spine = numberOfSpines_++;
}

void KernScoreColumns::clear() {
  for (const KernColumn& column : columns_) leave(column);
  columns_.clear();
}

void KernScoreColumns::leave(const KernColumn& column) {
  if (column.isKern()) parts_.leaveColumn(column.part);
}

void KernScoreColumns::setKern(int column, bool isKern) {
  KernColumn& changed = at(column);
  if (changed.isKern() == isKern) return;
  if (isKern) {
    changed.part = parts_.add(column + 1);
    parts_.joinColumn(changed.part);
  } else {
    leave(changed);
    changed.part = -1;
  }
}

void KernScoreColumns::follow(const std::vector<std::string_view>& tokens, long long line, const ScoreTime& now) {
  exchange(tokens, line);
  next_.clear();
  next_.reserve(columns_.size());
  for (size_t i = 0; i < columns_.size(); i++) {
    const std::string_view token = i < tokens.size() ? tokens[i] : "*";
    const int place = static_cast<int>(i) + 1;
    KernColumn& column = columns_[i];
    if (token == "*-") {
      leave(column);
    } else if (token == "*v") {
      i = followJoin(tokens, i, line);
    } else if (token == "*^" && hasRoom(line, place, token)) {
      followSplit(std::move(column));
    } else if (token == "*+" && hasRoom(line, place, token)) {
      followAdd(std::move(column), now);
    } else {
      next_.push_back(std::move(column));
    }
  }
  columns_.swap(next_);
  numberVoices();
}

bool KernScoreColumns::hasRoom(long long line, int place, std::string_view token) {
  if (columns_.size() + next_.size() < mostColumns) return true;
  score_.addFinding(zq_ScoreBadPath, line, place, token);
  return false;
}

void KernScoreColumns::followSplit(KernColumn&& column) {
  column.isLoose = column.isKern();
  KernColumn twin;
  twin.onset = column.onset;
  twin.end = column.end;
  twin.part = column.part;
  twin.isDead = column.isDead;
  twin.isFresh = column.isFresh;
  twin.isLoose = column.isLoose;
  twin.lastNote = column.lastNote;
  twin.spine = numberOfSpines_++;
  if (twin.isKern()) parts_.joinColumn(twin.part);
  next_.push_back(std::move(column));
  next_.push_back(std::move(twin));
}

void KernScoreColumns::followAdd(KernColumn&& column, const ScoreTime& now) {
  next_.push_back(std::move(column));
  KernColumn added;
  added.onset = added.end = now;
  added.isFresh = true;
  added.spine = numberOfSpines_++;
  next_.push_back(std::move(added));
}

/// Joins neighbouring columns into the first of them. Returns the index of the last of them.
size_t KernScoreColumns::followJoin(const std::vector<std::string_view>& tokens, size_t first, long long line) {
  const size_t count = std::min(tokens.size(), columns_.size());
  size_t last = first;
  while (last + 1 < count && tokens[last + 1] == "*v") last++;
  KernColumn& joined = columns_[first];
  bool areOfOneKind = last > first;
  for (size_t i = first + 1; i <= last; i++) {
    areOfOneKind = areOfOneKind && columns_[i].isKern() == joined.isKern();
    join(joined, std::move(columns_[i]));
  }
  if (!areOfOneKind) score_.addFinding(zq_ScoreBadPath, line, static_cast<int>(first) + 1, "*v");
  next_.push_back(std::move(joined));
  return last;
}

void KernScoreColumns::join(KernColumn& to, KernColumn&& from) {
  leave(from);
  if (!from.isKern() || !to.isKern()) return;
  // The joined column continues at the latest end of its sub-spines.
  if (to.end < from.end) {
    to.end = from.end;
    to.onset = from.onset;
  }
  to.isDead = to.isDead || from.isDead;
  to.isFresh = to.isFresh && from.isFresh;
  to.isLoose = to.isLoose && from.isLoose;
  to.opensPhrase = to.opensPhrase || from.opensPhrase;
  to.lastNote = std::max(to.lastNote, from.lastNote);
}

/// Exchanges two spines of a record.
void KernScoreColumns::exchange(const std::vector<std::string_view>& tokens, long long line) {
  const auto end = tokens.begin() + static_cast<std::ptrdiff_t>(std::min(tokens.size(), columns_.size()));
  const auto first = std::find(tokens.begin(), end, "*x");
  if (first == end) return;
  const auto second = std::find(first + 1, end, "*x");
  if (second == end || std::find(second + 1, end, "*x") != end) {
    return score_.addFinding(zq_ScoreBadPath, line, static_cast<int>(first - tokens.begin()) + 1, "*x");
  }
  std::swap(columns_[static_cast<size_t>(first - tokens.begin())], columns_[static_cast<size_t>(second - tokens.begin())]);
}

/// Numbers the sub-spines of each part from left to right.
void KernScoreColumns::numberVoices() {
  for (const KernColumn& column : columns_) {
    if (column.isKern()) parts_.at(column.part).numberedVoices = 0;
  }
  for (KernColumn& column : columns_) {
    if (!column.isKern()) continue;
    int& voices = parts_.at(column.part).numberedVoices;
    column.voice = static_cast<unsigned char>(std::min(voices++, mostVoices - 1));
  }
}

}  // namespace zmatrix
