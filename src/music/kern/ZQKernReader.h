// The second pass over a kern file: a state machine that reads the records with one column per spine, keeps for each spine the
// time until its next event, and makes one track of notes, note-offs, signatures, tempi and comments.
//
// Its result for a score is part of the interface, however odd, since learned matrices depend on it. The music begins a quarter
// late until a bar offset moves it; a tie makes one note with the duration of its first token; a bar line in any column, even in
// a column of text, sets all spines to the same time; the end of a spine with a sounding note sets the time back. Observers are
// notified of all of these.
#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "music/kern/ZQKernBars.h"
#include "music/kern/ZQKernLines.h"
#include "music/kern/ZQKernObjectTrack.h"
#include "music/kern/ZQKernObserver.h"
#include "music/kern/ZQKernSpines.h"
#include "music/kern/ZQKernTokens.h"

namespace zmatrix {

class KernReader {
 public:
  /// Reads into `track`, from the first of `lines` on.
  KernReader(KernLines& lines, ZQKernObjectTrack* track, KernObserver& observer)
      : lines_(lines), track_(track), observer_(observer) {}
  /// Throws std::bad_alloc if memory runs out; the track then holds the objects read so far.
  void read();

 private:
  /// Actions required by the tokens of the current record.
  struct Flags {
    bool advance = false, barLine = false, pathChange = false, terminate = false, tandem = false, openJoin = false;
    bool graceNote = false, groupetto = false;
    std::optional<bool> holdsExclusive;  ///< computed on first use
  };

  bool getNext();
  void readSection();
  void readRecord();
  bool recordCounts() const;
  void handleColumn(int column);
  void handleInterpretation(int column, std::string_view token);
  bool holdsExclusiveBehindFirst();
  void handlePath(int column, KernPath path);
  void handleJoin(int column);
  void handleNull(int column, std::string_view token);
  void handleBarLine(int column, std::string_view token);
  void handleData(int column, std::string_view token);
  bool handleSubToken(int column, std::string_view text, bool tied, bool isLast, bool& isTimed, bool& isCleared);
  void takeTime(int column, int duration, bool& isTimed);
  void reportTie(int column, std::string_view text, const KernSubToken& note);
  void makeNote(int column, const KernSubToken& note);
  bool removeNotes(int column);
  void advanceTime();
  void terminateSpines();
  void readTandem(int column, std::string_view token);
  void applyBarOffset();

  ZQKernObject* addObject(int type, int time, int channel);
  std::string_view token(int column) const;
  KernPlace place(int column) const { return {lines_.lineNumber(), column + 1, token(column)}; }
  void pushByGraceNotes();
  void reportTokenCount();

  KernLines& lines_;
  ZQKernObjectTrack* track_;
  KernObserver& observer_;
  KernSpines spines_;
  KernBars bars_;
  std::string_view record_;               // the current record
  std::vector<std::string_view> tokens_;  // of the record
  Flags flags_;
  int numberOfRecords_ = 0;         // comments included; a line in several pieces counts once per piece
  int abstime_ = 0;                 // comments before the first record have time 0
  int timeStep_ = quarterInQuanta;  // the duration of the last record
  int firstUnsetColumn_ = 0;        // columns from here on have kept their delta since the last bar line of this record
  bool isFirstLine_ = true;         // in this section no record has taken time yet
  bool isOver_ = false;             // a timing error has ended the reading
  bool isCounting_ = false;         // after a timing error: records are read and counted, but make no objects
  ZQKernObject* lastNote_ = nullptr;
  // Reported when another record follows: at the end of a file the set-back has no effect.
  KernPlace setBack_;
  int quantaSetBack_ = 0;
};

}  // namespace zmatrix
