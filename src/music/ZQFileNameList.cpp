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
  fileNameList = systemMallocArray<char*>(firstCapacity);
  init();
}

ZQFileNameList::~ZQFileNameList() {
  deleteAllFileNames();
  systemFree(fileNameList);
}

void ZQFileNameList::init() {
  if (fileNameList == nullptr) return;
  numberOfFileNames = 0;  // the names now belong to the caller
  auto** slots = static_cast<char**>(systemRealloc(fileNameList, firstCapacity * sizeof(char*)));
  if (slots == nullptr) return;
  fileNameList = slots;
  internalNumberOfFileNames = firstCapacity;
  std::fill_n(fileNameList, firstCapacity, nullptr);
}

void ZQFileNameList::addFileName(char* name) {
  if (name == nullptr) return;
  if (numberOfFileNames >= internalNumberOfFileNames) {
    const int capacity = std::max(zmatrix::grownCapacity(internalNumberOfFileNames), firstCapacity);
    auto** slots = capacity > numberOfFileNames
                       ? static_cast<char**>(systemRealloc(fileNameList, static_cast<size_t>(capacity) * sizeof(char*)))
                       : nullptr;
    if (slots == nullptr) return systemFree(name);
    fileNameList = slots;
    internalNumberOfFileNames = capacity;
  }
  fileNameList[numberOfFileNames++] = name;
}

char* ZQFileNameList::getFileNameAtIndex(int index) const {
  return index >= 0 && index < numberOfFileNames ? fileNameList[index] : nullptr;
}

void ZQFileNameList::deleteFileNameAtIndex(int index) {
  if (index < 0 || index >= numberOfFileNames) return;
  systemFree(fileNameList[index]);
  std::copy(fileNameList + index + 1, fileNameList + numberOfFileNames, fileNameList + index);
  fileNameList[--numberOfFileNames] = nullptr;
}

void ZQFileNameList::deleteAllFileNames() {
  for (int i = 0; i < numberOfFileNames; i++) systemFree(fileNameList[i]);
  numberOfFileNames = 0;
}

void ZQFileNameList::sortByFunction(zmatrix::ZQCompareFunction compare) {
  zmatrix::sortPointersByFunction(fileNameList, numberOfFileNames, compare);
}

ZQFileNameList* createZQFileNameList() {
  return new (std::nothrow) ZQFileNameList;
}

void deleteZQFileNameList(ZQFileNameList* list) {
  delete list;
}

void deleteZQFileNameListOnlyReferences(ZQFileNameList* list) {
  if (list == nullptr) return;
  list->numberOfFileNames = 0;
  delete list;
}

int ZQCompareFileNames(const void* a, const void* b) {
  if (a == nullptr || b == nullptr) return 0;
  const char* nameA = *static_cast<const char* const*>(a);
  const char* nameB = *static_cast<const char* const*>(b);
  return nameA == nullptr || nameB == nullptr ? 0 : std::strncmp(nameA, nameB, comparedCharacters);
}
