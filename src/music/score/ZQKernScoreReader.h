// The exact reading of Humdrum **kern: times are fractions, as the published representation counts them.
#pragma once

#include <string_view>
#include <vector>

#include "music/score/ZQKernScoreColumns.h"
#include "music/score/ZQKernScoreParts.h"
#include "music/score/ZQKernScoreTies.h"
#include "music/score/ZQKernScoreToken.h"
#include "music/score/ZQScoreBuilder.h"

namespace zmatrix {

/// A record stands at one time: that at which the last tokens of its spines are over. Records in which no kern spine has a token
/// that takes time, or a note, have none; what they say waits for the next one that has.
class KernScoreReader {
 public:
  KernScoreReader(ScoreBuilder& score, int graceQuanta);
  void read(std::string_view text);

 private:
  /// A token of the present record that is more than a null token.
  struct Cell {
    int column;
    std::string_view text;
    size_t firstNote, endOfNotes;  ///< in notes_
    ScoreTime duration;            ///< that the spine takes; notes without one of their own have it too
    bool hasDuration;
    bool isGrace;  ///< all its notes are grace notes
  };

  /// A note of the present record with its time.
  struct PlacedNote {
    const Cell* cell;
    const KernScoreToken* token;
    ScoreTime onset, duration;
    int group;  ///< of grace notes of its spine
  };

  void readLine(std::string_view line);

  void readInterpretations(std::string_view line);
  void beginSection();
  void endSection(bool isClosed);
  void readExclusive(int column, std::string_view token);
  void readPaths();

  void readData(std::string_view line);
  void readToken(int column, std::string_view token);
  void readChord(int column, std::string_view token);
  void tellOddities(const KernScoreToken& note, int column, std::string_view token);
  void placeRecord();
  ScoreTime timeOfRecord() const;
  void enterWaiting(const ScoreTime& onset);
  void placeCell(const Cell& cell);
  void placeNotes(const Cell& cell, const ScoreTime& onset);
  void placeNote(const PlacedNote& placed);
  void placeOrphans();
  void enterNote(const PlacedNote& placed, long long heldNote);
  long long addNote(const PlacedNote& placed);
  void prolong(long long heldNote, const PlacedNote& placed);
  void settleGraces(KernColumn& column, const ScoreTime& onset);
  void closePhrase(const KernColumn& column);
  ScoreTime settled(const ScoreTimeResult& result, int column);
  void find(zq_ScoreFindingKind kind, int column, std::string_view token = {});
  void checkNumberOfTokens(int numberOfTokens);

  ScoreBuilder& score_;
  KernScoreParts parts_;
  KernScoreColumns columns_;
  KernScoreTies ties_;
  ScoreTime graceDuration_;
  bool hasGraceDuration_;

  long long line_ = 0;
  bool sawKern_ = false;
  ScoreTime now_;                         // of the last record with a time
  ScoreTime latest_;                      // end of all that there was
  std::vector<long long> barLines_;       // lines of those that wait for the next record with a time
  std::vector<std::string_view> tokens_;  // of an interpretation record
  std::vector<Cell> cells_;
  std::vector<KernScoreToken> notes_;  // of the cells
  std::vector<PlacedNote> orphans_;    // notes that go on and that their part doesn't hold
};

/// Reads a **kern file. `graceQuanta`: 0, or the duration of a grace note in quanta of 3072 to the quarter, at most 49152. It
/// begins so much before its main note, or each of a group a step before the next; the step is smaller where the token before
/// is too short. All other notes keep their onset and duration.
/// Result: the score, for deleteScore(); also for a file that isn't there or isn't kern (`state`). Null: out of memory.
zq_Score* createScoreFromKernFile(const char* path, int graceQuanta);
/// The same of bytes in memory; null bytes are none.
zq_Score* createScoreFromKernData(const char* bytes, long long numberOfBytes, int graceQuanta);

}  // namespace zmatrix
