// The info record of a sub-matrix, full tier: adds its place among the symbol levels and the count of its symbols.
#pragma once

#include "settings/ZQMatrixMediumInfo.h"

class ZQMatrixInfo : public ZQMatrixMediumInfo {
 public:
  ZQMatrixInfo() = default;
  ~ZQMatrixInfo() override = default;

  int initMatrixInfo(int id);
  void deInitMatrixInfo();

  int getCurrentMatrixIDLevelDown() const { return currentMatrixIDLevelDown; }
  int getCurrentMatrixIDLevelUp() const { return currentMatrixIDLevelUp; }
  int getNumberOfSymbols() const { return numberOfSymbols; }
  int getNewSymbol() const { return newSymbol; }
  void setNewSymbol(int value) { newSymbol = value; }
  int getKeepSymbolsWhenRemoveOverdeterminedElements() const { return keepSymbolsWhenRemoveOverdeterminedElements; }
  void setKeepSymbolsWhenRemoveOverdeterminedElements(int value) {
    storeFlag(keepSymbolsWhenRemoveOverdeterminedElements, value, "setKeepSymbolsWhenRemoveOverdeterminedElements");
  }
  /// The links refuse negative values, so a link that is set can be changed but not removed.
  void setCurrentMatrixIDLevelDown(int id) { storeLevelLink(currentMatrixIDLevelDown, id, "setCurrentMatrixIDLevelDown"); }
  void setCurrentMatrixIDLevelUp(int id) { storeLevelLink(currentMatrixIDLevelUp, id, "setCurrentMatrixIDLevelUp"); }

  /// Removes a link from a file that leads to no sub-matrix.
  void _cutLevelLinkDown() { currentMatrixIDLevelDown = -1; }
  void _cutLevelLinkUp() { currentMatrixIDLevelUp = -1; }

  void incrementNumberOfSymbols() { numberOfSymbols = zmatrix::successorOf(numberOfSymbols); }
  void decrementNumberOfSymbols() { numberOfSymbols = zmatrix::predecessorOf(numberOfSymbols); }
  void incrementNewSymbol() { newSymbol = zmatrix::successorOf(newSymbol); }

  ZQMatrixProperties* getGlobalMatrixInfoParameters();
  void printMatrixInfo();

  void writeUpdateInfo(zmatrix::ZQFileWriter& file, int withSequence);
  int readUpdateInfo(zmatrix::ZQFileReader& file, int withSequence);

 protected:
  // The fields, described in ZQMatrixFields.cpp.
  int currentMatrixIDLevelDown = 0;
  int currentMatrixIDLevelUp = 0;
  int numberOfSymbols = 0;
  int newSymbol = 0;
  int keepSymbolsWhenRemoveOverdeterminedElements = 0;

 private:
  friend struct zmatrix::FieldTable;
  template <class Fields>
  void describeFullPart(Fields& fields);
  static void storeLevelLink(int& link, int id, const char* setter);
};
