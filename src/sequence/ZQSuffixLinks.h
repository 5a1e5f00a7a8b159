// For each element of a sub-matrix: where the longest ending of its path that is a path itself lies, in whole items. One walk
// down the trie, level by level, finds them all: the link of a child is one step down from a link of its parent, as in a search
// for many words at once (Aho and Corasick, 1975). Tests that ask for the endings of every path then step from link to link
// instead of walking each ending from the root.
//
// Links stay valid when elements are deleted: a deleted element keeps its own link, so that the chain goes on over it. A write
// makes them invalid, since it can move what they lead to.
#pragma once

#include "frame/ZQArray.h"
#include "sequence/ZQMatrixMedium.h"

namespace zmatrix {

class ZQSuffixLinks {
 public:
  static constexpr int none = -1;

  /// Links the current sub-matrix. False if there is no room; nothing is known then.
  bool build(const ZQMatrixMedium& matrix);

  /// True for an element that the walk down reached.
  bool isKnown(int position) const { return static_cast<size_t>(position) < depths_.size() && depthOf(position) > 0; }

  /// The length of a known element's path, in integers.
  int depthOf(int position) const { return depths_[static_cast<size_t>(position)]; }

  /// Where the longest shorter ending of a known element's path ends: the root for an empty one, or none.
  int linkOf(int position) const { return links_[static_cast<size_t>(position)]; }

 private:
  void enterField(const ZQMatrixMedium& matrix, int parent, int depth);
  int findLink(const ZQMatrixMedium& matrix, int parent, int coordinate, int depth) const;

  int root_ = 0;
  int coordinateDimension_ = 1;
  zmatrix::ZQArray<int> links_;
  zmatrix::ZQArray<int> depths_;  // 0 for the root and for what is not known
  zmatrix::ZQArray<int> queue_;   // the known elements, level by level
  size_t endOfQueue_ = 0;
};

}  // namespace zmatrix
