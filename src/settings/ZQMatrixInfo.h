// The info record of a sub-matrix, full tier: adds its place among the symbol levels and the count of its symbols.
#pragma once

#include "settings/ZQMatrixMediumInfo.h"

class ZQMatrixInfo : public ZQMatrixMediumInfo {
 public:
  ZQMatrixInfo() = default;
  ~ZQMatrixInfo() override = default;

  int initMatrixInfo(int id);
  void deInitMatrixInfo();

#define ZQ_FULL_ROWS
#define ZQ_FIELD(type, name, Name, initial, since, printType, format) \
  int get##Name() const {                                             \
    return name;                                                      \
  }
#include "settings/ZQMatrixInfoFields.def"
#define ZQ_FULL_ROWS
#define ZQ_PLAIN(type, name, Name, initial, since, printType, format) \
  void set##Name(int value) {                                         \
    name = value;                                                     \
  }
#define ZQ_FLAG(type, name, Name, initial, since, printType, format, label) \
  void set##Name(int value) {                                               \
    storeFlag(name, value, label);                                          \
  }
#include "settings/ZQMatrixInfoFields.def"
  /// The links refuse negative values, so a link once set can only be pointed elsewhere.
  void setCurrentMatrixIDLevelDown(int id) {
    storeLevelLink(currentMatrixIDLevelDown, id, "setCurrentMatrixIDLevelDown");
  }
  void setCurrentMatrixIDLevelUp(int id) {
    storeLevelLink(currentMatrixIDLevelUp, id, "setCurrentMatrixIDLevelUp");
  }

  /// For a link that a file has brought and that leads nowhere.
  void _cutLevelLinkDown() {
    currentMatrixIDLevelDown = -1;
  }
  void _cutLevelLinkUp() {
    currentMatrixIDLevelUp = -1;
  }

  void incrementNumberOfSymbols() {
    numberOfSymbols = zmatrix::successorOf(numberOfSymbols);
  }
  void decrementNumberOfSymbols() {
    numberOfSymbols = zmatrix::predecessorOf(numberOfSymbols);
  }
  void incrementNewSymbol() {
    newSymbol = zmatrix::successorOf(newSymbol);
  }

  ZQMatrixProperties* getGlobalMatrixInfoParameters();
  void printMatrixInfo();

  void writeUpdateInfo(zmatrix::ZQFileWriter& file, int withSequence);
  int readUpdateInfo(zmatrix::ZQFileReader& file, int withSequence);

 protected:
#define ZQ_FULL_ROWS
#define ZQ_FIELD(type, name, Name, initial, since, printType, format) type name{};
#include "settings/ZQMatrixInfoFields.def"

 private:
  template <class Fields>
  void describeFullPart(Fields& fields);
  static void storeLevelLink(int& link, int id, const char* setter);
};
