// What a sub-matrix holds, without a word on where: a map of paths and counts. The store must agree with it whatever it moves or
// grows.
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
  /// Takes out the vector as the store's delete does, and gives its result where that doesn't depend on positions: 1, 0, or -1
  /// for absent.
  int remove(std::vector<int> vector, int keepInnerElements);
  /// The counts of a path that exists, or null.
  const Counts* find(const std::vector<int>& vector) const;
  bool hasChildren(const std::vector<int>& vector) const;
  /// Takes out every path longer than this.
  void cut(std::size_t maximalLength);

  std::map<std::vector<int>, Counts> paths;  // every element but the root, path elements with a count of 0 among them
};

}  // namespace plain
