// The info record of a sub-matrix, full tier: adds the links to the levels below and above, and the counters of symbols.
#pragma once

#include "settings/ZQMatrixMediumInfo.h"

class ZQMatrixInfo : public ZQMatrixMediumInfo {
 public:
  ZQMatrixInfo() = default;
  ~ZQMatrixInfo() override = default;

  int initMatrixInfo(int id);
  void deInitMatrixInfo();

  int getCurrentMatrixIDLevelDown() const { return currentMatrixIdLevelDown_; }
  int getCurrentMatrixIDLevelUp() const { return currentMatrixIdLevelUp_; }
  int getNumberOfSymbols() const { return numberOfSymbols_; }
  int getNewSymbol() const { return newSymbol_; }
  void setNewSymbol(int value) { newSymbol_ = value; }
  int getKeepSymbolsWhenRemoveOverdeterminedElements() const { return keepSymbolsWhenRemoveOverdeterminedElements_; }
  void setKeepSymbolsWhenRemoveOverdeterminedElements(int value) {
    storeFlag(keepSymbolsWhenRemoveOverdeterminedElements_, value, "setKeepSymbolsWhenRemoveOverdeterminedElements");
  }
  /// Negative values are refused: a link can be changed but not removed.
  void setCurrentMatrixIDLevelDown(int id) { storeLevelLink(currentMatrixIdLevelDown_, id, "setCurrentMatrixIDLevelDown"); }
  void setCurrentMatrixIDLevelUp(int id) { storeLevelLink(currentMatrixIdLevelUp_, id, "setCurrentMatrixIDLevelUp"); }

  /// Removes a link, for files whose link leads to no sub-matrix.
  void _cutLevelLinkDown() { currentMatrixIdLevelDown_ = -1; }
  void _cutLevelLinkUp() { currentMatrixIdLevelUp_ = -1; }

  void incrementNumberOfSymbols() { numberOfSymbols_ = zmatrix::successorOf(numberOfSymbols_); }
  void decrementNumberOfSymbols() { numberOfSymbols_ = zmatrix::predecessorOf(numberOfSymbols_); }
  void incrementNewSymbol() { newSymbol_ = zmatrix::successorOf(newSymbol_); }

  ZQMatrixProperties* getGlobalMatrixInfoParameters();
  void printMatrixInfo();

  void writeUpdateInfo(zmatrix::ZQFileWriter& file, int withSequence);
  int readUpdateInfo(zmatrix::ZQFileReader& file, int withSequence);

 protected:
  // The fields, described in ZQMatrixFields.cpp.
  int currentMatrixIdLevelDown_ = 0;
  int currentMatrixIdLevelUp_ = 0;
  int numberOfSymbols_ = 0;
  int newSymbol_ = 0;
  int keepSymbolsWhenRemoveOverdeterminedElements_ = 0;

 private:
  friend struct zmatrix::FieldTable;
  template <class Fields>
  void describeFullPart(Fields& fields);
  static void storeLevelLink(int& link, int id, const char* setter);
};
