// The spines of a kern reading by the column that they stand in now. Columns split, join, come and go; the channel stays with the
// column number and is not carried along.
#pragma once

#include <vector>

#include "music/kern/ZQKernObserver.h"

namespace zmatrix {

/// What the next record does to a column.
enum class KernPath : unsigned char { none, add, exchange, split, terminate };

class KernSpines {
 public:
  /// More columns than any record can fill; what is split off beyond them is dropped, so that no file can ask for all memory.
  static constexpr int mostColumns = 16384;

  /// Sets up a section of so many columns, none of them kern.
  void begin(int numberOfColumns);
  int getCount() const { return activeSpines; }
  int getNumberOfKernSpines() const { return kernSpines; }

  bool isKern(int column) const { return kernList[at(column)] != 0; }
  void makeKern(int column);
  int channel(int column) const { return chanList[at(column)]; }
  void setChannel(int column, int channel) { chanList[at(column)] = static_cast<unsigned char>(channel); }
  void setPath(int column, KernPath path) { pathList[at(column)] = path; }
  KernPath path(int column) const { return pathList[at(column)]; }
  /// Quanta until the spine's next event, plus the time step.
  int& delta(int column) { return deltaList[at(column)]; }

  /// The smallest delta of the kern spines, or `most`.
  int smallestDelta(int most) const;
  /// Takes time from all kern spines from a column on, but for no more than they have.
  void takeTimeFrom(int column, int quanta);
  /// Adds to all kern spines.
  void addToDeltas(int quanta);
  /// Pushes all columns on by the length of a grace note, but for those that stand at it. The largest push of a kern spine.
  int pushByGraceNotes(bool groupetto, bool graceNote);

  // The note numbers that sound in a column. A rest is none.
  void addNote(int column, int noteNumber) { noteList[at(column)].push_back(static_cast<unsigned char>(noteNumber)); }
  /// True if another kern spine of this column's channel sounds the same note.
  bool soundsElsewhere(int column, unsigned char noteNumber) const;
  const std::vector<unsigned char>& notes(int column) const { return noteList[at(column)]; }
  void clearNotes(int column) { noteList[at(column)].clear(); }

  /// Carries out the paths and clears them.
  void applyPaths(KernObserver& observer, int line);

 private:
  using Notes = std::vector<unsigned char>;

  static size_t at(int column) { return static_cast<size_t>(column); }
  struct Shift;
  void growChannels(int numberOfColumns);
  void exchange(int column, int position, KernObserver& observer);

  int activeSpines = 0;
  int kernSpines = 0;
  std::vector<unsigned char> kernList;  // 1 for a kern spine
  std::vector<int> deltaList;
  std::vector<KernPath> pathList;
  std::vector<unsigned char> chanList;  // as long as there were columns in this section
  std::vector<Notes> noteList;
};

}  // namespace zmatrix
