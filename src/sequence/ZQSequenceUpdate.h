// Learning, shared by the tiers that learn: every sub-sequence of up to a phrase limit is written as a phrase, shortest first.
//
// The loop runs by length. For each start it keeps the front: where the phrase of the length before ends, as position and name
// of the record there. The next length is one item down from there. A move changes positions, so a front is good while its slot
// still holds its record; else, and where the phrase before was left out, the walk begins at the root. A phrase is a slice of
// the preprocessed sequence: nothing is allocated for one, unless the caller asks for all of them.
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

  /// `symbolMarkers` may be null; else it has an entry an item, for the tier to read.
  ZQSequenceUpdate(Matrix& matrixToTeach, const int* preProcessed, int numberOfIntegers, int dimension, const int* symbolMarkers)
      : matrix_(matrixToTeach),
        info_(*matrixToTeach.getMatrixInfo()),
        sequence_(preProcessed),
        length_(numberOfIntegers),
        c_(dimension),
        markers_(symbolMarkers),
        root_(matrixToTeach.getCurrentMatrixID()),
        leavesOutDetermined_(info_.getIncludeOverdeterminedRules() == 0),
        usesStart_(info_.getUseStartOfSequence() == 1),
        usesEnd_(info_.getUseEndOfSequence() == 1) {}

  /// 1 learned, -1 a write failed, -2 memory has run out. `phrases` collects them, if the caller asks for them.
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
  static constexpr int mostElementsInCache = 131072;  // with no more than these prefetching costs more than it saves

  // Where a phrase lies, as far as it exists.
  struct Place {
    int position = -1;    // of the last element that exists
    int numberKnown = 0;  // integers of the phrase up to there
    bool isWritten = false;
    bool isMissing = false;  // for certain, the element after it
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

  bool isGood(const Front& front) const { return front.position >= 0 && matrix_.nameOfRecordAt(front.position) == front.record; }

  // All phrases whose first `known` integers are the phrases of the pass before.
  bool learnPhrasesOf(int known, zmatrix::ZQLearnedPhrases& phrases) {
    const int phraseLength = known + c_;
    firstOfRun_ = numberOfProcessedVectors_;
    // A last item that is cut short still begins a phrase.
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

  // True if the phrases of a pass only need to be counted or added: no message or copy is asked for, no limit is near.
  bool isPlainPass(int known, const zmatrix::ZQLearnedPhrases& phrases) const {
    return !phrases.areWanted() && !ZQDebugChannel::shows(8) && !info_.getMemIsReadOnly() &&
           known + c_ < info_.getMaxDimOfMatrix();
  }

  // The child of a front that is good, or -1. The front's record isn't needed where nothing has moved since the pass before.
  int childOfFront(const Front& front, int coordinate, bool isSettled) const {
    if (isSettled && front.fieldBegin != Front::unknownBegin && matrix_.getLayoutVersion() == layoutOfFronts_) {
      return matrix_.template childIn<Element>(static_cast<long long>(front.fieldBegin) + coordinate, front.position);
    }
    auto* element = matrix_.template elementNamed<Element>(front.position, front.record);
    return element != nullptr ? matrix_.childOf(front.position, *element, coordinate) : -1;
  }

  // learnPhrase in a plain pass, for a phrase that follows its front and is known. False, and nothing done, for any other.
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

  // The same for a phrase that is not known and may be added without further tests. Most phrases of a new text come here, few of
  // a known one: it stands out of line to keep the path of the latter short.
  [[gnu::noinline]] Plain addPlain(int item, int known) {
    Front& front = fronts_[item];
    if (leavesOutDetermined_ || !isGood(front)) return Plain::notHandled;
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
    const bool followsFront = isGood(front);
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
    // A path as long as the limit can be written, but not read.
    const ZQMatrixBaseElement* element = matrix_.elementAt(place.position);
    place.isWritten = known + c_ < info_.getMaxDimOfMatrix() &&
                      (element->getOffsetToElementInNextDimension() == 0 || element->getWriteCount() > 0);
    return place;
  }

  Place findFromRoot(const int* phrase, int phraseLength) const {
    return Place{root_, 0, matrix_.existMatrixData(phrase, phraseLength) >= 2, false};
  }

  // Writes the phrase from what is known of its place; the position of its last element, or -1.
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

  // Does a shorter context already fix the phrase's last item? The longest written ending decides. It is the phrase of the pass
  // before at the next start, whose front still ends there; where that one was left out, the store is asked.
  bool isDetermined(int item, int known) {
    const Front& next = fronts_[item + 1];
    if (!isGood(next) || known >= info_.getMaxDimOfMatrix()) {
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

  // The phrase just written needs its context written as well, which an earlier pass left out: each place where that context
  // occurs is written now. With items of c integers only every c-th place is looked at, which leaves some contexts unwritten.
  bool postWrite(int start, int known, char startFlag, zmatrix::ZQLearnedPhrases& phrases) {
    const int* context = sequence_ + start;
    const int lastPlace = length_ - known;
    for (long long place = 0; place <= lastPlace; place += static_cast<long long>(c_) * c_) {
      const int* previous = sequence_ + place;
      if (memcmp(previous, context, static_cast<size_t>(known) * sizeof(int)) != 0) continue;
      const bool isWritten = matrix_.existMatrixData(previous, known) >= 2;
      dbPrintf(1, isWritten ? "preceding phrase more than once post-rewritten\n"
                            : "preceding phrase has writeCount =0! will be post-written\n");
      matrix_.printIndexVector(previous, known, 0, 1);  // asks the matrix's own level, which may be another than the channel's
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
  const int c_;
  const int* markers_;
  const int root_;
  const bool leavesOutDetermined_;
  const bool usesStart_;
  const bool usesEnd_;
  std::unique_ptr<Front[]> fronts_;
  unsigned layoutOfFronts_ = 0;  // of the matrix when the last pass began
  long long firstOfRun_ = 0;
  long long firstOfPreviousRun_ = -1;
  long long numberOfProcessedVectors_ = 0;
  int numberOfOverwrites_ = 0;
};

}  // namespace zmatrix
