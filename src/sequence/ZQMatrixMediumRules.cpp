// The test whether a path is a rule, and the line that prints a rule.
#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <functional>

#include "frame/ZQCharacterTables.h"
#include "frame/ZQDebugChannel.h"
#include "frame/ZQSystemOwned.h"
#include "sequence/ZQMatrixMedium.h"

using zmatrix::SystemOwned;

namespace {

constexpr int countsLevelOfSingles = 8;  ///< debug level from which the line shows the counts of each prefix
constexpr int countsLevelOfItems = 7;    ///< the same for items of several coordinates

/// The element `steps` levels above a position, or null if the links lead out of the block.
const ZQMatrixMediumElement* elementOneItemAbove(const ZQMatrixMedium& matrix, long long position, int steps) {
  const ZQMatrixMediumElement* element = matrix.elementAt(position);
  for (int i = 0; i < steps && element != nullptr; ++i) {
    position += element->getOffsetToElementInPrevDimension();
    element = matrix.elementAt(position);
  }
  return element;
}

/// Prints a part of a line to the outputs of the debug device. Not dbPrintf, whose messages are limited in length: a path can be
/// longer.
__attribute__((format(printf, 1, 2))) void put(const char* format, ...) {
  const int device = ZQDebugChannel::globalDebugOutputDevice;
  FILE* const streams[] = {device == 1 || device == 3 ? stdout : nullptr, device >= 2 ? ZQDebugChannel::fpMatrixErr : nullptr};
  for (FILE* stream : streams) {
    if (stream == nullptr) continue;
    va_list arguments;
    va_start(arguments, format);
    vfprintf(stream, format, arguments);
    va_end(arguments);
  }
}

void putCountsOfPrefix(ZQMatrixMedium& matrix, const int* indexVector, int length) {
  int existCode = 0, writeCount = 0, withSuccessor = 0, withoutPredecessor = 0;
  matrix.readMatrixData(indexVector, length, &existCode, &writeCount, &withSuccessor, &withoutPredecessor);
  put("[%d,%d,%d]", writeCount, withSuccessor, withoutPredecessor);
}

/// Prints a single coordinate: a character in a text, else a number.
void putSingle(const ZQMatrixMedium& matrix, int coordinate, bool isFirst) {
  const bool isText = matrix.getMatrixInfo()->getMatrixType() == ZQMatrixTypeANSIText;
  if (isText && coordinate >= 0 && coordinate <= 255) {
    put("%c", ansi2asciTAB[static_cast<size_t>(coordinate)]);
  } else {
    put(isFirst ? "%d" : ",%d", coordinate);
  }
}

/// Prints "M(", the items, ")", at a high debug level with the counts of each prefix.
void putPath(ZQMatrixMedium& matrix, const int* indexVector, int length, int debugLevel) {
  const int coordinateDimension = matrix.getMatrixInfo()->getCoordinateDimension();
  const bool showsCounts = debugLevel >= (coordinateDimension == 1 ? countsLevelOfSingles : countsLevelOfItems);
  put("M(");
  for (int begin = 0; begin < length; begin += coordinateDimension) {
    const int end = length - begin > coordinateDimension ? begin + coordinateDimension : length;
    if (coordinateDimension == 1) {
      putSingle(matrix, indexVector[begin], begin == 0);
    } else {
      for (int k = begin; k < end; ++k) put(k == begin ? "(%d" : ",%d", indexVector[k]);
      put(")");
    }
    if (showsCounts) putCountsOfPrefix(matrix, indexVector, end);
    if (end == length) break;
  }
  put(")");
}

void putProbabilities(const ZQMatrixMediumElement& element, const ZQMatrixMediumElement& parent, bool isOverDetermined) {
  const int writeCount = element.getWriteCount();
  put("  p()=%d/%d %s", writeCount, parent.getWriteCountWithSuccessor(), isOverDetermined ? "(overdetermined) " : "");
  if (element.getWriteCountWithoutPredecessor() > 0) {
    put("p(start)=%d/%d ", element.getWriteCountWithoutPredecessor(), parent.getWriteCount());
  }
  if (writeCount != element.getWriteCountWithSuccessor()) {
    const unsigned ends = static_cast<unsigned>(writeCount) - static_cast<unsigned>(element.getWriteCountWithSuccessor());
    put("p(stop)=%d/%d ", static_cast<int>(ends), writeCount);
  }
  put("\n");
}

void putRule(ZQMatrixMedium& matrix, const int* indexVector, int length, int debugLevel) {
  const int handle = matrix.getMatrixHandleFromElementVector(indexVector, length);
  const ZQMatrixMediumElement* element = matrix.elementAt(handle);
  const int coordinateDimension = matrix.getMatrixInfo()->getCoordinateDimension();
  const int steps = length < coordinateDimension ? length : coordinateDimension;
  const ZQMatrixMediumElement* parent = elementOneItemAbove(matrix, handle, steps);
  if (element == nullptr || parent == nullptr) {
    putPath(matrix, indexVector, length, debugLevel);
    put(" (NOT EXIST)\n");
    return;
  }
  const int writeCount = element->getWriteCount(), writeCountOfContext = parent->getWriteCountWithSuccessor();
  if (writeCountOfContext < 1 || writeCount < 1) {
    putPath(matrix, indexVector, length, debugLevel);
    put("  p()=%d/%d (weak)\n", writeCount, writeCountOfContext);
    return;
  }
  if (writeCount > writeCountOfContext) {
    put("addressOfElement->_writeCount > addressOfPreviousElement->_writeCountWithSuccessor (%d<->%d)\n", writeCount,
        writeCountOfContext);
  }
  const bool isOverDetermined = matrix.isDeterminedMatrixData(indexVector, length) >= 2;
  putPath(matrix, indexVector, length, debugLevel);
  putProbabilities(*element, *parent, isOverDetermined);
}

}  // namespace

int ZQMatrixMedium::isRuleMatrixData(ZQMatrixMediumElement** element) {
  ZQMatrixBaseElement** slot = reinterpret_cast<ZQMatrixBaseElement**>(element);
  const std::less<ZQMatrixBaseElement**> liesBefore;
  ZQMatrixBaseElement** const block = getMatrixData();
  if (slot == nullptr || block == nullptr || liesBefore(slot, block)) return 0;
  return liesBefore(slot, block + numberOfSlots_) ? isRuleAt(static_cast<int>(slot - block)) : 0;
}

int ZQMatrixMedium::isRuleAt(int slot) {
  const ZQMatrixBaseElement* element = elementAt(slot);
  if (element == nullptr || slot == currentMatrixId_) return 0;
  const int coordinateDimension = getMatrixInfo()->getCoordinateDimension();
  const int writeCount = element->getWriteCount();
  if (coordinateDimension < 1 || writeCount < 1) return 0;
  long long position = slot;
  for (int i = 0; i < coordinateDimension; ++i) {
    const ZQMatrixBaseElement* step = elementAt(position);
    if (step == nullptr) return 0;
    const int offset = step->getOffsetToElementInPrevDimension();
    if (coordinateDimension >= 2 && offset == 0) return 0;
    position += offset;
  }
  const ZQMatrixMediumElement* context = elementAt(position);
  if (context == nullptr || context->getWriteCountWithSuccessor() < 1) return 0;
  return writeCount <= context->getWriteCountWithSuccessor() ? 1 : 0;
}

void ZQMatrixMedium::printIndexVector(const int* indexVector, int length, int usePreProcessing, int level) {
  const int device = globalDebugOutputDevice;
  if (indexVector == nullptr || length < 0 || device == 0 || debugLevel_ < level) return;
  if (device != 1 && fpMatrixErr == nullptr) return;
  if (getMatrixInfo()->getCoordinateDimension() < 1) return;
  SystemOwned<int> preProcessed;
  if (usePreProcessing == 1 && getMatrixInfo()->getPreProcessingType() != ZQPreProcessingTypeNone) {
    preProcessed.reset(getPreProcessedSequenceFromOriginalSequence(indexVector, length, &length));
    if (preProcessed == nullptr) return;
    indexVector = preProcessed.get();
  }
  putRule(*this, indexVector, length, debugLevel_);
}
