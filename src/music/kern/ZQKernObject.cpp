#include "music/kern/ZQKernObject.h"

#include <cstring>

#include "frame/ZQMemory.h"
#include "music/ZQClassSlab.h"

namespace zmatrix {

namespace {

int order(int first, int second) {
  return (first > second) - (first < second);
}

}  // namespace

void* ZQKernObject::operator new(size_t) noexcept {
  return ZQClassSlab<ZQKernObject>::allocate();
}

void ZQKernObject::operator delete(void* memory) noexcept {
  ZQClassSlab<ZQKernObject>::release(memory);
}

ZQKernObject::~ZQKernObject() {
  systemFree(buffer);
}

void ZQKernObject::releaseText() {
  systemFree(buffer);
  buffer = nullptr;
  byteCount = 0;
  std::memset(inlineStore, 0, sizeof inlineStore);
}

void ZQKernObject::init() {
  releaseText();
  type = noteNumber = channel = phraseBegin = phraseEnd = 0;
  timeQuanta = duration = firstValue = secondValue = 0;
  tempo = 0;
}

bool ZQKernObject::initFromKernObject(const ZQKernObject* other) {
  init();
  if (!setBuffer(std::string_view(other->getBuffer()))) return false;
  byteCount = other->byteCount;
  type = other->type;
  noteNumber = other->noteNumber;
  channel = other->channel;
  phraseBegin = other->phraseBegin;
  phraseEnd = other->phraseEnd;
  timeQuanta = other->timeQuanta;
  duration = other->duration;
  firstValue = other->firstValue;
  secondValue = other->secondValue;
  tempo = other->tempo;
  return true;
}

ZQKernObject* ZQKernObject::createAndCopy() const {
  ZQKernObject* copy = createZQKernObject();
  if (copy != nullptr && !copy->initFromKernObject(this)) {
    deleteZQKernObject(copy);
    return nullptr;
  }
  return copy;
}

bool ZQKernObject::setBuffer(const char* text) {
  return setBuffer(text != nullptr ? std::string_view(text) : std::string_view());
}

bool ZQKernObject::setBuffer(std::string_view text) {
  releaseText();
  char* store = inlineStore;
  if (text.size() >= sizeof inlineStore) store = buffer = systemMallocArray<char>(static_cast<long long>(text.size()) + 1);
  if (store == nullptr) return false;
  std::memcpy(store, text.data(), text.size());
  store[text.size()] = 0;
  byteCount = static_cast<int>(text.size());
  return true;
}

unsigned char ZQKernObject::textByteAt(int index) const {
  const std::string_view text = getBuffer();
  return index >= 0 && static_cast<size_t>(index) < text.size() ? static_cast<unsigned char>(text[static_cast<size_t>(index)])
                                                                : 0;
}

int ZQKernObject::getKeySignature(int* second) const {
  const bool isOne = type == ZQKernObjectKeySignature;
  if (second != nullptr) *second = isOne ? secondValue : 0;
  return isOne ? firstValue : 0;
}

ZQKernObject* createZQKernObject() {
  return new ZQKernObject;
}

ZQKernObject* createAndInitZQKernObjectOfType(int type, int time) {
  ZQKernObject* object = createZQKernObject();
  if (object == nullptr) return nullptr;
  object->setType(static_cast<unsigned char>(type));
  object->setTimeQuanta(time);
  return object;
}

void deleteZQKernObject(ZQKernObject* object) {
  delete object;
}

int ZQCompareKernObjectsAscending(const void* first, const void* second) {
  const auto* a = *static_cast<const ZQKernObject* const*>(first);
  const auto* b = *static_cast<const ZQKernObject* const*>(second);
  const int byTime = order(a->getTimeQuanta(), b->getTimeQuanta());
  if (byTime != 0) return byTime;
  const int byNote = order(a->getNoteNumber(), b->getNoteNumber());
  return byNote != 0 ? byNote : order(a->getChannel(), b->getChannel());
}

}  // namespace zmatrix
