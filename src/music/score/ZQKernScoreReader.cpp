#include "music/score/ZQKernScoreReader.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <memory>
#include <new>

#include "file/ZQFileStream.h"
#include "frame/ZQOwnedFile.h"

namespace zmatrix {

namespace {

constexpr int quantaOfWholeNote = 12288;
constexpr int longestGrace = 4 * quantaOfWholeNote;

void splitAtTabs(std::string_view line, std::vector<std::string_view>& tokens) {
  tokens.clear();
  size_t begin = 0;
  for (size_t tab = line.find('\t'); tab != std::string_view::npos; tab = line.find('\t', begin)) {
    tokens.push_back(line.substr(begin, tab - begin));
    begin = tab + 1;
  }
  tokens.push_back(line.substr(begin));
}

bool isExclusive(std::string_view token) {
  return token.starts_with("**");
}

bool isPath(std::string_view token) {
  return token.size() == 2 && token[0] == '*' && std::string_view("^v-+x").find(token[1]) != std::string_view::npos;
}

}  // namespace

KernScoreReader::KernScoreReader(ScoreBuilder& score, int graceQuanta)
    : score_(score),
      parts_(score),
      columns_(score, parts_),
      graceDuration_{std::clamp(graceQuanta, 0, longestGrace), quantaOfWholeNote},
      hasGraceDuration_(graceQuanta > 0) {
}

void KernScoreReader::read(std::string_view text) {
  if (text.starts_with("\xEF\xBB\xBF")) text.remove_prefix(3);
  while (!text.empty()) {
    const size_t size = std::min(text.find('\n'), text.size());
    std::string_view line = text.substr(0, size);
    text.remove_prefix(std::min(size + 1, text.size()));
    if (line.ends_with('\r')) line.remove_suffix(1);
    line_++;
    readLine(line);
  }
  const bool isClosed = columns_.count() == 0;
  endSection(isClosed);
  enterWaiting(latest_);
  for (const long long index : ties_.rest()) {
    const zq_ScoreNote& note = score_.noteAt(index);
    score_.addFinding(zq_ScoreTieWithoutEnd, note.place, note.column);
  }
  score_.score().state = !sawKern_ ? zq_ScoreOtherFormat : isClosed ? zq_ScoreRead : zq_ScoreCutShort;
}

void KernScoreReader::readLine(std::string_view line) {
  if (line.starts_with('!')) return;
  if (line.starts_with('*')) {
    readInterpretations(line);
  } else if (columns_.count() > 0) {
    readData(line);
  } else if (sawKern_ && !line.empty()) {
    find(zq_ScoreUnknownToken, 1, line.substr(0, line.find('\t')));
  }
}

void KernScoreReader::find(zq_ScoreFindingKind kind, int column, std::string_view token) {
  score_.addFinding(kind, line_, column, token);
}

void KernScoreReader::checkNumberOfTokens(int numberOfTokens) {
  if (numberOfTokens < columns_.count()) find(zq_ScoreMissingTokens, numberOfTokens + 1);
  if (numberOfTokens > columns_.count()) find(zq_ScoreSurplusTokens, columns_.count() + 1);
}

// --- interpretations

void KernScoreReader::readInterpretations(std::string_view line) {
  splitAtTabs(line, tokens_);
  const bool areExclusive = std::all_of(tokens_.begin(), tokens_.end(), isExclusive);
  const int numberOfTokens = static_cast<int>(std::min<size_t>(tokens_.size(), 1 << 30));
  if (columns_.count() == 0) {
    if (std::none_of(tokens_.begin(), tokens_.end(), isExclusive)) return;
    beginSection();
  } else if (areExclusive && numberOfTokens != columns_.count()) {
    endSection(false);
    beginSection();
  }
  checkNumberOfTokens(numberOfTokens);
  bool hasPath = false;
  for (int i = 0; i < std::min(columns_.count(), numberOfTokens); i++) {
    const std::string_view token = tokens_[static_cast<size_t>(i)];
    if (token == "*") continue;
    if (isExclusive(token)) {
      readExclusive(i, token);
    } else if (isPath(token)) {
      hasPath = true;
    } else if (columns_.at(i).isKern()) {
      if (!token.starts_with('*')) find(zq_ScoreUnknownToken, i + 1, token);
      parts_.interpret(columns_.at(i).part, token, line_, i + 1);
    }
  }
  if (hasPath) readPaths();
}

void KernScoreReader::beginSection() {
  now_ = latest_;
  columns_.begin(tokens_.size(), now_);
}

void KernScoreReader::endSection(bool isClosed) {
  for (int i = 0; i < columns_.count(); i++) {
    settleGraces(columns_.at(i), columns_.at(i).end);
    if (!isClosed && columns_.at(i).isKern()) find(zq_ScoreOpenSpine, i + 1);
  }
  columns_.clear();
}

void KernScoreReader::readExclusive(int column, std::string_view token) {
  const bool isKern = token == "**kern";
  if (!isKern) settleGraces(columns_.at(column), columns_.at(column).end);
  columns_.setKern(column, isKern);
  sawKern_ = sawKern_ || isKern;
}

void KernScoreReader::readPaths() {
  // The paths of a record without most of its tokens are ignored.
  constexpr size_t mostColumnsPerToken = 4;
  if (tokens_.size() * mostColumnsPerToken < static_cast<size_t>(columns_.count())) return find(zq_ScoreBadPath, 1, tokens_[0]);
  for (int i = 0; i < columns_.count(); i++) settleGraces(columns_.at(i), columns_.at(i).end);
  columns_.follow(tokens_, line_, now_);
}

// --- data

void KernScoreReader::readData(std::string_view line) {
  cells_.clear();
  notes_.clear();
  const char* next = line.data();
  const char* const end = next + line.size();
  int column = 0;
  bool isLast = line.empty();
  for (; !isLast && column < columns_.count(); column++) {
    const void* const tab = next == end ? nullptr : std::memchr(next, '\t', static_cast<size_t>(end - next));
    const char* const endOfToken = tab != nullptr ? static_cast<const char*>(tab) : end;
    isLast = tab == nullptr;
    if (columns_.at(column).isKern()) readToken(column, {next, static_cast<size_t>(endOfToken - next)});
    next = endOfToken + (isLast ? 0 : 1);
  }
  checkNumberOfTokens(isLast ? column : column + 1);
  if (!cells_.empty()) placeRecord();
}

void KernScoreReader::readToken(int column, std::string_view token) {
  if (token == "." || columns_.at(column).isDead) return;
  if (token.starts_with('=')) {
    if (barLines_.empty() || barLines_.back() != line_) barLines_.push_back(line_);  // one for all spines
  } else if (!token.empty()) {
    readChord(column, token);
  } else {
    find(zq_ScoreUnknownToken, column + 1, token);
  }
}

void KernScoreReader::readChord(int column, std::string_view token) {
  Cell cell = {column, token, notes_.size(), 0, {}, false, true};
  while (!token.empty()) {
    const size_t size = std::min(token.find(' '), token.size());
    if (size > 0) {
      const std::string_view text = token.substr(0, size);
      const KernScoreToken note = parseKernScoreToken(text);
      reportOddities(note, column, text);
      if (note.kind != KernScoreKind::unreadable) {
        notes_.push_back(note);
        cell.isGrace = cell.isGrace && note.isGrace;
        if (note.hasDuration && !note.isGrace && !cell.hasDuration) {
          cell.duration = note.duration;
          cell.hasDuration = true;
        }
      }
    }
    token.remove_prefix(std::min(size + 1, token.size()));
  }
  cell.endOfNotes = notes_.size();
  if (cell.endOfNotes > cell.firstNote) cells_.push_back(cell);
}

void KernScoreReader::reportOddities(const KernScoreToken& note, int column, std::string_view token) {
  if (note.kind == KernScoreKind::note && !note.isRounded && !note.isOutOfRange && !note.isMovedByOctaves) return;
  if (note.kind == KernScoreKind::unreadable) find(zq_ScoreUnknownToken, column + 1, token);
  if (note.kind == KernScoreKind::unpitched) find(zq_ScoreUnpitched, column + 1, token);
  if (note.isMovedByOctaves) find(zq_ScorePitchOutOfRange, column + 1, token);
  if (note.isRounded) find(zq_ScoreTimeRounded, column + 1, token);
  if (!note.isOutOfRange) return;
  find(zq_ScoreTimeOutOfRange, column + 1, token);
  columns_.at(column).isDead = true;
}

// --- the time of a record

void KernScoreReader::placeRecord() {
  const bool hasTime = std::any_of(cells_.begin(), cells_.end(), [](const Cell& cell) { return !cell.isGrace; });
  if (hasTime) {
    now_ = timeOfRecord();
    enterWaiting(now_);
  }
  for (const Cell& cell : cells_) {
    if (cell.isGrace) {
      placeNotes(cell, columns_.at(cell.column).end);
    } else {
      placeCell(cell);
    }
  }
  if (!orphans_.empty()) placeOrphans();
}

/// The latest end of the spines that have a token in this record. The ends differ only in a faulty file; the latest avoids
/// overlapping notes within a spine. Spines that were just split or added count only if there are no others. A record of grace
/// notes has the time of the record before; its notes are placed with their main note.
ScoreTime KernScoreReader::timeOfRecord() const {
  ScoreTime time = now_, otherTime = now_;
  bool isTold = false;
  for (const Cell& cell : cells_) {
    if (cell.isGrace) continue;
    const KernColumn& column = columns_.at(cell.column);
    if (column.isLoose || column.isFresh) {
      if (otherTime < column.end) otherTime = column.end;
    } else {
      if (time < column.end) time = column.end;
      isTold = true;
    }
  }
  return isTold ? time : otherTime;
}

void KernScoreReader::enterWaiting(const ScoreTime& onset) {
  if (parts_.hasSigns()) parts_.enterSigns(onset);
  for (const long long line : barLines_) score_.addBarLine(onset, line);
  barLines_.clear();
}

ScoreTime KernScoreReader::settled(const ScoreTimeResult& result, int column) {
  if (result.isRounded) find(zq_ScoreTimeRounded, column + 1);
  if (result.isOutOfRange && !columns_.at(column).isDead) {
    find(zq_ScoreTimeOutOfRange, column + 1);
    columns_.at(column).isDead = true;
  }
  return result.time;
}

void KernScoreReader::placeCell(const Cell& cell) {
  KernColumn& column = columns_.at(cell.column);
  const bool mayOverlap = column.isFresh || (column.isLoose && now_ < column.end);
  if (!mayOverlap && column.end != now_) find(zq_ScoreOutOfTime, cell.column + 1, cell.text);
  column.isFresh = column.isLoose = false;
  if (!column.graces.empty()) settleGraces(column, now_);
  column.onset = now_;
  column.end = std::max(now_, settled(sumOf(now_, cell.duration), cell.column));  // rounding may move it back
  if (latest_ < column.end) latest_ = column.end;
  placeNotes(cell, now_);
}

// --- entry points

namespace {

zq_Score* createScore(std::string_view text, int graceQuanta, zq_ScoreState stateIfWhole) {
  ScoreBuilder score(zq_ScoreKern);
  KernScoreReader(score, graceQuanta).read(text);
  if (stateIfWhole != zq_ScoreRead && score.score().state == zq_ScoreRead) score.score().state = stateIfWhole;
  return score.finish();
}

/// False if reading fails before the end of the file.
bool readAll(FILE* file, std::vector<char>& bytes) {
  constexpr size_t firstSize = 1 << 16;
  size_t size = 0;
  for (size_t count = 1; count > 0; size += count) {
    if (size == bytes.size()) bytes.resize(std::max(firstSize, size * 2));
    count = fread(bytes.data() + size, 1, bytes.size() - size, file);
  }
  bytes.resize(size);
  return ferror(file) == 0;
}

}  // namespace

zq_Score* createScoreFromKernFile(const char* path, int graceQuanta) {
  try {
    const OwnedFile file(openRegularFile(path));
    if (file == nullptr) {
      ScoreBuilder score(zq_ScoreKern);
      score.score().state = zq_ScoreNotFound;
      return score.finish();
    }
    std::vector<char> bytes;
    const bool isWhole = readAll(file.get(), bytes);
    return createScore({bytes.data(), bytes.size()}, graceQuanta, isWhole ? zq_ScoreRead : zq_ScoreCutShort);
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
}

zq_Score* createScoreFromKernData(const char* bytes, long long numberOfBytes, int graceQuanta) {
  if (bytes == nullptr || numberOfBytes < 0) numberOfBytes = 0;
  try {
    return createScore({bytes, static_cast<size_t>(numberOfBytes)}, graceQuanta, zq_ScoreRead);
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
}

}  // namespace zmatrix
