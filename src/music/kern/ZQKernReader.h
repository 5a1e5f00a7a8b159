// The second pass over a kern file: a machine that walks the records with a column a spine, keeps for each spine how much time is
// left until its next event, and makes one track of notes, note-offs, signatures, tempi and comments from them.
//
// What it makes of a score is part of the interface, odd as some of it is: learned matrices depend on it. The music begins a
// quarter late until a bar offset moves it; a tie makes one note that keeps the duration of its first token; a bar line in any
// column, a column of text included, makes all spines agree; the end of a sounding spine sets the time back. Observers are told
// of all that.
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
  /// Reads from the lines' first one into the track.
  KernReader(KernLines& lines, ZQKernObjectTrack* track, KernObserver& observer)
      : lines_(lines), track_(track), observer_(observer) {}
  /// Throws std::bad_alloc if memory runs out; the track then holds what was read up to there.
  void read();

 private:
  /// What the tokens of the present record ask for.
  struct Flags {
    bool advance = false, barLine = false, pathChange = false, terminate = false, tandem = false, openJoin = false;
    bool graceNote = false, groupetto = false;
    std::optional<bool> holdsExclusive;  ///< found out when it is asked for
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
  void tellTie(int column, std::string_view text, const KernSubToken& note);
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
  void tellOddities();

  KernLines& lines_;
  ZQKernObjectTrack* track_;
  KernObserver& observer_;
  KernSpines spines_;
  KernBars bars_;
  std::string_view record_;               // the present record
  std::vector<std::string_view> tokens_;  // of the record
  Flags flags_;
  int numberOfRecords_ = 0;         // comments included; a line that came in pieces counts for each
  int abstime_ = 0;                 // comments before the first record stand at 0
  int timeStep_ = quarterInQuanta;  // the time that the last record took
  int firstUnsetColumn_ = 0;        // columns from here on have not changed their delta since a bar line of this record
  bool isFirstLine_ = true;         // of the section: no record has taken time yet
  bool isOver_ = false;             // a timing error has ended the read
  bool isCounting_ = false;         // behind a timing error: records are followed, but make nothing
  ZQKernObject* lastNote_ = nullptr;
  // Told when a record follows: at the end of a file it changes nothing.
  KernPlace setBack_;
  int quantaSetBack_ = 0;
};

}  // namespace zmatrix
