// When a rule is redundant. A written suffix of a path, the path itself included, determines the last item if that is the only
// successor of the suffix's context. Suffixes are counted from the longest on, up to the first that doesn't determine it: 2 or
// more for a written path means that a shorter context gives the same item. Learning, pruning and the self-tests depend on the
// exact results, including the counts for items with several coordinates. Suffixes are looked up from the root, or, if all paths
// are tested, found through the suffix links.
#include <algorithm>
#include <climits>
#include <cmath>

#include "frame/ZQDebugChannel.h"
#include "sequence/ZQMatrixMedium.h"
#include "sequence/ZQStopProbability.h"
#include "sequence/ZQSuffixLinks.h"

namespace {

/// True if the field has other elements. A damaged link counts as one.
bool hasSiblings(const ZQMatrixBaseElement& element) {
  return element.getOffsetToNextElementInDimension() != 0 || element.getOffsetToPreviousElementInDimension() != 0;
}

/// The suffixes of any vector, each looked up from the root.
class SuffixesOfVector {
 public:
  SuffixesOfVector(ZQMatrixMedium& matrix, const int* indexVector, int length, int coordinateDimension)
      : matrix_(matrix), vector_(indexVector), length_(length), coordinateDimension_(coordinateDimension) {}

  /// Moves `start` to the begin of the next written suffix, the longest first, and returns its handle; -1 if there is none before
  /// `end`.
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

/// The suffixes of an element's path, each found through the link of the preceding one.
class SuffixesOfElement {
 public:
  SuffixesOfElement(const ZQMatrixMedium& matrix, const zmatrix::ZQSuffixLinks& links, int position)
      : matrix_(matrix), links_(links), length_(links.depthOf(position)), at_(position) {}

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

/// Counts the determining suffixes of a path of single integers, up to `enough`. A suffix whose stop probability differs from
/// that of the whole path ends the count.
template <class Suffixes>
int determiningSuffixes(const ZQMatrixMedium& matrix, Suffixes suffixes, int length, int enough) {
  const int end = length - 1;  // the last item alone is not tested
  double stopOfWhole = 0;      // stop probability of the whole path; 0 if it is not written
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

/// The same for items of several coordinates, each of which must be the only element of its field. Unlike above, the last item
/// alone is tested, stop probabilities are not, and a count that reaches the end of the vector counts coordinates: callers depend
/// on this.
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
