#include "sequence/ZQMediumVerification.h"

#include <algorithm>

namespace zmatrix {

namespace {

using CountsInDimension = int* (ZQMatrixMediumInfo::*)(int*);

void addOne(ZQMatrixMediumInfo& info, CountsInDimension counts, int length) {
  int numberOfDimensions = 0;
  int* countsOfRecord = (info.*counts)(&numberOfDimensions);
  if (length >= 1 && length <= numberOfDimensions) ++countsOfRecord[length - 1];
}

}  // namespace

ZQMediumVerification::ZQMediumVerification(ZQMatrixMedium& matrix, const zmatrix::VerificationTexts&) : matrix_(matrix) {
  links_.build(matrix_);  // if memory runs out, each path is looked up from the root
  ZQMatrixMediumInfo& info = *matrix_.getMatrixInfo();
  info.setNumberOfRuleElements(0);
  info.setNumberOfUniqueRuleElements(0);
  info.setNumberOfOverDeterminedRules(0);
  for (const CountsInDimension counts : {&ZQMatrixMediumInfo::getRulesInDimension, &ZQMatrixMediumInfo::getUniqueRulesInDimension,
                                         &ZQMatrixMediumInfo::getWriteElementsInDimension}) {
    int size = 0;
    int* countsOfRecord = (info.*counts)(&size);
    std::fill(countsOfRecord, countsOfRecord + size, 0);
  }
}

bool ZQMediumVerification::look(int position, const ZQMatrixMediumElement& element, const int* path, int length) {
  if (countRule(position, element, path, length) || !isPhraseMatrix()) return true;
  dbPrintf(0, "error matrixLinear-Test for matrix ID %d: point without rule  unexpected for phrase-Matrix\n",
           matrix_.getCurrentMatrixID());
  return false;
}

bool ZQMediumVerification::countRule(int position, const ZQMatrixMediumElement& element, const int* path, int length) {
  ZQMatrixMediumInfo& info = *matrix_.getMatrixInfo();
  addOne(info, &ZQMatrixMediumInfo::getWriteElementsInDimension, length);
  if (element.getWriteCountWithoutPredecessor() > 0) ++numberOfStarts_;
  const int timesDetermined =
      links_.isKnown(position) ? matrix_.isDeterminedUpToTwice(links_, position) : matrix_.isDeterminedUpToTwice(path, length);
  if (timesDetermined > 0) {
    info.incrementNumberOfUniqueRuleElements();
    addOne(info, &ZQMatrixMediumInfo::getUniqueRulesInDimension, length);
  }
  if (timesDetermined >= 2) info.incrementNumberOfOverDeterminedRules();
  if (!matrix_.isRuleAt(position)) return false;
  info.incrementNumberOfRuleElements();
  addOne(info, &ZQMatrixMediumInfo::getRulesInDimension, length);
  return true;
}

bool ZQMediumVerification::compareDepthAndKernel(int deepest) {
  const ZQMatrixMediumInfo& info = *matrix_.getMatrixInfo();
  bool isSound = true;
  // Not a fault: deleting the deepest paths doesn't reduce the dimension.
  if (info.getCurrentDimension() != deepest) {
    dbPrintf(0, "matrixLinearTest: error: dimension(%d) != dimension1(%d)\n", info.getCurrentDimension(), deepest);
  }
  if (info.getLengthOfKernelOriginalSequence() < 0) {
    dbPrintf(0, "error matrixLinear-Test: getLengthOfKernelOriginalSequence = %d unexpected\n",
             info.getLengthOfKernelOriginalSequence());
    isSound = false;
  }
  if (info.getLengthOfKernelPreProcessedSequence() < 0) {
    dbPrintf(0, "error matrixLinear-Test: getLengthOfKernelPreProcessedSequence = %d unexpected\n",
             info.getLengthOfKernelPreProcessedSequence());
    isSound = false;
  }
  return isSound;
}

bool ZQMediumVerification::compareCounts() {
  const ZQMatrixMediumInfo& info = *matrix_.getMatrixInfo();
  if (numberOfStarts_ == info.getNumberOfStartElements()) return true;
  dbPrintf(0, "error matrixLinear-Test: numberOfStartElementsInMatrix differs from _numberOfStart %d <-> %d\n", numberOfStarts_,
           info.getNumberOfStartElements());
  return false;
}

}  // namespace zmatrix
