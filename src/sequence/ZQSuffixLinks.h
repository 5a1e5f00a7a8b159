// For each element of a sub-matrix, a link to the element of the longest proper ending of its path, in whole items, that is a
// path itself. One walk down the trie, level by level, finds all links: that of a child is one step down from a link of its
// parent, as in the matching of many words at once (Aho and Corasick, 1975). Operations that need the endings of every path
// follow the links instead of walking each ending from the root.
//
// Links stay valid when elements are deleted: a deleted element keeps its own link, so chains lead past it. A write makes them
// invalid, since it can move elements.
#pragma once

#include "frame/ZQArray.h"
#include "sequence/ZQMatrixMedium.h"

namespace zmatrix {

class ZQSuffixLinks {
 public:
  static constexpr int none = -1;

  /// Finds the links of the current sub-matrix. False if memory runs out or the sub-matrix has no root; then no element is known.
  bool build(const ZQMatrixMedium& matrix);

  /// True for an element that the walk reached.
  bool isKnown(int position) const { return static_cast<size_t>(position) < depths_.size() && depthOf(position) > 0; }

  /// The length of a known element's path, in integers.
  int depthOf(int position) const { return depths_[static_cast<size_t>(position)]; }

  /// The link of a known element: the position of the last element of the ending, the root for an empty ending, or none.
  int linkOf(int position) const { return links_[static_cast<size_t>(position)]; }

 private:
  void enterField(const ZQMatrixMedium& matrix, int parent, int depth);
  int findLink(const ZQMatrixMedium& matrix, int parent, int coordinate, int depth) const;

  int root_ = 0;
  int coordinateDimension_ = 1;
  zmatrix::ZQArray<int> links_;
  zmatrix::ZQArray<int> depths_;  // 0 for the root and for slots that the walk did not reach
  zmatrix::ZQArray<int> queue_;   // the known elements, level by level
  size_t endOfQueue_ = 0;
};

}  // namespace zmatrix
