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
      : matrix(matrixToTeach),
        info(*matrixToTeach.getMatrixInfo()),
        sequence(preProcessed),
        length(numberOfIntegers),
        c(dimension),
        markers(symbolMarkers),
        root(matrixToTeach.getCurrentMatrixID()),
        leavesOutDetermined(info.getIncludeOverdeterminedRules() == 0),
        usesStart(info.getUseStartOfSequence() == 1),
        usesEnd(info.getUseEndOfSequence() == 1) {}

  /// 1 learned, -1 a write failed, -2 memory has run out. `phrases` collects them, if the caller asks for them.
  int run(int maxPhraseLength, zmatrix::ZQLearnedPhrases& phrases) {
    const int numberOfItems = length / c;
    const int longest = maxPhraseLength < numberOfItems ? maxPhraseLength : numberOfItems;
    const int end = longest > 0 ? longest * c : 0;
    if (!phrases.provide(numberOfItems, longest) || !provideFronts(numberOfItems)) return -2;
    dbPrintf(6, "begin updateMatrixWithSequence\n");
    snprintf(globalProgressData.progressText, sizeof globalProgressData.progressText,
             "updateMatrixWithCombinedSequence with %d items...", end);
    for (int known = 0; known < end; known += c) {
      matrixProgressDisplay(known, end);
      if (!learnPhrasesOf(known, phrases)) return -1;
    }
    matrixProgressDisplay(end, end);
    return 1;
  }

  long long getNumberOfProcessedVectors() const { return numberOfProcessedVectors; }
  int getNumberOfOverwrites() const { return numberOfOverwrites; }

 private:
  using Front = zmatrix::ZQFront;
  static constexpr int mostElementsInCache = 32768;  // with no more than these a look ahead costs more than it saves

  // Where a phrase lies, as far as it exists.
  struct Place {
    int position = -1;    // of the last element that exists
    int numberKnown = 0;  // integers of the phrase up to there
    bool isWritten = false;
    bool isMissing = false;  // for certain, the element after it
  };

  bool provideFronts(int numberOfItems) {
    fronts.reset(new (std::nothrow) Front[static_cast<size_t>(numberOfItems > 0 ? numberOfItems : 1)]);
    if (fronts == nullptr) {
      dbPrintf(0, "updateMatrixWithCombinedSeq: Cannot alloc indexVectors!\n");
      return false;
    }
    for (int item = 0; item < numberOfItems; ++item) fronts[item] = {root, matrix.nameOfRecordAt(root), Front::unknownBegin};
    return true;
  }

  bool isGood(const Front& front) const { return front.position >= 0 && matrix.nameOfRecordAt(front.position) == front.record; }

  // All phrases whose first `known` integers are the phrases of the pass before.
  bool learnPhrasesOf(int known, zmatrix::ZQLearnedPhrases& phrases) {
    const int phraseLength = known + c;
    firstOfRun = numberOfProcessedVectors;
    // A last item that is cut short still begins a phrase.
    const int numberOfStarts = (length - known + c - 1) / c;
    const unsigned layout = matrix.getLayoutVersion();
    const bool isSettled = layout == layoutOfFronts;
    layoutOfFronts = layout;
    zmatrix::ZQDescentPrefetch ahead(matrix, fronts.get(), numberOfStarts, sequence + known, c, isSettled);
    const bool isPlain = isPlainPass(known, phrases);
    const bool looksAhead = info.getNumberOfMatrixElements() > mostElementsInCache;
    if (looksAhead) ahead.begin();
    for (int item = 0; item < numberOfStarts; ++item) {
      if (looksAhead) ahead.lookAhead(item);
      if (isPlain && countKnown(item, known, isSettled)) continue;
      const long long number = firstOfRun + item;
      const Plain plain = isPlain ? addPlain(item, known) : Plain::notHandled;
      if (plain == Plain::learned) continue;
      if (plain == Plain::failed) reportAbortion(number);
      if (!phrases.add(sequence + item * c, phraseLength)) return false;
      if (plain == Plain::failed || !learnPhrase(item, known, number, phrases)) {
        numberOfProcessedVectors = number;
        return false;
      }
    }
    firstOfPreviousRun = firstOfRun;
    numberOfProcessedVectors = firstOfRun + (length - known) / c;
    return true;
  }

  // True if the phrases of a pass only need to be counted or added: no message or copy is asked for, no limit is near.
  bool isPlainPass(int known, const zmatrix::ZQLearnedPhrases& phrases) const {
    return !phrases.areWanted() && !ZQDebugChannel::shows(8) && !info.getMemIsReadOnly() && known + c < info.getMaxDimOfMatrix();
  }

  // The child of a front that is good, or -1. The front's record isn't needed where nothing has moved since the pass before.
  int childOfFront(const Front& front, int coordinate, bool isSettled) const {
    if (isSettled && front.fieldBegin != Front::unknownBegin && matrix.getLayoutVersion() == layoutOfFronts) {
      return matrix.template childIn<Element>(static_cast<long long>(front.fieldBegin) + coordinate, front.position);
    }
    auto* element = matrix.template elementNamed<Element>(front.position, front.record);
    return element != nullptr ? matrix.childOf(front.position, *element, coordinate) : -1;
  }

  // learnPhrase in a plain pass, for a phrase that follows its front and is known. False, and nothing done, for any other.
  bool countKnown(int item, int known, bool isSettled) {
    Front& front = fronts[item];
    const int* coordinates = sequence + static_cast<long long>(item) * c + known;
    int position = childOfFront(front, coordinates[0], isSettled);
    if (position < 0) return false;
    auto* element = matrix.template recordInSlot<Element>(position);
    for (int i = 1; i < c; ++i) {
      position = matrix.childOf(position, *element, coordinates[i]);
      if (position < 0) return false;
      element = matrix.template recordInSlot<Element>(position);
    }
    const bool isWritten = element->getOffsetToElementInNextDimension() == 0 || element->getWriteCount() > 0;
    if (leavesOutDetermined && !isWritten) return false;
    if (isWritten) ++numberOfOverwrites;
    for (int i = 0; i < c; ++i) Write::countStep(info, known + i, coordinates[i]);
    Write::countWrite(matrix, info, *element, known + c, flagsOf(item, known));
    front = Front::at(position, *element);
    return true;
  }

  enum class Plain { notHandled, learned, failed };

  // The same for a phrase that is not known and may be added without further tests. Most phrases of a new text come here, few of
  // a known one: it stands out of line to keep the path of the latter short.
  [[gnu::noinline]] Plain addPlain(int item, int known) {
    Front& front = fronts[item];
    if (leavesOutDetermined || !isGood(front)) return Plain::notHandled;
    const int* coordinates = sequence + static_cast<long long>(item) * c + known;
    int position = front.position;
    for (int i = 0; i < c; ++i) {
      const int child = matrix.childAt(position, coordinates[i]);
      if (child >= 0) {
        position = child;
        Write::countStep(info, known + i, coordinates[i]);
      } else if (!Write::stepToNew(matrix, info, position, known + i, coordinates[i])) {
        return Plain::failed;
      }
    }
    auto* element = matrix.template recordInSlot<Element>(position);
    Write::countWrite(matrix, info, *element, known + c, flagsOf(item, known));
    front = Front::at(position, *element);
    return Plain::learned;
  }

  typename Tier::WriteFlags flagsOf(int item, int known) const {
    typename Tier::WriteFlags flags{};
    flags.startFlag = item == 0 && known == 0 && usesStart;
    flags.endFlag = usesEnd && item * c >= length - known - c;
    if (markers != nullptr) Tier::markPhrase(flags, markers + item, known / c + 1);
    return flags;
  }

  static void reportAbortion(long long number) {
    dbPrintf(0, "updateMatrixWithCombinedSequence: testSequence %d aborted prematurely\n", static_cast<int>(number));
  }

  bool learnPhrase(int item, int known, long long number, zmatrix::ZQLearnedPhrases& phrases) {
    const int start = item * c;
    const int* phrase = sequence + start;
    const int phraseLength = known + c;
    const bool canBeLeftOut = leavesOutDetermined && known >= 2 * c;
    Front& front = fronts[item];
    const bool followsFront = isGood(front);
    Place place = followsFront ? findFrom(front.position, phrase, known) : findFromRoot(phrase, phraseLength);
    if (place.isWritten) {
      ++numberOfOverwrites;
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
    front = Front::at(position, *matrix.elementAt(position));
    if (ZQDebugChannel::shows(8)) {
      using Sentence = zmatrix::ZQSentence<long, const char*>;
      static constexpr Sentence overwritten = "no. %ld -> %s overwritten\n", added = "no. %ld -> %s added\n";
      report(number, place.isWritten ? overwritten : added, phrase, phraseLength);
    }
    if (place.isWritten || !canBeLeftOut || followsFront) return true;
    return matrix.existMatrixData(phrase, known) >= 2 || postWrite(start, known, flags.startFlag, phrases);
  }

  Place findFrom(int position, const int* phrase, int known) const {
    Place place{position, known, false, false};
    for (const int phraseLength = known + c; place.numberKnown < phraseLength; ++place.numberKnown) {
      const int child = matrix.childAt(place.position, phrase[place.numberKnown]);
      if (child < 0) {
        place.isMissing = true;
        return place;
      }
      place.position = child;
    }
    // A path as long as the limit can be written, but not read.
    const ZQMatrixBaseElement* element = matrix.elementAt(place.position);
    place.isWritten = known + c < info.getMaxDimOfMatrix() &&
                      (element->getOffsetToElementInNextDimension() == 0 || element->getWriteCount() > 0);
    return place;
  }

  Place findFromRoot(const int* phrase, int phraseLength) const {
    return Place{root, 0, matrix.existMatrixData(phrase, phraseLength) >= 2, false};
  }

  // Writes the phrase from what is known of its place; the position of its last element, or -1.
  int writeFrom(const Place& place, const int* phrase, int phraseLength, int firstDimension,
                const typename Tier::WriteFlags& flags) {
    if (info.getMemIsReadOnly()) return -1;
    if (phraseLength > info.getMaxDimOfMatrix()) {
      dbPrintf(0, "error: maximal dimension exceeded: %d\n", phraseLength);
      return -1;
    }
    for (int i = firstDimension; i < place.numberKnown; ++i) Write::countStep(info, i, phrase[i]);
    int position = place.position;
    int i = place.numberKnown;
    if (place.isMissing && !Write::stepToNew(matrix, info, position, i, phrase[i])) return -1;
    for (i += place.isMissing ? 1 : 0; i < phraseLength; ++i) {
      if (!Write::step(matrix, info, position, i, phrase[i])) return -1;
    }
    Write::countWrite(matrix, info, position, phraseLength, flags);
    return position;
  }

  // Does a shorter context already fix the phrase's last item? The longest written ending decides. It is the phrase of the pass
  // before at the next start, whose front still ends there; where that one was left out, the store is asked.
  bool isDetermined(int item, int known) {
    const Front& next = fronts[item + 1];
    if (!isGood(next) || known >= info.getMaxDimOfMatrix()) {
      return matrix.isDeterminedMatrixData(sequence + item * c, known + c) > 0;
    }
    const Element* element = matrix.elementAt(next.position);
    int position = next.position;
    for (int i = 0; i < c; ++i) {
      const ZQMatrixBaseElement* at = matrix.elementAt(position);
      if (at->getOffsetToNextElementInDimension() != 0 || at->getOffsetToPreviousElementInDimension() != 0) return false;
      position += at->getOffsetToElementInPrevDimension();
    }
    if (c > 1) return true;
    return std::fabs(zmatrix::stopProbabilityOf(*element)) <= zmatrix::stopProbabilityTolerance;
  }

  // The phrase just written needs its context written as well, which an earlier pass left out: each place where that context
  // occurs is written now. With items of c integers only every c-th place is looked at, which leaves some contexts unwritten.
  bool postWrite(int start, int known, char startFlag, zmatrix::ZQLearnedPhrases& phrases) {
    const int* context = sequence + start;
    const int lastPlace = length - known;
    for (long long place = 0; place <= lastPlace; place += static_cast<long long>(c) * c) {
      const int* previous = sequence + place;
      if (memcmp(previous, context, static_cast<size_t>(known) * sizeof(int)) != 0) continue;
      const bool isWritten = matrix.existMatrixData(previous, known) >= 2;
      dbPrintf(1, isWritten ? "preceding phrase more than once post-rewritten\n"
                            : "preceding phrase has writeCount =0! will be post-written\n");
      matrix.printIndexVector(previous, known, 0, 1);  // asks the matrix's own level, which may be another than the channel's
      phrases.takeIn(firstOfPreviousRun + place / c);
      typename Tier::WriteFlags flags{};
      flags.startFlag = startFlag;
      flags.endFlag = usesEnd && place == lastPlace;
      if (!Write::write(matrix, previous, known, known, flags)) {
        dbPrintf(0, "testSequence %d aborted prematurely\n", static_cast<int>(firstOfPreviousRun + place / c));
        return false;
      }
    }
    return true;
  }

  void report(long long number, const zmatrix::ZQSentence<long, const char*>& format, const int* phrase, int phraseLength) const {
    const std::string text = zmatrix::textOfPhrase(phrase, phraseLength);
    dbPrintf(8, format, static_cast<long>(number), text.c_str());
  }

  Matrix& matrix;
  Info& info;
  const int* sequence;
  const int length;
  const int c;
  const int* markers;
  const int root;
  const bool leavesOutDetermined;
  const bool usesStart;
  const bool usesEnd;
  std::unique_ptr<Front[]> fronts;
  unsigned layoutOfFronts = 0;  // of the matrix when the last pass began
  long long firstOfRun = 0;
  long long firstOfPreviousRun = -1;
  long long numberOfProcessedVectors = 0;
  int numberOfOverwrites = 0;
};

}  // namespace zmatrix
