// The exact reading of Humdrum **kern: times are fractions, as in the published representation.
#pragma once

#include <string_view>
#include <vector>

#include "music/score/ZQKernScoreColumns.h"
#include "music/score/ZQKernScoreParts.h"
#include "music/score/ZQKernScoreTies.h"
#include "music/score/ZQKernScoreToken.h"
#include "music/score/ZQScoreBuilder.h"

namespace zmatrix {

/// A record has the time at which the tokens before it in its spines end. A record without a note or a duration in any kern spine
/// has no time; its meters, keys, tempi and bar lines get the time of the next record that has one.
class KernScoreReader {
 public:
  KernScoreReader(ScoreBuilder& score, int graceQuanta);
  void read(std::string_view text);

 private:
  /// A token of the current record other than a null token.
  struct Cell {
    int column;
    std::string_view text;
    size_t firstNote, endOfNotes;  ///< indices into notes_
    ScoreTime duration;            ///< the spine advances by it; it is also that of notes without a duration of their own
    bool hasDuration;
    bool isGrace;  ///< all notes of the token are grace notes
  };

  /// A note of the current record with its time.
  struct PlacedNote {
    const Cell* cell;
    const KernScoreToken* token;
    ScoreTime onset, duration;
    int group;  ///< number of its group of grace notes in the spine
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
  void reportOddities(const KernScoreToken& note, int column, std::string_view token);
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
  ScoreTime now_;                         // time of the last record that had one
  ScoreTime latest_;                      // the latest end of all tokens
  std::vector<long long> barLines_;       // lines of the bar lines that get the time of the next record
  std::vector<std::string_view> tokens_;  // of an interpretation record
  std::vector<Cell> cells_;
  std::vector<KernScoreToken> notes_;  // the notes of cells_
  std::vector<PlacedNote> orphans_;    // tied notes without a held note in their part
};

/// Reads a **kern file. `graceQuanta`: 0, or the duration of a grace note in quanta of 3072 to the quarter, at most 49152. A
/// grace note begins this much before its main note, each further one of a group the same step earlier; the step is smaller where
/// the token before is too short. All other notes keep their onset and duration. Result: the score, for deleteScore(), also for a
/// missing file or one that isn't kern (see `state`). Null if memory runs out.
[[nodiscard]] zq_Score* createScoreFromKernFile(const char* path, int graceQuanta);
/// The same for bytes in memory; null means no bytes.
[[nodiscard]] zq_Score* createScoreFromKernData(const char* bytes, long long numberOfBytes, int graceQuanta);

}  // namespace zmatrix
