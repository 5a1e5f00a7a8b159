#include "music/ZQFileNameList.h"

#include <algorithm>
#include <cstring>
#include <new>

#include "frame/ZQGrowth.h"
#include "frame/ZQMemory.h"

namespace {

constexpr int firstCapacity = 32;
constexpr int comparedCharacters = 256;

}  // namespace

ZQFileNameList::ZQFileNameList() {
  fileNameList_ = systemMallocArray<char*>(firstCapacity);
  init();
}

ZQFileNameList::~ZQFileNameList() {
  deleteAllFileNames();
  systemFree(fileNameList_);
}

void ZQFileNameList::init() {
  if (fileNameList_ == nullptr) return;
  numberOfFileNames_ = 0;  // the names now belong to the caller
  auto** slots = static_cast<char**>(systemRealloc(fileNameList_, firstCapacity * sizeof(char*)));
  if (slots == nullptr) return;
  fileNameList_ = slots;
  internalNumberOfFileNames_ = firstCapacity;
  std::fill_n(fileNameList_, firstCapacity, nullptr);
}

void ZQFileNameList::addFileName(char* name) {
  if (name == nullptr) return;
  if (numberOfFileNames_ >= internalNumberOfFileNames_) {
    const int capacity = std::max(zmatrix::grownCapacity(internalNumberOfFileNames_), firstCapacity);
    auto** slots = capacity > numberOfFileNames_
                       ? static_cast<char**>(systemRealloc(fileNameList_, static_cast<size_t>(capacity) * sizeof(char*)))
                       : nullptr;
    if (slots == nullptr) return systemFree(name);
    fileNameList_ = slots;
    internalNumberOfFileNames_ = capacity;
  }
  fileNameList_[numberOfFileNames_++] = name;
}

char* ZQFileNameList::getFileNameAtIndex(int index) const {
  return index >= 0 && index < numberOfFileNames_ ? fileNameList_[index] : nullptr;
}

void ZQFileNameList::deleteFileNameAtIndex(int index) {
  if (index < 0 || index >= numberOfFileNames_) return;
  systemFree(fileNameList_[index]);
  std::copy(fileNameList_ + index + 1, fileNameList_ + numberOfFileNames_, fileNameList_ + index);
  fileNameList_[--numberOfFileNames_] = nullptr;
}

void ZQFileNameList::deleteAllFileNames() {
  for (int i = 0; i < numberOfFileNames_; i++) systemFree(fileNameList_[i]);
  numberOfFileNames_ = 0;
}

void ZQFileNameList::sortByFunction(zmatrix::ZQCompareFunction compare) {
  zmatrix::sortPointersByFunction(fileNameList_, numberOfFileNames_, compare);
}

ZQFileNameList* createZQFileNameList() {
  return new (std::nothrow) ZQFileNameList;
}

void deleteZQFileNameList(ZQFileNameList* list) {
  delete list;
}

void deleteZQFileNameListOnlyReferences(ZQFileNameList* list) {
  if (list == nullptr) return;
  list->numberOfFileNames_ = 0;
  delete list;
}

int ZQCompareFileNames(const void* a, const void* b) {
  if (a == nullptr || b == nullptr) return 0;
  const char* nameA = *static_cast<const char* const*>(a);
  const char* nameB = *static_cast<const char* const*>(b);
  return nameA == nullptr || nameB == nullptr ? 0 : std::strncmp(nameA, nameB, comparedCharacters);
}
