// A matrix file told once more, field by field and in no other form than a list: what the tests hold the library's files against,
// and how files of older versions are made. The matrix in it is small and made by hand: the vectors {1}, {3} and {1, 2, -1} in
// sub-matrix 0.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace plain {

struct FieldPlace {
  std::string name;
  size_t offset;
  int size;  ///< 4 or 8: a number
};

class MatrixFile {
 public:
  /// A file as this version and tier (0 base, 1 medium, 2 full) would have written it.
  MatrixFile(int aTier, int aVersion = 135) : tier(aTier), version(aVersion) { build(); }

  const std::string& bytes() const { return content; }
  const std::vector<FieldPlace>& numbers() const { return places; }
  const FieldPlace& place(const std::string& name) const;
  /// The same bytes with another number in a field.
  std::string with(const std::string& name, long long value) const { return with(place(name), value); }
  std::string with(const FieldPlace& field, long long value) const;
  static long long numberAt(const std::string& bytes, const FieldPlace& field);

 private:
  void build();
  void buildHeader();
  void buildBlock(const std::string& block, bool isSymbolBlock);
  void buildBaseRecord();
  void buildMediumRecord();
  void buildFullRecord();
  void buildElements();
  void element(int position, int writeCount, long long value, int index, int next, int previous, int child, int parent);
  void number(const std::string& name, long long value, int size = 4, int since = 0);
  void text(const std::string& value, int size);
  void flagged(const std::string& name, const std::vector<int>& values);

  int tier;
  int version;
  std::string content;
  std::vector<FieldPlace> places;
};

}  // namespace plain
