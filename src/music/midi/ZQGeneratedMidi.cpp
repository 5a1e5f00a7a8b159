#include "music/midi/ZQGeneratedMidi.h"

#include <algorithm>
#include <cstdio>

#include "frame/ZQDebugChannel.h"
#include "frame/ZQSystemOwned.h"
#include "music/midi/MIDIFILE.h"
#include "music/midi/ZQMidiFeed.h"
#include "music/midi/ZQMidiFile.h"
#include "sequence/ZQPreprocessing.h"

namespace zmatrix {

namespace {

constexpr unsigned char velocityOfNotes = 100;
constexpr unsigned char releaseVelocityOfNotes = 101;
constexpr int quantaPerQuarter = 3072;
constexpr int noteNumbers = 128;
constexpr int octave = 12;
constexpr int channels = 16;
constexpr int soundValues = 256;

bool isOfMusic(int preProcessingType) {
  return preProcessingType == 1 || (preProcessingType >= ZQPreProcessingTypeMidiNoteAndModQuanta &&
                                    preProcessingType <= ZQPreProcessingTypeMidiGMQuadruple_NDMTS);
}

/// The exponent of the smallest power of two that is at least `denominator`.
unsigned char exponentOf(int denominator) {
  unsigned char exponent = 0;
  while (exponent < 30 && 1 << exponent < denominator) exponent++;
  return exponent;
}

}  // namespace

GeneratedMidi::GeneratedMidi(ZQMatrixMedium* source)
    : matrix_(source),
      info_(matrix_->getMatrixInfo()),
      preProcessingType_(info_->getPreProcessingType()),
      coordinateDimension_(info_->getCoordinateDimension()),
      midiSoundId_(info_->getMidiSoundID()),
      numerator_(info_->getMidiTimeSignatureNom()),
      denominator_(info_->getMidiTimeSignatureDenom()) {
}

int GeneratedMidi::check() const {
  if (!isMidiMatrixType(info_->getMatrixType())) {
    dbPrintf(0, "readMidiObjexsAndWriteToMidiFile: matrix is not MIDI type. Cannot read MIDI data from other matrixType: %d\n",
             info_->getMatrixType());
    return -1;
  }
  if (info_->getNumberOfWriteElements() == 0) {
    dbPrintf(0, "readMidiObjexsAndWriteToMidiFile: matrix is empty!\n");
    return -2;
  }
  if (!isOfMusic(preProcessingType_)) {
    dbPrintf(0, "readMidiObjexsAndWriteToMidiFile: matrix has wrong preProcessingType: %d\n", preProcessingType_);
    return -3;
  }
  if (info_->getAllowLargeIndices() != 0 || info_->getIsPhraseMatrix() != 1 || matrix_->getNumberOfMatrices() == 0 ||
      info_->getSuccessorMethod() < ZQSuccessorMethodMostProbable || info_->getSuccessorMethod() > ZQSuccessorMethodRandom ||
      !dimensionFitsMidi(preProcessingType_, coordinateDimension_)) {
    dbPrintf(0, "readMidiObjexsAndWriteToMidiFile: matrix is corrupted!\n");
    return -4;
  }
  return 1;
}

void GeneratedMidi::warn() const {
  if (info_->getSkillOutputLevel() < 2) dbPrintf(1, "readMidiObjexsAndWriteToMidiFile: Warning: very low skill outputlevel\n");
  if (info_->getLengthOfKernelPreProcessedSequence() == 0)
    dbPrintf(1, "readMidiObjexsAndWriteToMidiFile: Warning: empty kernel sequence, initializing from root\n");
}

bool GeneratedMidi::compose(int numberOfObjex) {
  return composeNotes(numberOfObjex) && addMetaEvents() && updateEventTrackFromObjectTrack(events_.get(), objects_.get());
}

bool GeneratedMidi::composeNotes(int numberOfObjex) {
  warn();
  const PreprocessingSettings settings{preProcessingType_, coordinateDimension_, numerator_, denominator_};
  barLength_ = barLengthInQuanta(
      settings, "getNextOriginalObjecFromMatrix: illegal values for timeSignature, assuming 4/4 time signature...\n");
  if (numerator_ == 0 || denominator_ == 0) numerator_ = denominator_ = 4;
  events_.reset(createZQMidiEventTrack());
  objects_.reset(createZQMidiObjectTrack());
  if (events_ == nullptr || objects_ == nullptr || !takeContext()) return false;
  for (int i = 0; i < numberOfObjex; i++) {
    double probability = 0, stopProbability = 0;
    const int* objex = matrix_->readObjexFromMatrix(&probability, &stopProbability);
    if (objex == nullptr) {
      startAnew();
      continue;
    }
    Item item{};
    std::copy_n(objex, coordinateDimension_, item.coordinates);
    if (!takeItem(i, item)) return false;
  }
  if (coordinateDimension_ == 2) giveNotesTheirLengths();
  return true;
}

bool GeneratedMidi::addMetaEvent(int eventType, int byteCount, const unsigned char* bytes, float value) {
  ZQMidiEvent* event = createZQMidiEvent();
  if (event == nullptr) return false;
  event->initWith(0, bytes[0], bytes[1], bytes[2], bytes[3]);
  event->setByteCount(byteCount);
  event->setEventType(eventType);
  event->setFloatValue(value);
  if (events_->addMidiEvent(event)) return true;
  deleteZQMidiEvent(event);
  return false;
}

bool GeneratedMidi::addMetaEvents() {
  const unsigned char meter[] = {static_cast<unsigned char>(numerator_), exponentOf(denominator_), 24, 8};
  const unsigned char tempo[] = {127, 0, 0, 0};
  const unsigned char key[] = {0, 0, 0, 0};
  const unsigned char producer[] = {'Q', 'X', 'R', 'T'};
  return addMetaEvent(ZQMidiMetaTimeSignature, 4, meter, 0) && addMetaEvent(ZQMidiMetaTempo, 3, tempo, 120.0f) &&
         addMetaEvent(ZQMidiMetaKeySignature, 2, key, 0) && addMetaEvent(ZQMidiMetaCopyright, 4, producer, 0);
}

/// Takes the notes that the piece continues, all on channel 0.
bool GeneratedMidi::takeContext() {
  int count = 0, dimension = 0;
  const SystemOwned<int*> context(info_->createKernelOriginalSequenceInitialValuesObjexVector(&count, &dimension));
  if (context == nullptr) return true;
  for (int i = 0; i < count; i++) {
    Item item{};
    std::copy_n(context[static_cast<size_t>(i)], std::min(dimension, coordinatesOfLargestItem), item.coordinates);
    if (!addNote(item, item.noteOn())) return false;
    contextStart_ = item.noteOn();
  }
  return true;
}

/// Appends a note for the item, which starts at `start` on the current channel.
bool GeneratedMidi::addNote(Item item, int start) {
  ZQMidiObject* note = createZQMidiObject();
  if (note == nullptr) return false;
  note->initWithNote(start, hasDurations() ? wrappingSum(start, item.duration()) : start,
                     static_cast<unsigned char>(item.noteNumber()), velocityOfNotes, static_cast<unsigned char>(channel_));
  note->setReleaseVelocity(releaseVelocityOfNotes);
  note->setSoundID(static_cast<unsigned char>(soundOf(item)));
  if (objects_->addMidiObject(note)) return true;
  deleteZQMidiObject(note);
  return false;
}

void GeneratedMidi::restartFrom(Item& item) {
  matrix_->initializeKernelSequenceWithOriginalSequence(item.coordinates, coordinateDimension_, 1);
}

/// Moves a note by an octave. The kernel is not reset, although the messages say so.
void GeneratedMidi::repairNoteNumber(Item& item) const {
  if (item.noteNumber() < 0) {
    dbPrintf(0, "readMidiObjexsAndWriteToMidiFile: noteNumber <0, resetKernelSequence! \n");
    item.noteNumber() += octave;
  }
  if (item.noteNumber() >= noteNumbers) {
    dbPrintf(0, "readMidiObjexsAndWriteToMidiFile: noteNumber >=128, resetKernelSequence! \n");
    item.noteNumber() -= octave;
  }
}

/// Sets a negative duration to 0. True if it was negative: the item then restarts the kernel and makes no note.
bool GeneratedMidi::repairDuration(Item& item) const {
  if (!hasDurations() || item.duration() >= 0) return false;
  dbPrintf(0, "readMidiObjexsAndWriteToMidiFile warning: negative duration! \n");
  item.duration() = 0;
  return true;
}

bool GeneratedMidi::hasIllegalSound(Item& item) const {
  const int sound = soundOf(item);
  if ((!hasSounds() || sound >= 0) && sound < soundValues) return false;
  dbPrintf(0, "readMidiObjexsAndWriteToMidiFile warning: illegal soundID: %d ! \n", sound);
  return true;
}

/// Makes a note of an item. An item that can't be repaired makes no note and restarts the kernel.
bool GeneratedMidi::takeItem(int index, Item item) {
  // If the first time is before the last one of the context, a bar line lies between them.
  if (index == 0 && hasBars() && item.noteOn() < contextStart_) timeOffset_ = static_cast<int>(barLength_);
  if (ZQDebugChannel::shows(5)) {
    dbPrintf(5, "succ.Object No. %d: \n", index);
    dbPrintf(5, "(");
    for (int i = 0; i < coordinateDimension_; i++) dbPrintf(5, "%d,", item.coordinates[i]);
    dbPrintf(5, "),\n");
  }
  const int start = wrappingSum(item.noteOn(), timeOffset_);
  if (start < lastStart_) {
    dbPrintf(0, "readMidiObjexsAndWriteToMidiFile: decreasing quanta value!\n");
    item.noteOn() = lastStart_;
    restartFrom(item);
    return true;
  }
  repairNoteNumber(item);
  const bool hadNegativeDuration = repairDuration(item);
  if (hasIllegalSound(item) || hadNegativeDuration) {
    restartFrom(item);
    return true;
  }
  lastStart_ = start;
  return addNote(item, start);
}

/// Called where a sequence ends: the next one begins at the next bar, or at the last note if there are no bars.
void GeneratedMidi::startAnew() {
  dbPrintf(2, "readMidiObjexsAndWriteToMidiFile: NULL Midi Object\n");
  const long long nextBar = (lastStart_ / barLength_ + 1) * barLength_;
  timeOffset_ = hasBars() ? static_cast<int>(static_cast<unsigned>(nextBar)) : lastStart_;
  channel_ = (channel_ + 1) % channels;
}

/// Notes without a duration last until the next one.
void GeneratedMidi::giveNotesTheirLengths() {
  const int count = objects_->getCount();
  for (int i = 0; i < count; i++) {
    ZQMidiObject* note = objects_->getMidiObjectAtIndex(i);
    const int start = note->getStartQuanta();
    if (i == count - 1) {
      note->setEndQuanta(wrappingSum(start, quantaPerQuarter));
      continue;
    }
    const int end = wrappingDifference(objects_->getMidiObjectAtIndex(i + 1)->getStartQuanta(), 1);
    note->setEndQuanta(end > start ? end : wrappingSum(start, 1));
  }
}

int GeneratedMidi::write(const char* fileName) {
  ZQMidiTrackList list;
  if (!list.addMidiEventTrack(events_.get())) return EOF;
  static_cast<void>(events_.release());
  if (!list.addMidiObjectTrack(objects_.get())) return EOF;
  static_cast<void>(objects_.release());
  dbPrintf(2, "readMidiObjexsAndWriteToMidiFile: number of midi Objects tracks: %d:\n", list.getNumberOfMidiObjectTracks());
  return ZQMidiFile().writeEventsToFileWithPath(&list, fileName);
}

int readMidiObjexsAndWriteToMidiFile(ZQMatrixMedium* matrix, int numberOfObjex, const char* fileName, int* numberOfNotes) {
  if (numberOfNotes != nullptr) *numberOfNotes = 0;
  if (matrix == nullptr || matrix->getCurrentMatrixID() < 0 || matrix->getCurrentMatrixID() >= matrix->getMaxNumberOfMatrices())
    return 0;
  GeneratedMidi music(matrix);
  const int isFit = music.check();
  if (isFit != 1) return isFit;
  FILE* file = fileName != nullptr ? fopen(fileName, "wb") : nullptr;
  if (file == nullptr) {
    dbPrintf(0, "readMidiObjexsAndWriteToMidiFile: could not open midifile %s for writing\n",
             fileName != nullptr ? fileName : "");
    return -5;
  }
  fclose(file);
  if (!music.compose(numberOfObjex)) return -7;
  if (numberOfNotes != nullptr) *numberOfNotes = music.numberOfNotes();
  return music.write(fileName) == 0 ? 1 : -6;
}

}  // namespace zmatrix

/// Failures of writing and of memory are reported as success here.
int ZQMatrixMedium::readMidiObjexsAndWriteToMidiFile(int numberOfObjex, const char* fileName) {
  const int result = zmatrix::readMidiObjexsAndWriteToMidiFile(this, numberOfObjex, fileName, nullptr);
  return result < -5 ? 1 : result;
}
