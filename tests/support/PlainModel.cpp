#include "support/PlainModel.h"

#include <algorithm>

namespace plain {

void Model::write(std::vector<int> vector, long long value, int startFlag, int endFlag) {
  Counts& counts = paths[vector];
  counts.value = value;
  ++counts.writeCount;
  if (endFlag == 0) ++counts.withSuccessor;
  if (startFlag != 0) ++counts.withoutPredecessor;
  for (vector.pop_back(); !vector.empty(); vector.pop_back()) paths[vector];
}

int Model::remove(std::vector<int> vector, int keepInnerElements) {
  const auto found = paths.find(vector);
  if (found == paths.end()) return -1;
  if (hasChildren(vector)) {
    if (found->second.writeCount == 0) return 0;
    if (keepInnerElements == 0) found->second = Counts();
    return 1;
  }
  paths.erase(found);
  for (vector.pop_back(); !vector.empty(); vector.pop_back()) {
    if (hasChildren(vector) || paths[vector].writeCount > 0) break;
    paths.erase(vector);
  }
  return 1;
}

const Model::Counts* Model::find(const std::vector<int>& vector) const {
  const auto found = paths.find(vector);
  return found == paths.end() ? nullptr : &found->second;
}

bool Model::hasChildren(const std::vector<int>& vector) const {
  const auto next = paths.upper_bound(vector);
  return next != paths.end() && next->first.size() > vector.size() &&
         std::equal(vector.begin(), vector.end(), next->first.begin());
}

void Model::cut(size_t maximalLength) {
  std::erase_if(paths, [=](const auto& path) { return path.first.size() > maximalLength; });
}

}  // namespace plain
