// The content of a sub-matrix as a map from paths to counts, without positions. The store must hold the same paths after any
// move or growth.
#pragma once

#include <cstddef>
#include <map>
#include <vector>

namespace plain {

class Model {
 public:
  struct Counts {
    long long value = 0;
    int writeCount = 0, withSuccessor = 0, withoutPredecessor = 0;
  };

  void write(std::vector<int> vector, long long value, int startFlag, int endFlag);
  /// Deletes as the store does. Returns 1, 0, or -1 for an absent vector, since the store's negative codes depend on positions.
  int remove(std::vector<int> vector, int keepInnerElements);
  /// The counts of a path that exists, or null.
  const Counts* find(const std::vector<int>& vector) const;
  bool hasChildren(const std::vector<int>& vector) const;
  /// Removes all longer paths.
  void cut(std::size_t maximalLength);

  std::map<std::vector<int>, Counts> paths;  // all elements except the root, those without a write included
};

}  // namespace plain
