// What the matrix classes offer of their header and of the current sub-matrix's info record. Each tier's forwards stand between
// the class and the tier below, so that what a tier extends hides what it inherits:
//
//   class ZQMatrixBase   : public ZQMatrixBaseForwards<ZQMatrixBase>
//   class ZQMatrixMedium : public ZQMatrixMediumForwards<ZQMatrixMedium, ZQMatrixBase>
//   class ZQMatrix       : public ZQMatrixFullForwards<ZQMatrix, ZQMatrixMedium>
//
// Of the matrix class they need getMatrixFileHeader(), getMatrixInfo() for the current sub-matrix and getMatrixInfo(int id), both
// with the tier's own record. Like a direct call, a forward expects these to be there.
#pragma once

#include "settings/ZQMatrixPrintouts.h"
#include "settings/ZQMatrixProfiles.h"

#define ZQ_FORWARDED_RECORD static_cast<Matrix*>(this)->getMatrixInfo()
#define ZQ_FORWARDED_HEADER static_cast<Matrix*>(this)->getMatrixFileHeader()
#define ZQ_FORWARD_RECORD_GET(result, method, target) \
  result method() {                                   \
    return ZQ_FORWARDED_RECORD->target();             \
  }
#define ZQ_FORWARD_RECORD_SET(type, method, target) \
  void method(type value) {                         \
    ZQ_FORWARDED_RECORD->target(value);             \
  }
#define ZQ_FORWARD_RECORD_ARRAY(result, method, target)  \
  result method(int* numberOfEntries) {                  \
    return ZQ_FORWARDED_RECORD->target(numberOfEntries); \
  }
#define ZQ_FORWARD_RECORD_COPY(result, method, target)     \
  result method(int* length, int* dimension) {             \
    return ZQ_FORWARDED_RECORD->target(length, dimension); \
  }
#define ZQ_FORWARD_HEADER_GET(result, method, target) \
  result method() {                                   \
    return ZQ_FORWARDED_HEADER->target();             \
  }
#define ZQ_FORWARD_HEADER_SET(type, method, target) \
  void method(type value) {                         \
    ZQ_FORWARDED_HEADER->target(value);             \
  }

template <class Matrix>
struct ZQMatrixBaseForwards {
#define ZQ_BASE_FORWARDS
#define ZQ_RECORD_GET ZQ_FORWARD_RECORD_GET
#define ZQ_RECORD_SET ZQ_FORWARD_RECORD_SET
#define ZQ_RECORD_ARRAY ZQ_FORWARD_RECORD_ARRAY
#define ZQ_RECORD_COPY ZQ_FORWARD_RECORD_COPY
#define ZQ_HEADER_GET ZQ_FORWARD_HEADER_GET
#define ZQ_HEADER_SET ZQ_FORWARD_HEADER_SET
#include "settings/ZQMatrixForwards.def"

  // The global blocks: the same names as the header's.
#define ZQ_BASIC_BLOCK_FORWARDS(type, name, Name)               \
  ZQ_FORWARD_HEADER_GET(type, getGlobal##Name, getGlobal##Name) \
  ZQ_FORWARD_HEADER_SET(type, setGlobal##Name, setGlobal##Name)
#define ZQ_BLOCK_FORWARDS(type, name, Name)                                 \
  ZQ_BASIC_BLOCK_FORWARDS(type, name, Name)                                 \
  ZQ_FORWARD_HEADER_GET(type, getGlobalSymbol##Name, getGlobalSymbol##Name) \
  ZQ_FORWARD_HEADER_SET(type, setGlobalSymbol##Name, setGlobalSymbol##Name)
#define ZQ_TEXT_FORWARDS(Name)                                               \
  ZQ_FORWARD_HEADER_GET(char*, getGlobal##Name, getGlobal##Name)             \
  ZQ_FORWARD_HEADER_SET(const char*, setGlobal##Name, setGlobal##Name)       \
  ZQ_FORWARD_HEADER_GET(char*, getGlobalSymbol##Name, getGlobalSymbol##Name) \
  ZQ_FORWARD_HEADER_SET(const char*, setGlobalSymbol##Name, setGlobalSymbol##Name)
#define ZQ_SETTING(type, name, Name, initial, symbolInitial, sinceVersion) ZQ_BLOCK_FORWARDS(int, name, Name)
#define ZQ_UNSAVED_SETTING(type, name, Name) ZQ_BLOCK_FORWARDS(int, name, Name)
#define ZQ_OCRON_SETTING(type, name, Name, initial, symbolInitial, sinceVersion) ZQ_BASIC_BLOCK_FORWARDS(int, name, Name)
#define ZQ_TEXT_SETTING(name, Name, bytes) ZQ_TEXT_FORWARDS(Name)
#define ZQ_BYTES_SETTING(name, Name, bytes) ZQ_TEXT_FORWARDS(Name##Array)
#include "settings/ZQMatrixSettings.def"
#undef ZQ_BASIC_BLOCK_FORWARDS
#undef ZQ_BLOCK_FORWARDS
#undef ZQ_TEXT_FORWARDS

  /// A flat copy of the current sub-matrix's values, which its record keeps until the next call.
  ZQMatrixProperties* getGlobalMatrixInfoParameters() {
    return ZQ_FORWARDED_RECORD->getGlobalMatrixInfoParameters();
  }
  void releaseMemoryGlobalMatrixInfoParameters() {
    ZQ_FORWARDED_RECORD->releaseMemoryGlobalMatrixInfoParameters();
  }
  /// The history of the file that the matrix was read from.
  void readMatrixUpdateInfos(int* count) {
    ZQ_FORWARDED_HEADER->readMatrixUpdateInfos(count);
  }
  ZQMatrixBaseInfo* getMatrixUpdateInfo(int index) {
    return ZQ_FORWARDED_HEADER->getMatrixUpdateInfo(index);
  }
  void setDefaultMatrixPropertiesForRandomReadWrite() {
    zmatrix::setDefaultMatrixPropertiesForRandomReadWrite(*ZQ_FORWARDED_RECORD);
  }
  void showBasicProperties() {
    zmatrix::showBasicProperties(static_cast<Matrix&>(*this));
  }
  void printMatrixOverallInfo() {
    zmatrix::printMatrixOverallInfo(static_cast<Matrix&>(*this));
  }
};

template <class Matrix, class Below>
struct ZQMatrixMediumForwards : public Below {
  using Below::Below;

#define ZQ_MEDIUM_FORWARDS
#define ZQ_RECORD_GET ZQ_FORWARD_RECORD_GET
#define ZQ_RECORD_SET ZQ_FORWARD_RECORD_SET
#define ZQ_RECORD_ARRAY ZQ_FORWARD_RECORD_ARRAY
#define ZQ_RECORD_COPY ZQ_FORWARD_RECORD_COPY
#define ZQ_HEADER_GET ZQ_FORWARD_HEADER_GET
#define ZQ_HEADER_SET ZQ_FORWARD_HEADER_SET
#include "settings/ZQMatrixForwards.def"

  // The successor generators, by matrix ID. An ID that does not exist answers 0 and takes nothing.
  long long getSuccessorRandomValue(int id) {
    return exists(id) ? recordOf(id)->getSuccessorRandomValue() : 0;
  }
  long long getActualSuccessorRandomValue(int id) {
    return exists(id) ? recordOf(id)->getActualSuccessorRandomValue() : 0;
  }
  void setSuccessorRandomValue(int id, long long value) {
    if (exists(id)) recordOf(id)->setSuccessorRandomValue(value);
  }
  int getSuccessorRandomType(int id) {
    return exists(id) ? recordOf(id)->getSuccessorRandomType() : 0;
  }
  /// Stores on a matrix that holds something only, the reverse of what its message says.
  void setSuccessorRandomType(int id, int type) {
    if (!exists(id)) return;
    if (recordOf(id)->getNumberOfMatrixElements() != 0 && recordOf(id)->getNumberOfWriteElements() != 0) {
      recordOf(id)->setSuccessorRandomType(type);
    } else {
      dbPrintf(0, "setSuccessorRandomType: can only be set for an empty matrix\n");
    }
  }
  int resetKernelSequence(int resetInitialValues) {
    return ZQ_FORWARDED_RECORD->resetKernelSequence(static_cast<Matrix*>(this)->getCurrentMatrixID(), resetInitialValues);
  }

#define ZQ_PROFILE(Name)                                                                                                 \
  void setDefaultMatrixPropertiesFor##Name(const char* updateFile) {                                                     \
    zmatrix::setDefaultMatrixProperties(zmatrix::Profile::Name, *ZQ_FORWARDED_RECORD, *ZQ_FORWARDED_HEADER, updateFile); \
  }                                                                                                                      \
  void setGlobalDefaultMatrixPropertiesFor##Name() {                                                                     \
    zmatrix::setGlobalDefaultMatrixProperties(zmatrix::Profile::Name, *ZQ_FORWARDED_HEADER);                             \
  }                                                                                                                      \
  int checkMatrixPropertiesFor##Name() {                                                                                 \
    return zmatrix::checkMatrixProperties(zmatrix::Profile::Name, *ZQ_FORWARDED_RECORD);                                 \
  }                                                                                                                      \
  int checkGlobalMatrixPropertiesFor##Name() {                                                                           \
    return zmatrix::checkGlobalMatrixProperties(zmatrix::Profile::Name, *ZQ_FORWARDED_HEADER);                           \
  }
#include "settings/ZQMatrixProfiles.def"
  void setGlobalSymbolDefaultMatrixPropertiesForSymbols() {
    zmatrix::setGlobalSymbolDefaultMatrixPropertiesForSymbols(*ZQ_FORWARDED_HEADER);
  }
  int checkGlobalSymbolMatrixPropertiesForSymbols() {
    return zmatrix::checkGlobalSymbolMatrixPropertiesForSymbols(*ZQ_FORWARDED_HEADER);
  }
  void applyGlobalMatrixProperties() {
    zmatrix::applyGlobalMatrixProperties(*ZQ_FORWARDED_RECORD, *ZQ_FORWARDED_HEADER);
  }
  void applyGlobalSymbolMatrixProperties() {
    zmatrix::applyGlobalSymbolMatrixProperties(*ZQ_FORWARDED_RECORD, *ZQ_FORWARDED_HEADER);
  }

  ZQMatrixProperties* getGlobalMatrixInfoParameters() {
    return ZQ_FORWARDED_RECORD->getGlobalMatrixInfoParameters();
  }
  void showBasicProperties() {
    zmatrix::showBasicProperties(static_cast<Matrix&>(*this));
  }
  void printMatrixOverallInfo() {
    zmatrix::printMatrixOverallInfo(static_cast<Matrix&>(*this));
  }

 private:
  auto recordOf(int id) {
    return static_cast<Matrix*>(this)->getMatrixInfo(id);
  }
  bool exists(int id) {
    return id >= 0 && id < ZQ_FORWARDED_HEADER->getMaxNumberOfMatrices() && recordOf(id) != nullptr;
  }
};

template <class Matrix, class Below>
struct ZQMatrixFullForwards : public Below {
  using Below::Below;

#define ZQ_FULL_FORWARDS
#define ZQ_RECORD_GET ZQ_FORWARD_RECORD_GET
#define ZQ_RECORD_SET ZQ_FORWARD_RECORD_SET
#define ZQ_RECORD_ARRAY ZQ_FORWARD_RECORD_ARRAY
#define ZQ_RECORD_COPY ZQ_FORWARD_RECORD_COPY
#define ZQ_HEADER_GET ZQ_FORWARD_HEADER_GET
#define ZQ_HEADER_SET ZQ_FORWARD_HEADER_SET
#include "settings/ZQMatrixForwards.def"

#define ZQ_PROFILE(Name)                                                                                                 \
  void setDefaultMatrixPropertiesFor##Name(const char* updateFile) {                                                     \
    zmatrix::setDefaultMatrixProperties(zmatrix::Profile::Name, *ZQ_FORWARDED_RECORD, *ZQ_FORWARDED_HEADER, updateFile); \
  }                                                                                                                      \
  void setGlobalDefaultMatrixPropertiesFor##Name() {                                                                     \
    zmatrix::setGlobalDefaultMatrixPropertiesOfFullTier(zmatrix::Profile::Name, *ZQ_FORWARDED_HEADER);                   \
  }                                                                                                                      \
  int checkGlobalMatrixPropertiesFor##Name() {                                                                           \
    return zmatrix::checkGlobalMatrixPropertiesOfFullTier(zmatrix::Profile::Name, *ZQ_FORWARDED_HEADER);                 \
  }
#define ZQ_PROFILE_WITHOUT_WRAPPER(Name)
#include "settings/ZQMatrixProfiles.def"
  void setGlobalSymbolDefaultMatrixPropertiesForSymbols() {
    zmatrix::setGlobalSymbolDefaultMatrixPropertiesForSymbolsOfFullTier(*ZQ_FORWARDED_HEADER);
  }
  int checkGlobalSymbolMatrixPropertiesForSymbols() {
    return zmatrix::checkGlobalSymbolMatrixPropertiesForSymbolsOfFullTier(*ZQ_FORWARDED_HEADER);
  }
  void applyGlobalMatrixProperties() {
    zmatrix::applyGlobalMatrixProperties(*ZQ_FORWARDED_RECORD, *ZQ_FORWARDED_HEADER);
  }
  void applyGlobalSymbolMatrixProperties() {
    zmatrix::applyGlobalSymbolMatrixProperties(*ZQ_FORWARDED_RECORD, *ZQ_FORWARDED_HEADER);
  }

  ZQMatrixProperties* getGlobalMatrixInfoParameters() {
    return ZQ_FORWARDED_RECORD->getGlobalMatrixInfoParameters();
  }
  void showBasicProperties() {
    zmatrix::showBasicProperties(static_cast<Matrix&>(*this));
  }
  void printMatrixOverallInfo() {
    zmatrix::printMatrixOverallInfo(static_cast<Matrix&>(*this));
  }
};

#undef ZQ_FORWARDED_RECORD
#undef ZQ_FORWARDED_HEADER
#undef ZQ_FORWARD_RECORD_GET
#undef ZQ_FORWARD_RECORD_SET
#undef ZQ_FORWARD_RECORD_ARRAY
#undef ZQ_FORWARD_RECORD_COPY
#undef ZQ_FORWARD_HEADER_GET
#undef ZQ_FORWARD_HEADER_SET
