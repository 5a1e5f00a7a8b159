// The spines of a kern file by their current column. Spines split, join, begin and end; a channel belongs to its column number
// and does not move with a spine.
#pragma once

#include <vector>

#include "music/kern/ZQKernObserver.h"

namespace zmatrix {

/// The path of a column after the current record.
enum class KernPath : unsigned char { none, add, exchange, split, terminate };

class KernSpines {
 public:
  /// The limit of columns, more than any record can fill: further columns of a split are dropped, which bounds the memory.
  static constexpr int mostColumns = 16384;

  /// Begins a section with this many columns, none of them kern.
  void begin(int numberOfColumns);
  int getCount() const { return activeSpines_; }
  int getNumberOfKernSpines() const { return kernSpines_; }

  bool isKern(int column) const { return kernList_[at(column)] != 0; }
  void makeKern(int column);
  int channel(int column) const { return chanList_[at(column)]; }
  void setChannel(int column, int channel) { chanList_[at(column)] = static_cast<unsigned char>(channel); }
  void setPath(int column, KernPath path) { pathList_[at(column)] = path; }
  KernPath path(int column) const { return pathList_[at(column)]; }
  /// Quanta until the spine's next event, plus the time step.
  int& delta(int column) { return deltaList_[at(column)]; }

  /// The smallest delta of the kern spines, or `most`.
  int smallestDelta(int most) const;
  /// Subtracts time from all kern spines from a column on; a delta never falls below 0.
  void takeTimeFrom(int column, int quanta);
  /// Adds to the deltas of all kern spines.
  void addToDeltas(int quanta);
  /// Adds the length of a grace note to all columns except those with exactly that delta. Returns the largest addition to a kern
  /// spine.
  int pushByGraceNotes(bool groupetto, bool graceNote);

  // The note numbers that sound in a column, without rests.
  void addNote(int column, int noteNumber) { noteList_[at(column)].push_back(static_cast<unsigned char>(noteNumber)); }
  /// True if another spine of this column's channel sounds the same note.
  bool soundsElsewhere(int column, unsigned char noteNumber) const;
  const std::vector<unsigned char>& notes(int column) const { return noteList_[at(column)]; }
  void clearNotes(int column) { noteList_[at(column)].clear(); }

  /// Carries out the paths of all columns and clears them.
  void applyPaths(KernObserver& observer, int line);

 private:
  using Notes = std::vector<unsigned char>;

  static size_t at(int column) { return static_cast<size_t>(column); }
  struct Shift;
  void growChannels(int numberOfColumns);
  void exchange(int column, int position, KernObserver& observer);

  int activeSpines_ = 0;
  int kernSpines_ = 0;
  std::vector<unsigned char> kernList_;  // 1 for a kern spine
  std::vector<int> deltaList_;
  std::vector<KernPath> pathList_;
  std::vector<unsigned char> chanList_;  // grows to the largest number of columns in this section
  std::vector<Notes> noteList_;
};

}  // namespace zmatrix
