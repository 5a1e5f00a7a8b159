// Matrices of the three tiers with content in every part of a file, and comparisons of matrices and files.
#pragma once

#include <map>
#include <random>

#include "support/TestFolder.h"
#include "support/TierTest.h"

namespace zmatrix {

template <class Matrix>
inline constexpr bool learns = TierUnderTest<Matrix>::tier != plain::Tier::base;

/// A matrix that is deleted with its scope.
template <class Matrix>
class OwnedMatrix {
 public:
  explicit OwnedMatrix(Matrix* matrix = TierUnderTest<Matrix>::create()) : matrix_(matrix) {}
  ~OwnedMatrix() { TierUnderTest<Matrix>::destroy(matrix_); }
  OwnedMatrix(const OwnedMatrix&) = delete;
  OwnedMatrix& operator=(const OwnedMatrix&) = delete;
  void makeAnew() {
    TierUnderTest<Matrix>::destroy(matrix_);
    matrix_ = TierUnderTest<Matrix>::create();
  }
  Matrix* operator->() { return matrix_; }
  Matrix& operator*() { return *matrix_; }

 private:
  Matrix* matrix_;
};

/// A matrix, a file to save it to, and a folder for other files.
template <class Matrix>
class FileTest : public testing::Test {
 public:
  static constexpr int tier = static_cast<int>(TierUnderTest<Matrix>::tier);

  ~FileTest() override { setSearchState({}); }

  static int loadInto(OwnedMatrix<Matrix>& any, const std::string& file) {
    return any->readAndInitMatrixFromDisk(file.c_str(), -1);
  }
  int load(const std::string& bytes) { return loadInto(matrix, folder.put("m", bytes)); }
  static int saveTo(const std::string& file, OwnedMatrix<Matrix>& any) { return any->saveMatrixToDisk(file.c_str()); }

  TestFolder folder;
  std::string path = folder.path() + "/model.zmatrix";
  OwnedMatrix<Matrix> matrix;
};

/// Writes and deletes at random in two sub-matrices.
template <class Matrix>
void fillAtRandom(Matrix& matrix, unsigned seed, int numberOfWrites) {
  std::mt19937 random(seed);
  const int current = matrix.getCurrentMatrixID();
  std::vector<Vector> written;
  for (int i = 0; i < numberOfWrites; ++i) {
    matrix.setCurrentMatrixID(random() % 3 == 0 ? 2 : 0);
    Vector vector(1 + random() % 6);
    for (int& k : vector) k = static_cast<int>(random() % 40) - 9;
    if (random() % 5 == 0 && !written.empty()) {
      Vector gone = written[random() % written.size()];
      matrix.deleteMatrixElement(gone.data(), static_cast<int>(gone.size()), static_cast<int>(random() % 2));
    } else {
      // Separate statements, since arguments are evaluated in any order.
      const int symbolMarker = random() % 3 == 0;
      const int endFlag = random() % 4 == 0;
      const int startFlag = random() % 4 == 0;
      const long long value = static_cast<long long>(random()) << 20;
      TierUnderTest<Matrix>::write(matrix, vector, value, startFlag, endFlag, symbolMarker);
      written.push_back(vector);
    }
  }
  matrix.setCurrentMatrixID(current);
}

inline const char* const someText =
    "The harbour is dry for two hours. Then the water comes back, and the boats that lay on their sides stand up again. "
    "The harbour master walks along the wall and looks at the ropes.";

/// Learns a text in sub-matrix 1 with history, and reads a few items from a kernel.
template <class Matrix>
void learnText(Matrix& matrix, const std::string& text, bool withKernel = true) {
  matrix.setCurrentMatrixID(1);
  if (matrix.getMatrixInfo()->isEmpty()) matrix.setDefaultMatrixPropertiesForANSIText("harbour.txt");
  matrix.setAddUpdateInfo(1);
  matrix.setAddSequenceToUpdateInfo(1);
  Vector codes = valuesOf(text);
  ASSERT_EQ(matrix.updateMatrixWithLongANSISequence(codes.data(), static_cast<int>(codes.size())), 1);
  matrix.addNameOfUpdateFile("harbour.txt");
  if (!withKernel) return;
  Vector start = valuesOf("The har");
  matrix.initializeKernelSequenceWithOriginalSequence(start.data(), static_cast<int>(start.size()), 1);
  double probability, stopProbability;
  for (int i = 0; i < 5; ++i) matrix.readObjexFromMatrix(&probability, &stopProbability);
}

/// Items read from the kernel, '|' for none.
template <class Matrix>
std::string generate(Matrix& matrix, int numberOfItems) {
  std::string text;
  double probability, stopProbability;
  for (int i = 0; i < numberOfItems; ++i) {
    const int* item = matrix.readObjexFromMatrix(&probability, &stopProbability);
    text += item != nullptr ? static_cast<char>(*item) : '|';
  }
  return text;
}

/// A matrix with random writes in two sub-matrices, and from the medium tier up a learned text in a third.
template <class Matrix>
Matrix* createFilled(unsigned seed = 1) {
  setSearchState({});
  Matrix* matrix = TierUnderTest<Matrix>::create();
  fillAtRandom(*matrix, seed, 400);
  matrix->setMatrixDescription("a matrix of all kinds");
  matrix->setUserRandomValue(77);
  if constexpr (learns<Matrix>) learnText(*matrix, someText);
  return matrix;
}

template <class Matrix>
std::map<int, plain::Element> slotsOf(const Matrix& matrix) {
  std::map<int, plain::Element> slots;
  for (int position = 0; position <= matrix.getMatrixFileHeader()->getMaximalStack(); ++position) {
    if (matrix.elementAt(position) != nullptr) slots[position] = TierUnderTest<Matrix>::copyOf(matrix.elementAt(position));
  }
  return slots;
}

/// Sets the time stamps of all records to 0.
inline std::string withoutTimes(std::string bytes) {
  const std::string magic("\xa1\xd8\x91\x02", 4);
  for (size_t at = bytes.find(magic); at != std::string::npos; at = bytes.find(magic, at + 1)) {
    if (at + 12 <= bytes.size()) bytes.replace(at + 8, 4, 4, '\0');
  }
  return bytes;
}

/// The bytes of a save, without the name of the matrix's origin file.
template <class Matrix>
std::string savedBytes(Matrix& matrix, const TestFolder& folder) {
  ZQMatrixFileHeader& header = *matrix.getMatrixFileHeader();
  const std::string origin = header.getMatrixOriginFilename();
  header.setMatrixOriginFilename("");
  const std::string path = folder.path() + "/bytes.zmatrix";
  EXPECT_EQ(matrix.saveMatrixToDisk(path.c_str()), 1);
  header.setMatrixOriginFilename(origin.c_str());
  return TestFolder::contentOf(path);
}

/// Compares files without their time stamps; a failure shows only the first differing offset.
inline void expectEqualBytes(const std::string& one, const std::string& other) {
  const std::string first = withoutTimes(one), second = withoutTimes(other);
  EXPECT_EQ(first.size(), second.size());
  size_t at = 0;
  while (at < first.size() && at < second.size() && first[at] == second[at]) ++at;
  EXPECT_TRUE(first == second) << "the bytes differ from offset " << at;
}

}  // namespace zmatrix
