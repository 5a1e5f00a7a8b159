// An index vector with a record for each preprocessing step applied to it, which the inverse of the step needs: one record per
// level. Level -1 is the original; a forward step makes a new object one level up, an inverse step one a level down. The data can
// be a block that a host has handed over. For an index or level out of range, getters return -1, 0 or null, and setters do
// nothing.
#pragma once

#include "frame/ZQArray.h"

/// The record of a level: the step applied, and what its inverse needs.
struct tagSequenceInfo {
  int coordDimensionAfterPreproc;                       ///< integers per item after this level's step
  int* usedPreprocessingVector;                         ///< one entry per coordinate, owned
  int usedPreprocessingType;                            ///< the type that this level applied
  int numberOfOriginalItemsNeededForInversePreProcess;  ///< integers in originalIndexItems
  int* originalIndexItems;                              ///< the head of the vector before this level's step, owned
  int internalLengthOfOriginalIndexItems;               ///< capacity in integers
};

class ZQMatrixSequenceIndexVector {
 public:
  ZQMatrixSequenceIndexVector();
  virtual ~ZQMatrixSequenceIndexVector();
  ZQMatrixSequenceIndexVector(const ZQMatrixSequenceIndexVector&) = delete;
  ZQMatrixSequenceIndexVector& operator=(const ZQMatrixSequenceIndexVector&) = delete;

  int getCoordDimension() const { return coordDimension_; }
  void setCoordDimension(int dimension) { coordDimension_ = dimension; }
  int getLengthOfIndexVector() const { return lengthOfIndexVector_; }
  int getLengthOfIndexVectorInfos() const { return lengthOfIndexVectorInfos_; }
  void setLengthOfIndexVectorInfos(int length) { lengthOfIndexVectorInfos_ = length; }
  int getCurrentLevelOfPreprocOperations() const { return levelOfPreprocOperations_; }
  int getApplyPreprocessingType() const { return applyPreprocessingType_; }
  void setApplyPreprocessingType(int type) { applyPreprocessingType_ = type; }
  int* getApplyPreprocessingTypeVector() { return applyPreprocessingTypeVector_.data(); }
  int* getIndexVector() { return indexVector_.data(); }
  const int* getIndexVector() const { return indexVector_.data(); }
  tagSequenceInfo* getIndexVectorInfos() { return indexVectorInfos_.data(); }
  int _getInternalLengthOfIndexVector() const { return indexVector_.count(); }
  int _getInternalLengthOfIndexVectorInfos() const { return indexVectorInfos_.count(); }

  /// Makes room for the record of this level. Changes nothing if there is no room.
  void setCurrentLevelOfPreprocOperations(int level);

  int getApplyPreprocessingTypeAtIndex(int index) const;
  void setApplyPreprocessingTypeAtIndex(int value, int index);
  /// Sets the dimension to `count` and copies the types.
  void setApplyPreprocessingTypeVector(const int* types, int count);

  /// Copies the data. Does nothing if the object has no block.
  void setIndexVector(const int* data, int length);
  /// Takes over a block of systemMalloc and releases the old one. False, with the block left to the caller, if the object has no
  /// block.
  [[nodiscard]] bool setIndexVectorReference(int* data, int length);
  void removeAllSequenceItems();
  void addSequenceItem(int item);
  int getIndexItemAtIndex(int index) const;

  // The following methods use the record of the current level.
  int getOriginalIndexItemAtIndex(int index) const;
  void addOriginalSequenceItem(int item);
  void removeAllOriginalSequenceItems();
  void setOriginalIndexItems(const int* items, int count);
  int* getOriginalIndexItems() const;
  int getNumberOfOriginalItemsNeededForInversePreProcess() const;
  int getCoordDimensionAfterPreproc() const;
  void setCoordDimensionAfterPreproc(int dimension);
  int getUsedPreprocessingType() const;
  void _setUsedPreprocessingType(int type);
  int* getUsedPreprocessingVector() const;
  int getUsedPreprocessingTypeAtIndex(int index) const;
  void setUsedPreprocessingTypeAtIndex(int index, int value);

  /// Deep copy of everything except the data; the block gets the capacity of the other's.
  void setPropertiesFrom(const ZQMatrixSequenceIndexVector* other);
  void copyFrom(const ZQMatrixSequenceIndexVector* other);

  void initZQSequenceInfoWithNull(tagSequenceInfo* info);
  void clearZQSequenceInfo(tagSequenceInfo* info);

 private:
  const tagSequenceInfo* currentInfo() const;
  tagSequenceInfo* currentInfo();
  bool reserveInfos(long long numberOfInfos);
  [[nodiscard]] bool reserveOriginalItems(tagSequenceInfo* info, long long capacity);
  [[nodiscard]] bool copyInfosFrom(const ZQMatrixSequenceIndexVector& other);
  void releaseInfos();

  int coordDimension_ = 1;
  int lengthOfIndexVector_ = 0;
  int lengthOfIndexVectorInfos_ = 0;
  int levelOfPreprocOperations_ = -1;
  int applyPreprocessingType_ = 0;
  zmatrix::ZQArray<int> applyPreprocessingTypeVector_;  ///< one entry more than were given
  zmatrix::ZQArray<int> indexVector_;                   ///< the data, followed by spare room
  zmatrix::ZQArray<tagSequenceInfo> indexVectorInfos_;
};

ZQMatrixSequenceIndexVector* createZQMatrixSequenceIndexVector();
void deleteZQMatrixSequenceIndexVector(ZQMatrixSequenceIndexVector* vector);
