#include "music/kern/ZQKernReader.h"

#include <algorithm>
#include <new>

#include "frame/ZQDebugChannel.h"
#include "music/kern/ZQKernTokens.h"
#include "music/midi/MIDIFILE.h"

namespace zmatrix {

namespace {

constexpr int bufferSize = 960;
constexpr int longestTimeStep = 49152;  // steps of this length or more are ignored
constexpr int restValue = 200;          // a pitch of this number counts as a rest
constexpr int tieValue = 221;           // and one of this number as a tied note

}  // namespace

void KernReader::read() {
  if (!getNext()) return;
  abstime_ = quarterInQuanta;
  do {
    readSection();
  } while (!isOver_ && getNext());
  if (isOver_ || isCounting_) {
    observer_.finished(0);
    return;
  }
  applyBarOffset();
}

/// Reads the next record that is no comment.
bool KernReader::getNext() {
  while (lines_.next(bufferSize)) {
    record_ = lines_.text();
    numberOfRecords_++;
    if (lines_.pieceOfLine() == 2) observer_.departed(zq_KernLongLine, {lines_.lineNumber(), 0, {}}, bufferSize);
    if (!record_.starts_with('!')) {
      if (setBack_.line > 0) observer_.departed(zq_KernTimeSetBack, setBack_, quantaSetBack_);
      setBack_.line = 0;
      return true;
    }
    // The text includes its line feed.
    ZQKernObject* comment = addObject(ZQKernObjectComment, abstime_, 0);
    if (comment != nullptr && !comment->setBuffer(record_)) throw std::bad_alloc();
  }
  return false;
}

/// Returns null after a timing error.
ZQKernObject* KernReader::addObject(int type, int time, int channel) {
  if (isCounting_) return nullptr;
  ZQKernObject* object = createAndInitZQKernObjectOfType(type, time);
  if (object == nullptr || !track_->addKernObject(object)) {
    deleteZQKernObject(object);
    throw std::bad_alloc();
  }
  object->setChannel(static_cast<unsigned char>(channel));
  return object;
}

/// The token of a column, empty if the record has fewer columns.
std::string_view KernReader::token(int column) const {
  const auto index = static_cast<size_t>(column);
  return index < tokens_.size() ? tokens_[index] : std::string_view();
}

void KernReader::applyBarOffset() {
  const int offset = bars_.getOffset();
  if (offset > 0) {
    dbPrintf(5, "readKernObjects: applying barOffset...\n");
    for (int i = 0; i < track_->getCount(); i++) {
      ZQKernObject* object = track_->getKernObjectAtIndex(i);
      if (object->getType() == ZQKernObjectTimeSignature || object->getType() == ZQKernObjectTempo) continue;
      object->setTimeQuanta(wrappingSum(object->getTimeQuanta(), offset));
    }
  }
  observer_.finished(offset);
}

// --- sections: from the first record to the record that ends all spines

void KernReader::readSection() {
  const std::string_view record = record_.substr(0, record_.find('\n'));
  spines_.begin(static_cast<int>(std::count(record.begin(), record.end(), '\t')) + 1);
  timeStep_ = quarterInQuanta;
  isFirstLine_ = true;
  observer_.beganSection(spines_.getCount());
  do {
    readRecord();
  } while (!isOver_ && spines_.getCount() > 0 && getNext());
}

/// A record with null tokens in all kern spines is skipped; a record with a missing token is not. Up to the first record that
/// takes time none is skipped.
bool KernReader::recordCounts() const {
  if (isFirstLine_ || spines_.getNumberOfKernSpines() == 0) return true;
  for (int i = 0; i < spines_.getCount(); i++)
    if (spines_.isKern(i) && !token(i).starts_with('.')) return true;
  return false;
}

void KernReader::readRecord() {
  splitRecord(record_, tokens_);
  if (!recordCounts()) return;
  flags_ = Flags();
  reportTokenCount();
  const int numberOfColumns = std::min(spines_.getCount(), static_cast<int>(tokens_.size()));
  for (int i = 0; i < numberOfColumns && !isOver_; i++) handleColumn(i);
  if (isOver_) return;
  // A missing token is handled as an empty one: no pitch and no duration.
  spines_.takeTimeFrom(numberOfColumns, timeStep_);
  if (flags_.graceNote || flags_.groupetto) pushByGraceNotes();
  if (flags_.advance) advanceTime();
  if (flags_.terminate) terminateSpines();
  if (flags_.terminate || flags_.pathChange) {
    spines_.applyPaths(observer_, lines_.lineNumber());
  } else if (flags_.tandem && !isCounting_) {
    for (int i = 0; i < numberOfColumns; i++) readTandem(i, token(i));
  }
}

void KernReader::pushByGraceNotes() {
  const int push = spines_.pushByGraceNotes(flags_.groupetto, flags_.graceNote);
  if (push > 0 && !isCounting_) observer_.departed(zq_KernGraceNoteTakesTime, {lines_.lineNumber(), 0, {}}, push);
}

void KernReader::reportTokenCount() {
  const int numberOfTokens = static_cast<int>(tokens_.size());
  if (numberOfTokens < spines_.getCount())
    observer_.departed(zq_KernMissingTokens, {lines_.lineNumber(), numberOfTokens + 1, {}}, spines_.getCount() - numberOfTokens);
  if (numberOfTokens > spines_.getCount())
    observer_.departed(zq_KernSurplusTokens, place(spines_.getCount()), numberOfTokens - spines_.getCount());
}

void KernReader::advanceTime() {
  const int step = spines_.smallestDelta(longestTimeStep);
  if (step != longestTimeStep) timeStep_ = step;
  isFirstLine_ = false;
  if (!record_.starts_with('*') && !flags_.barLine) abstime_ = wrappingSum(abstime_, timeStep_);
}

/// Ends the notes in the terminating spines. If there were any, the time is set back by the last step: the record before had
/// added it already, and it isn't added again.
void KernReader::terminateSpines() {
  bool madeNoteOff = false;
  for (int i = 0; i < spines_.getCount(); i++)
    if (spines_.path(i) == KernPath::terminate && spines_.isKern(i) && removeNotes(i)) madeNoteOff = true;
  if (!madeNoteOff) return;
  if (timeStep_ != 0) setBack_.line = lines_.lineNumber();
  quantaSetBack_ = timeStep_;
  spines_.addToDeltas(wrappingDifference(0, timeStep_));
  abstime_ = wrappingDifference(abstime_, timeStep_);
  timeStep_ = 0;
}

// --- columns

void KernReader::handleColumn(int column) {
  const std::string_view text = token(column);
  switch (text.empty() ? '\0' : text[0]) {
    case '*':
      handleInterpretation(column, text);
      break;
    case '=':
      handleBarLine(column, text);
      break;
    case '.':
      handleNull(column, text);
      break;
    default:
      if (spines_.isKern(column)) handleData(column, text);
  }
}

void KernReader::handlePath(int column, KernPath path) {
  spines_.setPath(column, path);
  flags_.tandem = true;
  (path == KernPath::terminate ? flags_.terminate : flags_.pathChange) = true;
  flags_.openJoin = false;
}

/// True if a new exclusive interpretation stands in any column but the first.
bool KernReader::holdsExclusiveBehindFirst() {
  if (!flags_.holdsExclusive.has_value())
    flags_.holdsExclusive =
        std::any_of(tokens_.begin() + 1, tokens_.end(), [](std::string_view other) { return other.starts_with("**"); });
  return *flags_.holdsExclusive;
}

/// The first spine of a join stays, the others end.
void KernReader::handleJoin(int column) {
  flags_.tandem = true;
  if (flags_.openJoin) {
    spines_.setPath(column, KernPath::terminate);
    flags_.terminate = true;
    observer_.joinedSpine();
  }
  flags_.openJoin = true;
}

void KernReader::handleInterpretation(int column, std::string_view text) {
  if (text == "*+") {
    handlePath(column, KernPath::add);
  } else if (text == "*^") {
    handlePath(column, KernPath::split);
  } else if (text == "*x") {
    handlePath(column, KernPath::exchange);
  } else if (text == "*-") {
    handlePath(column, KernPath::terminate);
    observer_.endedSpine();
  } else if (text == "*v") {
    handleJoin(column);
  } else if (text == "**kern") {
    if (!spines_.isKern(column)) observer_.sawKernSpine();
    spines_.makeKern(column);
    flags_.openJoin = false;
  } else if (text.starts_with("*Ch")) {
    std::string_view number = text.substr(3);
    int channel = 0;
    if (scanInteger(number, channel)) spines_.setChannel(column, channel);
    flags_.openJoin = false;
  } else if (text.starts_with("**")) {
    flags_.openJoin = false;  // a kern spine remains a kern spine under any new name
  } else if (!holdsExclusiveBehindFirst()) {
    flags_.tandem = true;
    if (text == "*") flags_.openJoin = false;
  }
}

/// A null token in any spine advances the time; only a kern spine has a delta.
void KernReader::handleNull(int column, std::string_view text) {
  flags_.advance = true;
  if (!spines_.isKern(column)) return;
  int& delta = spines_.delta(column);
  delta = wrappingDifference(delta, timeStep_);
  if (delta >= 0) return;
  delta = 0;
  if (isCounting_) return;
  dbPrintf(0, "KERN Module: Timing error at line %d, spine %d.\n", numberOfRecords_, column);
  dbPrintf(0, "%.*s", static_cast<int>(record_.size()), record_.data());
  observer_.departed(zq_KernTimingError, {lines_.lineNumber(), column + 1, text}, 0);
  isCounting_ = observer_.wantsLostNotes();
  isOver_ = !isCounting_;
}

void KernReader::handleBarLine(int column, std::string_view text) {
  if (!isCounting_) bars_.sawBarLine(abstime_, text.size() > 1 && text[1] == '=');
  if (!flags_.barLine) {
    firstUnsetColumn_ = 0;
    if (!isCounting_) observer_.sawBarLine();
  }
  // A bar line resets all columns to the same time, whether their notes have ended or not. At a further bar line of the record
  // only the columns handled since the one before can differ.
  const int end = flags_.barLine ? column : spines_.getCount();
  for (int i = firstUnsetColumn_; i < end; i++) {
    int& delta = spines_.delta(i);
    const int rest = wrappingDifference(delta, timeStep_);
    if (rest != 0 && spines_.isKern(i)) observer_.departed(zq_KernResynchronised, place(i), rest);
    delta = timeStep_;
  }
  firstUnsetColumn_ = column;
  flags_.barLine = true;
}

// --- data

void KernReader::handleData(int column, std::string_view text) {
  bool isTimed = false, isCleared = false;
  const bool tied = isTied(text);
  size_t begin = 0;
  bool goesOn = true;
  while (goesOn) {
    const size_t end = std::min(text.find(' ', begin), text.size());
    const bool isLast = end + 1 >= text.size();
    goesOn = handleSubToken(column, text.substr(begin, end - begin), tied, isLast, isTimed, isCleared) && !isLast;
    begin = end + 1;
  }
}

/// Handles one note of a token; false if the rest of the token is to be skipped.
bool KernReader::handleSubToken(int column, std::string_view text, bool tied, bool isLast, bool& isTimed, bool& isCleared) {
  const KernSubToken note = parseKernSubToken(text);
  flags_.graceNote = flags_.graceNote || note.isGrace;
  flags_.groupetto = flags_.groupetto || note.isGroupetto;
  tied = tied || (!note.isRest && note.pitch == tieValue);
  const bool isRest = !tied && (note.isRest || note.pitch == restValue);
  if (isRest && !isLast) return true;
  if (note.isCut) observer_.departed(zq_KernCutDuration, place(column), note.duration);
  // A pitch of 0 stands both for MIDI note 0 and for no pitch.
  if (!tied && !isRest && note.pitch == 0) {
    observer_.departed(zq_KernNoPitch, place(column), 0);
    takeTime(column, note.duration, isTimed);
    return false;
  }
  flags_.advance = true;
  if (!tied && !isCleared) {
    removeNotes(column);
    isCleared = true;
  }
  if (!note.hasDuration) observer_.departed(zq_KernNoDuration, place(column), 0);
  takeTime(column, note.duration, isTimed);
  if (tied) {
    if (!isCounting_) reportTie(column, text, note);
  } else if (isRest) {
    // A rest can end the phrase of the last note that was made, in any spine.
    if (lastNote_ != nullptr && note.closesPhrase) lastNote_->setPhraseEnd(1);
    lastNote_ = nullptr;
    if (!isCounting_) observer_.tookRest();
  } else {
    makeNote(column, note);
  }
  return true;
}

/// Reports how a tied token departs from the score: no note is made for it, and the sounding note, if any, keeps its duration.
void KernReader::reportTie(int column, std::string_view text, const KernSubToken& note) {
  observer_.continuedTie();
  if (note.isRest || !note.hasPitch) return;
  const auto& sounding = spines_.notes(column);
  const bool sounds = std::find(sounding.begin(), sounding.end(), static_cast<unsigned char>(note.pitch)) != sounding.end();
  if (!isTied(text)) {
    observer_.departed(zq_KernNoteInTiedChord, place(column), 0);
  } else {
    observer_.departed(sounds ? zq_KernTieTooShort : zq_KernTieWithoutStart, place(column), 0);
  }
}

/// A token takes the duration of its first note.
void KernReader::takeTime(int column, int duration, bool& isTimed) {
  if (isTimed) return;
  isTimed = true;
  int& delta = spines_.delta(column);
  delta = std::max(0, wrappingDifference(wrappingSum(delta, duration), timeStep_));
}

void KernReader::makeNote(int column, const KernSubToken& note) {
  spines_.addNote(column, note.pitch);
  if (isCounting_) {
    observer_.departed(zq_KernLostNote, place(column), 0);
    return;
  }
  ZQKernObject* object = addObject(ZQKernObjectNoteOn, abstime_, spines_.channel(column));
  object->setDuration(note.duration);
  object->setNoteNumber(static_cast<unsigned char>(note.pitch));
  object->setPhraseBegin(note.opensPhrase);
  object->setPhraseEnd(note.closesPhrase);
  lastNote_ = object;
  observer_.tookNote(spines_.channel(column));
  if (note.isGrace || note.isGroupetto) observer_.tookGraceNote();
}

/// Ends the notes of a column, except for those that another kern spine of the channel holds too. True if one was ended.
bool KernReader::removeNotes(int column) {
  bool madeNoteOff = false;
  for (const unsigned char noteNumber : spines_.notes(column)) {
    if (spines_.soundsElsewhere(column, noteNumber)) continue;
    madeNoteOff = true;
    if (ZQKernObject* object = addObject(ZQKernObjectNoteOff, abstime_, spines_.channel(column)))
      object->setNoteNumber(noteNumber);
  }
  spines_.clearNotes(column);
  return madeNoteOff;
}

}  // namespace zmatrix
