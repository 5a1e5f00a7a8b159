// Reads the elements of a matrix file into the slots of an empty block, in slot order, and passes each to the check of links.
// Shared by all tiers; the elements are of the reading tier, whatever the tier of the file.
#pragma once

#include <algorithm>
#include <cstdio>

#include "frame/ZQProgress.h"
#include "store/ZQLinkCheck.h"
#include "store/ZQMatrixBase.h"
#include "store/ZQMatrixElementFile.h"

namespace zmatrix {

template <class Tier>
struct ZQMatrixElementReader {
  ZQMatrixElementReader(typename Tier::Matrix& matrix, zmatrix::ZQFileReader& file) : matrix_(matrix), file_(file) {}

  /// Reads the elements of a file whose info records have this type, up to the stack in its header.
  void read(int infoType, int stackOfFile) {
    stack_ = stackOfFile;
    ZQMatrixFileHeader& header = *matrix_.getMatrixFileHeader();
    header._setMaximalStack(std::min(stack_, matrix_.numberOfSlots_ - 1));
    count = zmatrix::negativeOf(header.getMaxNumberOfMatrices());
    if constexpr (reportsProgress) {
      snprintf(globalProgressData.progressText, sizeof globalProgressData.progressText, "reading matrix from disk: %d items...",
               stack_);
    }
    const int end = header.getMaximalStack() + 1;
    const long long mostElements = file_.getBytesLeft() / static_cast<long long>(zmatrix::sizeOfElementInFile(infoType));
    const bool isDense = end > 0 && end <= 2 * mostElements + slotsInPiece;
    isOutOfMemory = !links.begin(header.getMaxNumberOfMatrices(), end - 1, matrix_.largestLegalIndex());
    if (isDense) {
      matrix_.pages_.begin(matrix_.memory_.getBegin(), matrix_.memory_.getWholeSize());
    } else {
      matrix_.endOfProvidedSlots_ = matrix_.numberOfSlots_;
    }
    switch (zmatrix::sizeOfElementInFile(infoType)) {
      case zmatrix::sizeOfElementInFile(0):
        readAll<zmatrix::sizeOfElementInFile(0)>();
        break;
      case zmatrix::sizeOfElementInFile(1):
        readAll<zmatrix::sizeOfElementInFile(1)>();
        break;
      default:
        readAll<zmatrix::sizeOfElementInFile(2)>();
    }
    matrix_.freeSlots_.fillWord(wordOfOccupied_, occupied_);
  }

  long long position = 0;  // the slot of the next element
  int count = 0;           // elements read, minus the number of roots
  int numberOutside = 0;   // elements beyond the end of the block
  bool isOutOfMemory = false;
  zmatrix::ZQLinkCheck links;

 private:
  static constexpr bool reportsProgress = Tier::infoType >= 1;
  static constexpr long long slotsInPiece = 32768;  // whose pages are provided at once

  template <size_t size>
  void readAll() {
    const zmatrix::ProgressOfLoop progress;
    const long long end = stack_ + 1LL;
    while (position < end && !file_.isAtEnd() && !isOutOfMemory) {
      const long long endOfPiece = std::min(position + slotsInPiece, end);
      while (position < endOfPiece && !file_.isAtEnd() && !isOutOfMemory) {
        if constexpr (reportsProgress) progress.reach(static_cast<int>(position), stack_);
        const int result = readMatrixElementFromDisk<size>();
        if (result >= 0) {
          ++position;
          zmatrix::addTo(count, 1);
        } else {
          position = std::min(position - result, end);
        }
      }
    }
  }

  /// 1 for an element, 0 at the end of the file, the negative length of a run of empty slots.
  template <size_t size>
  int readMatrixElementFromDisk() {
    const char* bytes = file_.peek(size);
    if (bytes == nullptr) return readLastBytes<size>();
    const int writeCount = zmatrix::getLittleEndian<int>(bytes);
    if (writeCount < 0) {
      file_.advance(sizeof(int));
      return writeCount;
    }
    file_.advance(size);
    return storeElement<size>(bytes);
  }

  /// The same if less than an element is left: a run, or an element whose missing fields become 0.
  template <size_t size>
  int readLastBytes() {
    const char* first = file_.peek(sizeof(int));
    const int writeCount = first != nullptr ? zmatrix::getLittleEndian<int>(first) : 0;
    if (writeCount < 0) {
      file_.advance(sizeof(int));
      return writeCount;
    }
    char bytes[size];
    file_.read(bytes, size);
    return first != nullptr ? storeElement<size>(bytes) : 0;
  }

  template <size_t size>
  int storeElement(const char* bytes) {
    if (position >= matrix_.numberOfSlots_) {
      ++numberOutside;
      return 1;
    }
    if (matrix_.elementAt(position) != nullptr) Tier::reportOccupiedSlot(static_cast<int>(position));
    const int slot = static_cast<int>(position);
    auto* element = matrix_.template placeElementAt<typename Tier::Element>(slot);
    zmatrix::getElement<size>(bytes, *element);
    links.add(slot, *element);
    noteOccupied(slot);
    return 1;
  }

  void noteOccupied(int slot) {
    const size_t word = static_cast<size_t>(slot) >> 6;
    if (word != wordOfOccupied_) {
      matrix_.freeSlots_.fillWord(wordOfOccupied_, occupied_);
      wordOfOccupied_ = word;
      occupied_ = 0;
    }
    occupied_ |= uint64_t{1} << (slot & 63);
  }

  typename Tier::Matrix& matrix_;
  zmatrix::ZQFileReader& file_;
  size_t wordOfOccupied_ = 0;  // the word of 64 slots being filled
  uint64_t occupied_ = 0;      // its filled slots, a bit each, not yet in the index of free slots
  int stack_ = 0;
};

}  // namespace zmatrix
