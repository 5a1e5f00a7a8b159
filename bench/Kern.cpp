// Kern: checking and reading scores of four and of sixty spines, exact and classic reading, and learning. A plain pass over the
// bytes that only counts tokens is the lower bound for any reader. Answers are checked: the notes of a generated score are known,
// and real files must give the same result in each round.
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "Benchmarks.h"
#include "MusicLearning.h"
#include "music/kern/ZQKernFile.h"
#include "music/score/ZQKernScoreReader.h"
#include "music/score/ZQScore.h"

namespace bench {

namespace {

namespace fs = std::filesystem;

constexpr int tokensOfScore = 600'000;

struct Score {
  std::string path;
  long long notes = 0, tokens = 0;
};

/// Generates a score of quarters and halves with a bar line after every four quarters; each spine runs through a scale.
Score makeScore(int spines) {
  Score score;
  score.path = (fs::temp_directory_path() / ("zmatrix_bench_" + std::to_string(getpid()) + ".krn")).string();
  std::ofstream file(score.path, std::ios::binary);
  const auto row = [&](auto tokenOf) {
    for (int i = 0; i < spines; i++) file << (i > 0 ? "\t" : "") << tokenOf(i);
    file << "\n";
    score.tokens += spines;
  };
  std::mt19937 random(11);
  const char* const letters[] = {"c", "d", "ee-", "F", "GG", "a#", "b"};
  row([](int) { return "**kern"; });
  for (int bar = 1; score.tokens < tokensOfScore; bar++) {
    row([bar](int) { return std::string("=").append(std::to_string(bar)); });
    for (int beat = 0; beat < 4; beat++) {
      row([&](int spine) -> std::string {
        if (spine % 2 == 1 && beat % 2 == 1) return ".";
        score.notes++;
        return std::string(spine % 2 == 1 ? "2" : "4").append(letters[random() % 7]);
      });
    }
  }
  row([](int) { return "*-"; });
  return score;
}

long long notesOf(const std::string& path) {
  const std::unique_ptr<zmatrix::ZQKernTrackList> list(zmatrix::createZQKernTrackList());
  if (!list->init()) return 0;
  zmatrix::ZQKernFile().readKernObjectsFromFileWithPath(list.get(), path.c_str());
  long long notes = 0;
  for (const zmatrix::ZQKernObject* object : *list->getKernObjectTrackAtIndex(0)) notes += object->isNote();
  return notes;
}

long long exactNotesOf(const std::string& path) {
  const std::unique_ptr<zq_Score, void (*)(zq_Score*)> score(zmatrix::createScoreFromKernFile(path.c_str(), 0),
                                                             zmatrix::deleteScore);
  return score->numberOfNotes;
}

/// Counts the tokens of a file in a plain pass over its bytes.
long long tokensOf(const std::string& path) {
  FILE* file = fopen(path.c_str(), "rb");
  if (file == nullptr) return 0;
  std::vector<char> bytes(fs::file_size(path));
  const size_t size = fread(bytes.data(), 1, bytes.size(), file);
  fclose(file);
  long long tokens = 0;
  for (size_t i = 0; i < size; i++) tokens += bytes[i] == '\t' || bytes[i] == '\n';
  return tokens;
}

using Count = long long (*)(const std::string& path);

/// One operation is a token.
Measurement readMade(int spines, Count count) {
  Measurement measured;
  const Score score = makeScore(spines);
  const StopWatch watch;
  const long long answer = count(score.path);
  measured.seconds[0] = watch.seconds();
  measured.operations = score.tokens;
  measured.isRight = answer == (count == tokensOf ? score.tokens : score.notes);
  fs::remove(score.path);
  return measured;
}

/// One operation is a note of the result, or, for the counting pass, a note of the exact reading.
Measurement readFiles(const std::vector<std::string>& files, Count count) {
  constexpr int rounds = 20;
  Measurement measured;
  const auto sumOf = [&](Count each) {
    long long sum = 0;
    for (const std::string& file : files) sum += each(file);
    return sum;
  };
  const long long notes = sumOf(count == tokensOf ? exactNotesOf : count);
  const long long first = sumOf(count);
  measured.isRight = notes > 0;
  const StopWatch watch;
  for (int round = 0; round < rounds; round++) measured.isRight = sumOf(count) == first && measured.isRight;
  measured.seconds[0] = watch.seconds();
  measured.operations = notes * rounds;
  return measured;
}

}  // namespace

void registerKern(const std::string& folder) {
  const std::pair<const char*, Count> contenders[] = {
      {"zmatrix", notesOf}, {"zmatrix_exact", exactNotesOf}, {"counting_pass", tokensOf}};
  for (const int spines : {4, 60}) {
    const std::string name = "kern_tokens/limit:0/size:" + std::to_string(spines) + "/";
    for (const auto& [contender, count] : contenders) {
      registerMusicRow(name + contender, [spines, count = count] { return readMade(spines, count); });
    }
  }
  if (folder.empty()) return;
  std::vector<std::string> files;
  for (const auto& entry : fs::recursive_directory_iterator(folder)) {
    if (entry.path().extension() == ".krn") files.push_back(entry.path().string());
  }
  for (const auto& [contender, count] : contenders) {
    registerMusicRow(std::string("kern_read/limit:0/size:0/") + contender,
                     [files, count = count] { return readFiles(files, count); });
  }
  registerMusicRow("kern_learn/limit:16/size:0/zmatrix",
                   [=] { return learnMusic(files, 16, &ZQMatrixMedium::updateMatrixWithKERNFile); });
  registerMusicRow("kern_learn/limit:16/size:0/zmatrix_exact", [=] {
    return learnScores(files, 16, [](const char* file) { return zmatrix::createScoreFromKernFile(file, 0); });
  });
}

}  // namespace bench
