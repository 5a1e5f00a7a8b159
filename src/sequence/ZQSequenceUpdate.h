// Learning, shared by the tiers that learn: writes every sub-sequence of up to the phrase limit as a phrase, shortest first.
//
// The outer loop runs over lengths. For each start it keeps the front: position and record name of the last element of the phrase
// that is one item shorter. The next phrase is one item down from there. Moves change positions, so a front is valid only as long
// as its slot holds its record; otherwise, or if the shorter phrase was left out, the walk begins at the root. A phrase is a
// slice of the preprocessed sequence and needs no allocation, unless the caller asks for copies.
#pragma once

#include <cmath>
#include <cstring>

#include "frame/ZQProgress.h"
#include "frame/ZQSentence.h"
#include "sequence/ZQDescentPrefetch.h"
#include "sequence/ZQLearnedPhrases.h"
#include "sequence/ZQStopProbability.h"
#include "store/ZQStoreWrite.h"

namespace zmatrix {

template <class Tier>
struct ZQSequenceUpdate {
  using Matrix = typename Tier::Matrix;
  using Element = typename Tier::Element;
  using Info = typename Tier::Info;
  using Write = ZQStoreWrite<Tier>;

  /// `symbolMarkers` may be null; else it has one entry per item, which the tier reads.
  ZQSequenceUpdate(Matrix& matrix, const int* preProcessed, int numberOfIntegers, int dimension, const int* symbolMarkers)
      : matrix_(matrix),
        info_(*matrix.getMatrixInfo()),
        sequence_(preProcessed),
        length_(numberOfIntegers),
        c_(dimension),
        markers_(symbolMarkers),
        root_(matrix.getCurrentMatrixID()),
        leavesOutDetermined_(info_.getIncludeOverdeterminedRules() == 0),
        usesStart_(info_.getUseStartOfSequence() == 1),
        usesEnd_(info_.getUseEndOfSequence() == 1) {}

  /// 1 learned, -1 a write failed, -2 memory has run out. `phrases` collects the phrases if the caller asks for them.
  int run(int maxPhraseLength, zmatrix::ZQLearnedPhrases& phrases) {
    const int numberOfItems = length_ / c_;
    const int longest = maxPhraseLength < numberOfItems ? maxPhraseLength : numberOfItems;
    const int end = longest > 0 ? longest * c_ : 0;
    if (!phrases.provide(numberOfItems, longest) || !provideFronts(numberOfItems)) return -2;
    dbPrintf(6, "begin updateMatrixWithSequence\n");
    snprintf(globalProgressData.progressText, sizeof globalProgressData.progressText,
             "updateMatrixWithCombinedSequence with %d items...", end);
    for (int known = 0; known < end; known += c_) {
      matrixProgressDisplay(known, end);
      if (!learnPhrasesOf(known, phrases)) return -1;
    }
    matrixProgressDisplay(end, end);
    return 1;
  }

  long long getNumberOfProcessedVectors() const { return numberOfProcessedVectors_; }
  int getNumberOfOverwrites() const { return numberOfOverwrites_; }

 private:
  using Front = zmatrix::ZQFront;
  static constexpr int mostElementsInCache = 131072;  // up to this number, prefetching costs more than it saves

  // The part of a phrase that exists.
  struct Place {
    int position = -1;    // of the last element that exists
    int numberKnown = 0;  // integers of the phrase up to that element
    bool isWritten = false;
    bool isMissing = false;  // the next element is known to be missing
  };

  bool provideFronts(int numberOfItems) {
    fronts_.reset(new (std::nothrow) Front[static_cast<size_t>(numberOfItems > 0 ? numberOfItems : 1)]);
    if (fronts_ == nullptr) {
      dbPrintf(0, "updateMatrixWithCombinedSeq: Cannot alloc indexVectors!\n");
      return false;
    }
    for (int item = 0; item < numberOfItems; ++item) fronts_[item] = {root_, matrix_.nameOfRecordAt(root_), Front::unknownBegin};
    return true;
  }

  bool isValid(const Front& front) const { return front.position >= 0 && matrix_.nameOfRecordAt(front.position) == front.record; }

  // Learns all phrases that are one item longer than those of the preceding pass, which have `known` integers.
  bool learnPhrasesOf(int known, zmatrix::ZQLearnedPhrases& phrases) {
    const int phraseLength = known + c_;
    firstOfRun_ = numberOfProcessedVectors_;
    // An incomplete last item counts as a start.
    const int numberOfStarts = (length_ - known + c_ - 1) / c_;
    const unsigned layout = matrix_.getLayoutVersion();
    const bool isSettled = layout == layoutOfFronts_;
    layoutOfFronts_ = layout;
    zmatrix::ZQDescentPrefetch ahead(matrix_, fronts_.get(), numberOfStarts, sequence_ + known, c_, isSettled);
    const bool isPlain = isPlainPass(known, phrases);
    const bool looksAhead = info_.getNumberOfMatrixElements() > mostElementsInCache;
    if (looksAhead) ahead.begin();
    for (int item = 0; item < numberOfStarts; ++item) {
      if (looksAhead) ahead.lookAhead(item);
      if (isPlain && countKnown(item, known, isSettled)) continue;
      const long long number = firstOfRun_ + item;
      const Plain plain = isPlain ? addPlain(item, known) : Plain::notHandled;
      if (plain == Plain::learned) continue;
      if (plain == Plain::failed) reportAbortion(number);
      if (!phrases.add(sequence_ + item * c_, phraseLength)) return false;
      if (plain == Plain::failed || !learnPhrase(item, known, number, phrases)) {
        numberOfProcessedVectors_ = number;
        return false;
      }
    }
    firstOfPreviousRun_ = firstOfRun_;
    numberOfProcessedVectors_ = firstOfRun_ + (length_ - known) / c_;
    return true;
  }

  // True if the phrases of a pass only need to be counted or added: no messages, no copies, below all limits.
  bool isPlainPass(int known, const zmatrix::ZQLearnedPhrases& phrases) const {
    return !phrases.areWanted() && !ZQDebugChannel::shows(8) && !info_.getMemIsReadOnly() &&
           known + c_ < info_.getMaxDimOfMatrix();
  }

  // The child of a valid front, or -1. If nothing has moved since the preceding pass, the front's record need not be read.
  int childOfFront(const Front& front, int coordinate, bool isSettled) const {
    if (isSettled && front.fieldBegin != Front::unknownBegin && matrix_.getLayoutVersion() == layoutOfFronts_) {
      return matrix_.template childIn<Element>(static_cast<long long>(front.fieldBegin) + coordinate, front.position);
    }
    auto* element = matrix_.template elementNamed<Element>(front.position, front.record);
    return element != nullptr ? matrix_.childOf(front.position, *element, coordinate) : -1;
  }

  // Does what learnPhrase does, in a plain pass, for an existing phrase below a valid front. False, with nothing changed,
  // otherwise.
  bool countKnown(int item, int known, bool isSettled) {
    Front& front = fronts_[item];
    const int* coordinates = sequence_ + static_cast<long long>(item) * c_ + known;
    int position = childOfFront(front, coordinates[0], isSettled);
    if (position < 0) return false;
    auto* element = matrix_.template recordInSlot<Element>(position);
    for (int i = 1; i < c_; ++i) {
      position = matrix_.childOf(position, *element, coordinates[i]);
      if (position < 0) return false;
      element = matrix_.template recordInSlot<Element>(position);
    }
    const bool isWritten = element->getOffsetToElementInNextDimension() == 0 || element->getWriteCount() > 0;
    if (leavesOutDetermined_ && !isWritten) return false;
    if (isWritten) ++numberOfOverwrites_;
    for (int i = 0; i < c_; ++i) Write::countStep(info_, known + i, coordinates[i]);
    Write::countWrite(matrix_, info_, *element, known + c_, flagsOf(item, known));
    front = Front::at(position, *element);
    return true;
  }

  enum class Plain { notHandled, learned, failed };

  // The same for a new phrase that may be added without further tests. Most phrases of a new text take this path, few of a known
  // text: it is not inlined, to keep the path of the latter short.
  [[gnu::noinline]] Plain addPlain(int item, int known) {
    Front& front = fronts_[item];
    if (leavesOutDetermined_ || !isValid(front)) return Plain::notHandled;
    const int* coordinates = sequence_ + static_cast<long long>(item) * c_ + known;
    int position = front.position;
    for (int i = 0; i < c_; ++i) {
      const int child = matrix_.childAt(position, coordinates[i]);
      if (child >= 0) {
        position = child;
        Write::countStep(info_, known + i, coordinates[i]);
      } else if (!Write::stepToNew(matrix_, info_, position, known + i, coordinates[i])) {
        return Plain::failed;
      }
    }
    auto* element = matrix_.template recordInSlot<Element>(position);
    Write::countWrite(matrix_, info_, *element, known + c_, flagsOf(item, known));
    front = Front::at(position, *element);
    return Plain::learned;
  }

  typename Tier::WriteFlags flagsOf(int item, int known) const {
    typename Tier::WriteFlags flags{};
    flags.startFlag = item == 0 && known == 0 && usesStart_;
    flags.endFlag = usesEnd_ && item * c_ >= length_ - known - c_;
    if (markers_ != nullptr) Tier::markPhrase(flags, markers_ + item, known / c_ + 1);
    return flags;
  }

  static void reportAbortion(long long number) {
    dbPrintf(0, "updateMatrixWithCombinedSequence: testSequence %d aborted prematurely\n", static_cast<int>(number));
  }

  bool learnPhrase(int item, int known, long long number, zmatrix::ZQLearnedPhrases& phrases) {
    const int start = item * c_;
    const int* phrase = sequence_ + start;
    const int phraseLength = known + c_;
    const bool canBeLeftOut = leavesOutDetermined_ && known >= 2 * c_;
    Front& front = fronts_[item];
    const bool followsFront = isValid(front);
    Place place = followsFront ? findFrom(front.position, phrase, known) : findFromRoot(phrase, phraseLength);
    if (place.isWritten) {
      ++numberOfOverwrites_;
    } else if (canBeLeftOut && isDetermined(item, known)) {
      phrases.leaveOut(number);
      front = Front();
      if (ZQDebugChannel::shows(8)) report(number, "No. %ld -> %s skipped (determined)\n", phrase, phraseLength);
      return true;
    }
    const typename Tier::WriteFlags flags = flagsOf(item, known);
    const int position = writeFrom(place, phrase, phraseLength, followsFront ? known : 0, flags);
    if (position < 0) {
      reportAbortion(number);
      return false;
    }
    front = Front::at(position, *matrix_.elementAt(position));
    if (ZQDebugChannel::shows(8)) {
      using Sentence = zmatrix::ZQSentence<long, const char*>;
      static constexpr Sentence overwritten = "no. %ld -> %s overwritten\n", added = "no. %ld -> %s added\n";
      report(number, place.isWritten ? overwritten : added, phrase, phraseLength);
    }
    if (place.isWritten || !canBeLeftOut || followsFront) return true;
    return matrix_.existMatrixData(phrase, known) >= 2 || postWrite(start, known, flags.startFlag, phrases);
  }

  Place findFrom(int position, const int* phrase, int known) const {
    Place place{position, known, false, false};
    for (const int phraseLength = known + c_; place.numberKnown < phraseLength; ++place.numberKnown) {
      const int child = matrix_.childAt(place.position, phrase[place.numberKnown]);
      if (child < 0) {
        place.isMissing = true;
        return place;
      }
      place.position = child;
    }
    // A path of the maximal length can be written, but not read.
    const ZQMatrixBaseElement* element = matrix_.elementAt(place.position);
    place.isWritten = known + c_ < info_.getMaxDimOfMatrix() &&
                      (element->getOffsetToElementInNextDimension() == 0 || element->getWriteCount() > 0);
    return place;
  }

  Place findFromRoot(const int* phrase, int phraseLength) const {
    return Place{root_, 0, matrix_.existMatrixData(phrase, phraseLength) >= 2, false};
  }

  // Writes the phrase from its existing part on. Returns the position of its last element, or -1.
  int writeFrom(const Place& place, const int* phrase, int phraseLength, int firstDimension,
                const typename Tier::WriteFlags& flags) {
    if (info_.getMemIsReadOnly()) return -1;
    if (phraseLength > info_.getMaxDimOfMatrix()) {
      dbPrintf(0, "error: maximal dimension exceeded: %d\n", phraseLength);
      return -1;
    }
    for (int i = firstDimension; i < place.numberKnown; ++i) Write::countStep(info_, i, phrase[i]);
    int position = place.position;
    int i = place.numberKnown;
    if (place.isMissing && !Write::stepToNew(matrix_, info_, position, i, phrase[i])) return -1;
    for (i += place.isMissing ? 1 : 0; i < phraseLength; ++i) {
      if (!Write::step(matrix_, info_, position, i, phrase[i])) return -1;
    }
    Write::countWrite(matrix_, info_, position, phraseLength, flags);
    return position;
  }

  // True if a shorter context determines the phrase's last item. The longest written ending decides: that is the phrase of the
  // preceding pass at the next start, whose front is its last element. If it was left out, the store is searched.
  bool isDetermined(int item, int known) {
    const Front& next = fronts_[item + 1];
    if (!isValid(next) || known >= info_.getMaxDimOfMatrix()) {
      return matrix_.isDeterminedMatrixData(sequence_ + item * c_, known + c_) > 0;
    }
    const Element* element = matrix_.elementAt(next.position);
    int position = next.position;
    for (int i = 0; i < c_; ++i) {
      const ZQMatrixBaseElement* at = matrix_.elementAt(position);
      if (at->getOffsetToNextElementInDimension() != 0 || at->getOffsetToPreviousElementInDimension() != 0) return false;
      position += at->getOffsetToElementInPrevDimension();
    }
    if (c_ > 1) return true;
    return std::fabs(zmatrix::stopProbabilityOf(*element)) <= zmatrix::stopProbabilityTolerance;
  }

  // A written phrase needs its context written, which an earlier pass left out: writes it once for each place where it occurs.
  // With items of c integers only every c-th item is tested, so that some contexts stay unwritten.
  bool postWrite(int start, int known, char startFlag, zmatrix::ZQLearnedPhrases& phrases) {
    const int* context = sequence_ + start;
    const int lastPlace = length_ - known;
    for (long long place = 0; place <= lastPlace; place += static_cast<long long>(c_) * c_) {
      const int* previous = sequence_ + place;
      if (memcmp(previous, context, static_cast<size_t>(known) * sizeof(int)) != 0) continue;
      const bool isWritten = matrix_.existMatrixData(previous, known) >= 2;
      dbPrintf(1, isWritten ? "preceding phrase more than once post-rewritten\n"
                            : "preceding phrase has writeCount =0! will be post-written\n");
      matrix_.printIndexVector(previous, known, 0, 1);  // tests the level of the matrix, which may differ from the thread's
      phrases.takeIn(firstOfPreviousRun_ + place / c_);
      typename Tier::WriteFlags flags{};
      flags.startFlag = startFlag;
      flags.endFlag = usesEnd_ && place == lastPlace;
      if (!Write::write(matrix_, previous, known, known, flags)) {
        dbPrintf(0, "testSequence %d aborted prematurely\n", static_cast<int>(firstOfPreviousRun_ + place / c_));
        return false;
      }
    }
    return true;
  }

  void report(long long number, const zmatrix::ZQSentence<long, const char*>& format, const int* phrase, int phraseLength) const {
    const std::string text = zmatrix::textOfPhrase(phrase, phraseLength);
    dbPrintf(8, format, static_cast<long>(number), text.c_str());
  }

  Matrix& matrix_;
  Info& info_;
  const int* sequence_;
  const int length_;
  const int c_;  // coordinates per item
  const int* markers_;
  const int root_;
  const bool leavesOutDetermined_;
  const bool usesStart_;
  const bool usesEnd_;
  std::unique_ptr<Front[]> fronts_;
  unsigned layoutOfFronts_ = 0;  // layout version of the matrix when the last pass began
  long long firstOfRun_ = 0;     // number of the first phrase of the current pass
  long long firstOfPreviousRun_ = -1;
  long long numberOfProcessedVectors_ = 0;
  int numberOfOverwrites_ = 0;
};

}  // namespace zmatrix
