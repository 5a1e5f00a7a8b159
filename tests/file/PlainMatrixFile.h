// A matrix file as a plain list of its fields: the reference for the library's files, and the source of files of older versions.
// Its matrix has the vectors {1}, {3} and {1, 2, -1} in sub-matrix 0.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>
#include <vector>

namespace plain {

struct FieldPlace {
  std::string name;
  size_t offset;
  int size;  ///< 4 or 8 bytes
};

class MatrixFile {
 public:
  /// The file that this version and tier (0 base, 1 medium, 2 full) would have written.
  MatrixFile(int tier, int version = 135) : tier_(tier), version_(version) { build(); }

  const std::string& bytes() const { return content_; }
  const std::vector<FieldPlace>& numbers() const { return places_; }
  const FieldPlace& place(const std::string& name) const;
  /// The bytes with another number in a field.
  std::string with(const std::string& name, long long value) const { return with(place(name), value); }
  std::string with(const FieldPlace& field, long long value) const;
  static long long numberAt(const std::string& bytes, const FieldPlace& field);

 private:
  struct Number {
    std::string name;
    long long value;
    int size = 4, since = 0;
  };

  void build();
  void buildHeader();
  void buildBlock(const std::string& block, bool isSymbolBlock);
  void buildBaseRecord();
  void buildMediumRecord();
  void buildFullRecord();
  void buildElements();
  void element(int position, int writeCount, long long value, int index, int next, int previous, int child, int parent);
  /// Appends fields that exist since a version, with `before` in front of their names.
  void append(const std::string& before, std::initializer_list<Number> fields);
  void text(const std::string& value, int size);
  void flagged(const std::string& name, const std::vector<int>& values);

  int tier_, version_;
  std::string content_;
  std::vector<FieldPlace> places_;
};

}  // namespace plain
