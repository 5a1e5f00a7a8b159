// make_seeds DIRECTORY: writes seeds for the fuzzers: into DIRECTORY/file small matrix files of all tiers, with symbols and with
// history, and into DIRECTORY/learn settings followed by a text or numbers.
#include <zmatrix/zmatrix.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace {

constexpr int slots = 700;  // mutations find more in a small block
const std::string texts[] = {"The harbour is dry. The boats lie on the sand.",
                             "Two boats stand up again, and the harbour is full."};

std::vector<int> codesOf(const std::string& text) {
  return {text.begin(), text.end()};
}

/// Writes vectors of up to four integers, some below others, and deletes one of them.
template <class Matrix>
void writeSome(Matrix* matrix, int (*write)(Matrix*, const int*, int, long long), int (*remove)(Matrix*, const int*, int, int)) {
  for (int i = 0; i < 24; ++i) {
    const int vector[] = {i % 5, -i % 7, i * 3, 1};
    write(matrix, vector, 1 + i % 4, i);
  }
  const int gone[] = {1, -1, 3};
  remove(matrix, gone, 3, 1);
}

void saveBase(const std::string& path) {
  ZQMatrixBase* matrix = createAndInitMatrixBase();
  s_setInitialMatrixBlocksize_Base(matrix, slots);
  writeSome(matrix, s_writeMatrixElement_Base, s_deleteMatrixElement_Base);
  s_saveMatrixToDisk_Base(matrix, path.c_str());
  deleteMatrixBase(matrix);
}

void saveMedium(const std::string& path, int numberOfTexts) {
  ZQMatrixMedium* matrix = createAndInitMatrixMedium();
  s_setInitialMatrixBlocksize_Medium(matrix, slots);
  writeSome(matrix, s_writeMatrixElement_Medium, s_deleteMatrixElement_Medium);
  s_setCurrentMatrixID_Medium(matrix, 1);
  s_setDefaultMatrixPropertiesForANSIText_Medium(matrix, "harbour.txt");
  s_setMaxPhraseLengthForUpdateWithSequence_Medium(matrix, 4);
  s_setAddUpdateInfo_Medium(matrix, 1);
  s_setAddSequenceToUpdateInfo_Medium(matrix, 1);
  for (int i = 0; i < numberOfTexts; ++i) {
    const std::vector<int> text = codesOf(texts[i]);
    s_updateMatrixWithLongANSISequence_Medium(matrix, text.data(), static_cast<int>(text.size()));
    s_initializeKernelSequenceWithOriginalSequence_Medium(matrix, text.data(), 7, 1);
    s_saveMatrixToDisk_Medium(matrix, path.c_str());
    // A loaded matrix appends the next text's record to its own.
    deleteMatrixMedium(matrix);
    matrix = createAndInitMatrixMediumWithFile(path.c_str(), -1);
    s_setCurrentMatrixID_Medium(matrix, 1);
  }
  deleteMatrixMedium(matrix);
}

void saveFull(const std::string& path, int numberOfTexts) {
  ZQMatrix* matrix = createAndInitMatrix();
  s_setInitialMatrixBlocksize(matrix, slots);
  s_setMatrixAILevel(matrix, 1);
  s_setDefaultMatrixPropertiesForANSIText(matrix, "harbour.txt");
  s_setMaxPhraseLengthForUpdateWithSequence(matrix, 8);
  s_setAddUpdateInfo(matrix, 1);
  for (int i = 0; i < numberOfTexts; ++i) {
    const std::vector<int> text = codesOf(texts[i]);
    s_updateMatrixWithLongANSISequence(matrix, text.data(), static_cast<int>(text.size()));
    s_updateMatrixFromBasicLevel(matrix, text.data(), static_cast<int>(text.size()));
    s_initializeKernelSequenceWithOriginalSequence(matrix, text.data(), 11, 1);
    s_saveMatrixToDisk(matrix, path.c_str());
    deleteMatrix(matrix);
    matrix = createAndInitMatrixWithFile(path.c_str(), -1);
  }
  deleteMatrix(matrix);
}

/// Writes a seed in the layout that FuzzLearn.cpp reads: six bytes of settings for a text or eight for numbers, the length of the
/// start, the start, and the sequence.
void writeLearnSeed(const std::string& path, const std::string& settings, const std::string& start, const std::string& sequence) {
  std::ofstream(path, std::ios::binary) << settings << static_cast<char>(start.size()) << start << sequence;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    fprintf(stderr, "usage: make_seeds DIRECTORY\n");
    return 2;
  }
  const std::string directory = argv[1];
  std::filesystem::create_directories(directory + "/file");
  std::filesystem::create_directories(directory + "/learn");
  saveBase(directory + "/file/base.zmatrix");
  saveMedium(directory + "/file/medium.zmatrix", 1);
  saveMedium(directory + "/file/medium-history.zmatrix", 2);
  saveFull(directory + "/file/symbols.zmatrix", 1);
  saveFull(directory + "/file/symbols-history.zmatrix", 2);
  for (char method = 0; method < 4; ++method) {
    const std::string name = directory + "/learn/" + std::to_string(method);
    writeLearnSeed(name + "-text", {0, 6, method, 3, 5}, "The har", texts[method % 2]);
    writeLearnSeed(name + "-numbers", {1, method, static_cast<char>(method % 2), 5, method, 2, 4}, "abc", "abcdcbabcdedcba");
  }
  return 0;
}
