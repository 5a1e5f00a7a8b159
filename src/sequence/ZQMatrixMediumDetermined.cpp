// What makes a rule redundant: a path is determined by each of its proper suffixes after which the same item is the only one that
// can follow. Learning, pruning and the self-tests depend on these results, down to the figures for items with several
// coordinates. The suffixes are looked for from the root, or, where all paths are asked about, follow from link to link.
#include <algorithm>
#include <climits>
#include <cmath>

#include "frame/ZQDebugChannel.h"
#include "sequence/ZQMatrixMedium.h"
#include "sequence/ZQStopProbability.h"
#include "sequence/ZQSuffixLinks.h"

namespace {

/// The only element of a field has no neighbour; a damaged link to one counts as one.
bool hasSiblings(const ZQMatrixBaseElement& element) {
  return element.getOffsetToNextElementInDimension() != 0 || element.getOffsetToPreviousElementInDimension() != 0;
}

/// The suffixes of any vector, each looked for from the root.
class SuffixesOfVector {
 public:
  SuffixesOfVector(ZQMatrixMedium& matrixToRead, const int* indexVector, int lengthOfVector, int step)
      : matrix_(matrixToRead), vector_(indexVector), length_(lengthOfVector), coordinateDimension_(step) {}

  /// The handle of the longest written suffix from `start` on, moving `start` there; -1 once `end` is reached.
  int firstWritten(int* start, int end) {
    for (; *start < end; *start += coordinateDimension_) {
      const int handle = matrix_.getMatrixHandleFromElementVector(vector_ + *start, length_ - *start);
      if (handle >= 0) return handle;
    }
    return -1;
  }

 private:
  ZQMatrixMedium& matrix_;
  const int* vector_;
  const int length_;
  const int coordinateDimension_;
};

/// The suffixes of an element's path, each one link from the one before.
class SuffixesOfElement {
 public:
  SuffixesOfElement(const ZQMatrixMedium& matrixToRead, const zmatrix::ZQSuffixLinks& suffixLinks, int position)
      : matrix_(matrixToRead), links_(suffixLinks), length_(suffixLinks.depthOf(position)), at_(position) {}

  int firstWritten(int* start, int end) {
    for (; at_ != zmatrix::ZQSuffixLinks::none && links_.isKnown(at_); at_ = links_.linkOf(at_)) {
      const int startOfSuffix = length_ - links_.depthOf(at_);
      if (startOfSuffix < *start || !isWritten(matrix_.elementAt(at_), links_.depthOf(at_))) continue;
      *start = startOfSuffix;
      return startOfSuffix < end ? at_ : -1;
    }
    return -1;
  }

 private:
  bool isWritten(const ZQMatrixBaseElement* element, int depth) const {
    return element != nullptr && depth < matrix_.getMatrixInfo()->getMaxDimOfMatrix() &&
           (element->getOffsetToElementInNextDimension() == 0 || element->getWriteCount() > 0);
  }

  const ZQMatrixMedium& matrix_;
  const zmatrix::ZQSuffixLinks& links_;
  const int length_;
  int at_;
};

/// Counts no further than `enough`.
template <class Suffixes>
int determiningSuffixes(const ZQMatrixMedium& matrix, Suffixes suffixes, int length, int enough) {
  const int end = length - 1;  // the last item by itself is never looked at
  double stopOfWhole = 0;      // and stays so while the whole path is not written
  int count = 0;
  for (int start = 0; start < end && count < enough; ++start, ++count) {
    const int handle = suffixes.firstWritten(&start, end);
    const ZQMatrixMediumElement* element = matrix.elementAt(handle);
    if (element == nullptr) return count;
    const double stop = zmatrix::stopProbabilityOf(*element);
    if (start == 0) stopOfWhole = stop;
    if (hasSiblings(*element)) return count;
    if (start > 0 && std::fabs(stop - stopOfWhole) > zmatrix::stopProbabilityTolerance) return count;
  }
  return count;
}

/// The same for items of several coordinates, all of which have to be the only ones. Here the last item by itself is looked at,
/// stop probabilities are not, and a count that runs to the end of the vector is in coordinates: callers depend on all of that.
template <class Suffixes>
int determiningSuffixesOfItems(const ZQMatrixMedium& matrix, Suffixes suffixes, int length, int coordinateDimension, int enough) {
  if (length % coordinateDimension != 0) {
    dbPrintf(0, "isDeterminedMatrixData length of indexVector unexpected: %d\n", length);
  }
  const int end = length - 1;
  int count = 0;
  for (int start = 0; start < end && count / coordinateDimension < enough;
       start += coordinateDimension, count += coordinateDimension) {
    const int handle = suffixes.firstWritten(&start, end);
    const ZQMatrixMediumElement* element = matrix.elementAt(handle);
    if (element == nullptr) return count;
    if (hasSiblings(*element)) return count / coordinateDimension;
    long long position = handle;
    for (int j = 0; j < coordinateDimension - 1; ++j) {
      position += element->getOffsetToElementInPrevDimension();
      element = matrix.elementAt(position);
      if (element == nullptr || hasSiblings(*element)) return (count + j + 1) / coordinateDimension;
    }
  }
  return count;
}

template <class Suffixes>
int determinedTimes(const ZQMatrixMedium& matrix, Suffixes suffixes, int length, int enough) {
  const int coordinateDimension = matrix.getMatrixInfo()->getCoordinateDimension();
  return coordinateDimension == 1 ? determiningSuffixes(matrix, suffixes, length, enough)
                                  : determiningSuffixesOfItems(matrix, suffixes, length, coordinateDimension, enough);
}

int determinedTimesOfVector(ZQMatrixMedium& matrix, const int* indexVector, int length, int enough) {
  const int coordinateDimension = matrix.getMatrixInfo()->getCoordinateDimension();
  if (indexVector == nullptr || length < 2 || coordinateDimension < 1) return 0;
  return determinedTimes(matrix, SuffixesOfVector(matrix, indexVector, length, coordinateDimension), length, enough);
}

}  // namespace

int ZQMatrixMedium::isDeterminedMatrixData(const int* indexVector, int length) {
  return determinedTimesOfVector(*this, indexVector, length, INT_MAX);
}

int ZQMatrixMedium::isDeterminedUpToTwice(const int* indexVector, int length) {
  return std::min(determinedTimesOfVector(*this, indexVector, length, 2), 2);
}

int ZQMatrixMedium::isDeterminedUpToTwice(const zmatrix::ZQSuffixLinks& links, int position) const {
  const int length = links.depthOf(position);
  return length < 2 ? 0 : std::min(determinedTimes(*this, SuffixesOfElement(*this, links, position), length, 2), 2);
}
