#include "music/kern/ZQKernSpines.h"

#include <algorithm>
#include <cstring>

#include "music/kern/ZQKernTokens.h"
#include "music/midi/MIDIFILE.h"

namespace zmatrix {

namespace {

constexpr int numberOfChannels = 16;

}  // namespace

void KernSpines::begin(int numberOfColumns) {
  activeSpines_ = numberOfColumns;
  kernSpines_ = 0;
  kernList_.assign(at(numberOfColumns), 0);
  deltaList_.assign(at(numberOfColumns), quarterInQuanta);
  pathList_.assign(at(numberOfColumns), KernPath::none);
  noteList_.assign(at(numberOfColumns), Notes());
  chanList_.clear();
  growChannels(numberOfColumns);
}

void KernSpines::growChannels(int numberOfColumns) {
  while (static_cast<int>(chanList_.size()) < numberOfColumns)
    chanList_.push_back(static_cast<unsigned char>(chanList_.size() % numberOfChannels));
}

void KernSpines::makeKern(int column) {
  if (!isKern(column)) kernSpines_++;
  kernList_[at(column)] = 1;
}

// These two loops run over all columns for each record; they are written so that compilers can vectorise them.

int KernSpines::smallestDelta(int most) const {
  const unsigned char* kern = kernList_.data();
  const int* delta = deltaList_.data();
  const int count = activeSpines_;
  int smallest = most;
  for (int i = 0; i < count; i++) {
    const int anyones = delta[i];
    const int own = kern[i] != 0 ? anyones : most;
    smallest = own < smallest ? own : smallest;
  }
  return smallest;
}

void KernSpines::takeTimeFrom(int column, int quanta) {
  const unsigned char* kern = kernList_.data();
  int* delta = deltaList_.data();
  const int count = activeSpines_;
  for (int i = column; i < count; i++) {
    const int before = delta[i];
    const int rest = wrappingDifference(before, quanta);
    const int left = rest > 0 ? rest : 0;
    delta[i] = kern[i] != 0 ? left : before;
  }
}

void KernSpines::addToDeltas(int quanta) {
  for (int i = 0; i < activeSpines_; i++)
    if (isKern(i)) deltaList_[at(i)] = wrappingSum(deltaList_[at(i)], quanta);
}

int KernSpines::pushByGraceNotes(bool groupetto, bool graceNote) {
  // A groupetto lasts 128 quanta, but it delays other columns by three times that.
  constexpr int quantaOfGroupettoPush = 384;
  int largestPush = 0;
  for (int i = 0; i < activeSpines_; i++) {
    int& delta = deltaList_[at(i)];
    int push = 0;
    if (groupetto && delta != quantaOfGroupettoPush) {
      push = quantaOfGroupettoPush;
    } else if (graceNote && delta != quantaOfGraceNote) {
      push = quantaOfGraceNote;
    }
    delta = wrappingSum(delta, push);
    if (isKern(i)) largestPush = std::max(largestPush, push);
  }
  return largestPush;
}

bool KernSpines::soundsElsewhere(int column, unsigned char noteNumber) const {
  const unsigned char* channels = chanList_.data();
  const unsigned char channel = channels[column];
  for (const unsigned char* end = channels + activeSpines_; channels < end; channels++) {
    channels = static_cast<const unsigned char*>(std::memchr(channels, channel, static_cast<size_t>(end - channels)));
    if (channels == nullptr) return false;
    const auto other = channels - chanList_.data();
    if (other == column) continue;
    const Notes& notes = noteList_[static_cast<size_t>(other)];
    if (!notes.empty() && std::memchr(notes.data(), noteNumber, notes.size()) != nullptr) return true;
  }
  return false;
}

/// The columns after all paths were carried out, built from left to right.
struct KernSpines::Shift {
  std::vector<unsigned char> kernList;
  std::vector<int> deltaList;
  std::vector<Notes> noteList;

  int count() const { return static_cast<int>(kernList.size()); }
  void append(unsigned char isKern, int delta, Notes&& notes) {
    kernList.push_back(isKern);
    deltaList.push_back(delta);
    noteList.push_back(std::move(notes));
  }
};

void KernSpines::applyPaths(KernObserver& observer, int line) {
  Shift shift;
  int active = activeSpines_;
  for (int i = 0; i < activeSpines_; i++) {
    const KernPath path = pathList_[at(i)];
    if (path == KernPath::terminate) {
      if (isKern(i)) kernSpines_--;
      active--;
      continue;
    }
    if (path == KernPath::exchange) exchange(i, shift.count(), observer);
    const unsigned char isKernSpine = kernList_[at(i)];
    const int delta = deltaList_[at(i)];
    shift.append(isKernSpine, delta, std::move(noteList_[at(i)]));
    if (path != KernPath::add && path != KernPath::split) continue;
    if (active >= mostColumns) {
      observer.departed(zq_KernTooManySpines, {line, i + 1, {}}, 0);
      continue;
    }
    active++;
    if (path == KernPath::split) {
      shift.append(isKernSpine, delta, Notes());
      kernSpines_ += isKernSpine;
      observer.splitSpine();
    } else {
      shift.append(0, isKernSpine != 0 ? delta : 0, Notes());
      observer.addedSpine();
    }
    growChannels(active);
  }
  kernList_.swap(shift.kernList);
  deltaList_.swap(shift.deltaList);
  noteList_.swap(shift.noteList);
  pathList_.assign(at(active), KernPath::none);
  activeSpines_ = active;
}

/// Swaps a column, now at `position`, with the next column that is to be exchanged, including their channels.
void KernSpines::exchange(int column, int position, KernObserver& observer) {
  const auto next = std::find(pathList_.begin() + column + 1, pathList_.end(), KernPath::exchange);
  if (next == pathList_.end()) return;
  const int other = static_cast<int>(next - pathList_.begin());
  std::swap(kernList_[at(column)], kernList_[at(other)]);
  std::swap(deltaList_[at(column)], deltaList_[at(other)]);
  noteList_[at(column)].swap(noteList_[at(other)]);
  std::swap(chanList_[at(position)], chanList_[at(position + other - column)]);
  observer.exchangedSpines();
}

}  // namespace zmatrix
