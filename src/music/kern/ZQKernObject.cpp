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
  systemFree(buffer_);
}

void ZQKernObject::releaseText() {
  systemFree(buffer_);
  buffer_ = nullptr;
  byteCount_ = 0;
  std::memset(inlineStore_, 0, sizeof inlineStore_);
}

void ZQKernObject::init() {
  releaseText();
  type_ = noteNumber_ = channel_ = phraseBegin_ = phraseEnd_ = 0;
  timeQuanta_ = duration_ = firstValue_ = secondValue_ = 0;
  tempo_ = 0;
}

bool ZQKernObject::initFromKernObject(const ZQKernObject* other) {
  init();
  if (!setBuffer(std::string_view(other->getBuffer()))) return false;
  byteCount_ = other->byteCount_;
  type_ = other->type_;
  noteNumber_ = other->noteNumber_;
  channel_ = other->channel_;
  phraseBegin_ = other->phraseBegin_;
  phraseEnd_ = other->phraseEnd_;
  timeQuanta_ = other->timeQuanta_;
  duration_ = other->duration_;
  firstValue_ = other->firstValue_;
  secondValue_ = other->secondValue_;
  tempo_ = other->tempo_;
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
  char* store = inlineStore_;
  if (text.size() >= sizeof inlineStore_) store = buffer_ = systemMallocArray<char>(static_cast<long long>(text.size()) + 1);
  if (store == nullptr) return false;
  std::memcpy(store, text.data(), text.size());
  store[text.size()] = 0;
  byteCount_ = static_cast<int>(text.size());
  return true;
}

unsigned char ZQKernObject::textByteAt(int index) const {
  const std::string_view text = getBuffer();
  return index >= 0 && static_cast<size_t>(index) < text.size() ? static_cast<unsigned char>(text[static_cast<size_t>(index)])
                                                                : 0;
}

int ZQKernObject::getKeySignature(int* second) const {
  const bool isOne = type_ == ZQKernObjectKeySignature;
  if (second != nullptr) *second = isOne ? secondValue_ : 0;
  return isOne ? firstValue_ : 0;
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
