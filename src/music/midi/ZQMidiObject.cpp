#include "music/midi/ZQMidiObject.h"

#include <algorithm>
#include <cstring>

#include "frame/ZQGrowth.h"
#include "frame/ZQMemory.h"
#include "music/midi/ZQMidiSounds.h"

namespace zmatrix {

namespace {

constexpr int firstDataSize = 16;

int order(int first, int second) {
  return (first > second) - (first < second);
}

}  // namespace

/// Data with a count of 0 is not owned by the object.
void ZQMidiObject::releaseData() {
  if (data_ != nullptr && dataCount_ >= 1) systemFree(data_);
  data_ = nullptr;
  dataCount_ = dataSize_ = 0;
}

void ZQMidiObject::init() {
  releaseData();
  startQuanta_ = endQuanta_ = 0;
  type_ = noteNumber_ = velocity_ = releaseVelocity_ = channel_ = phraseBegin_ = phraseEnd_ = soundId_ = 0;
}

void ZQMidiObject::initWithProgramChange(int time, unsigned char program, unsigned char noteChannel) {
  init();
  startQuanta_ = endQuanta_ = time;
  type_ = ZQMidiObjectProgramChange;
  channel_ = noteChannel;
  double tonality = 0;
  soundId_ = static_cast<unsigned char>(getSoundIDFromGMProgramChange(program, &tonality));
}

bool ZQMidiObject::initFromMidiObject(const ZQMidiObject* other) {
  init();
  unsigned char* copyOfData = nullptr;
  if (other->data_ != nullptr && other->dataCount_ > 0) {
    copyOfData = systemMallocArray<unsigned char>(other->dataCount_ + 1LL);
    if (copyOfData == nullptr) return false;
    std::memcpy(copyOfData, other->data_, static_cast<size_t>(other->dataCount_));
    dataCount_ = other->dataCount_;
    dataSize_ = other->dataCount_ + 1;
  }
  data_ = copyOfData;
  startQuanta_ = other->startQuanta_;
  endQuanta_ = other->endQuanta_;
  type_ = other->type_;
  noteNumber_ = other->noteNumber_;
  velocity_ = other->velocity_;
  releaseVelocity_ = other->releaseVelocity_;
  channel_ = other->channel_;
  phraseBegin_ = other->phraseBegin_;
  phraseEnd_ = other->phraseEnd_;
  soundId_ = other->soundId_;
  return true;
}

ZQMidiObject* ZQMidiObject::createAndCopy() const {
  ZQMidiObject* copy = createZQMidiObject();
  if (copy != nullptr && !copy->initFromMidiObject(this)) {
    deleteZQMidiObject(copy);
    return nullptr;
  }
  return copy;
}

bool ZQMidiObject::addDataByte(unsigned char byte) {
  const bool hasNoRoom = data_ == nullptr || dataSize_ < 1;
  if (hasNoRoom || dataCount_ >= dataSize_) {
    const int size = hasNoRoom ? firstDataSize : std::max(grownCapacity(dataSize_), dataSize_ + 1);
    auto* resized = static_cast<unsigned char*>(systemRealloc(hasNoRoom ? nullptr : data_, static_cast<size_t>(size)));
    if (resized == nullptr) return false;
    if (hasNoRoom) dataCount_ = 0;
    data_ = resized;
    dataSize_ = size;
  }
  data_[dataCount_++] = byte;
  return true;
}

int ZQCompareMidiObjectsAscending(const void* first, const void* second) {
  const auto* a = *static_cast<const ZQMidiObject* const*>(first);
  const auto* b = *static_cast<const ZQMidiObject* const*>(second);
  const int byStart = order(a->getStartQuanta(), b->getStartQuanta());
  if (byStart != 0) return byStart;
  const int byNote = order(a->getNoteNumber(), b->getNoteNumber());
  return byNote != 0 ? byNote : order(a->getSoundID(), b->getSoundID());
}

}  // namespace zmatrix
