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
  if (data != nullptr && dataCount >= 1) systemFree(data);
  data = nullptr;
  dataCount = dataSize = 0;
}

void ZQMidiObject::init() {
  releaseData();
  startQuanta = endQuanta = 0;
  type = noteNumber = velocity = releaseVelocity = channel = phraseBegin = phraseEnd = soundID = 0;
}

void ZQMidiObject::initWithProgramChange(int time, unsigned char program, unsigned char noteChannel) {
  init();
  startQuanta = endQuanta = time;
  type = ZQMidiObjectProgramChange;
  channel = noteChannel;
  double tonality = 0;
  soundID = static_cast<unsigned char>(getSoundIDFromGMProgramChange(program, &tonality));
}

bool ZQMidiObject::initFromMidiObject(const ZQMidiObject* other) {
  init();
  unsigned char* copyOfData = nullptr;
  if (other->data != nullptr && other->dataCount > 0) {
    copyOfData = systemMallocArray<unsigned char>(other->dataCount + 1LL);
    if (copyOfData == nullptr) return false;
    std::memcpy(copyOfData, other->data, static_cast<size_t>(other->dataCount));
    dataCount = other->dataCount;
    dataSize = other->dataCount + 1;
  }
  data = copyOfData;
  startQuanta = other->startQuanta;
  endQuanta = other->endQuanta;
  type = other->type;
  noteNumber = other->noteNumber;
  velocity = other->velocity;
  releaseVelocity = other->releaseVelocity;
  channel = other->channel;
  phraseBegin = other->phraseBegin;
  phraseEnd = other->phraseEnd;
  soundID = other->soundID;
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
  const bool hasNoRoom = data == nullptr || dataSize < 1;
  if (hasNoRoom || dataCount >= dataSize) {
    const int size = hasNoRoom ? firstDataSize : std::max(grownCapacity(dataSize), dataSize + 1);
    auto* resized = static_cast<unsigned char*>(systemRealloc(hasNoRoom ? nullptr : data, static_cast<size_t>(size)));
    if (resized == nullptr) return false;
    if (hasNoRoom) dataCount = 0;
    data = resized;
    dataSize = size;
  }
  data[dataCount++] = byte;
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
