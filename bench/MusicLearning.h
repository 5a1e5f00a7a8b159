// Learning of music files, shared by all formats.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "Benchmarks.h"
#include "flat/ZQMatrixCreators.h"
#include "music/score/ZQScoreFeed.h"
#include "sequence/ZQMatrixMedium.h"

namespace bench {

/// Learns the files into one matrix. One operation is a note; the second time is per phrase.
inline Measurement learnMusic(const std::vector<std::string>& files, int phraseLimit,
                              const std::function<int(ZQMatrixMedium*, const char*, int*)>& learnFile) {
  Measurement measured;
  ZQMatrixMedium* matrix = createAndInitMatrixMedium();
  if (matrix == nullptr) return measured;
  matrix->setMaxNumberOfMatrices(400);
  matrix->setGlobalDefaultMatrixPropertiesForMIDIElementsTriple_NDMT();
  matrix->setGlobalMidiTrackAnalyze(0);
  matrix->setGlobalMaxPhraseLengthForUpdateWithSequence(phraseLimit);
  const StopWatch watch;
  for (const std::string& file : files) {
    int notes = 0;
    learnFile(matrix, file.c_str(), &notes);
    measured.operations += notes;
  }
  measured.seconds[0] = watch.seconds();
  long long phrases = 0;
  for (int id = 0; id < matrix->getNumberOfMatrices(); id++) phrases += matrix->getMatrixInfo(id)->getNumberOfWriteCounts();
  measured.seconds[1] = measured.seconds[0] / static_cast<double>(phrases > 0 ? phrases : 1);
  measured.isRight = phrases > 0;
  deleteMatrixMedium(matrix);
  return measured;
}

/// A row with one run; the second time is per phrase.
inline void registerMusicRow(const std::string& name, const std::function<Measurement()>& measure) {
  const auto run = [measure](benchmark::State& state) {
    for (auto _ : state) {
      const Measurement measured = measureInChild(measure);
      report(state, measured, measured.seconds[0]);
      if (measured.seconds[1] > 0) state.counters["phrase_ns"] = measured.seconds[1] * 1e9;
    }
  };
  benchmark::RegisterBenchmark(name.c_str(), run)->Iterations(1)->UseManualTime()->Unit(benchmark::kMillisecond);
}

/// The same for exact readings: `read` makes a score of a file.
inline Measurement learnScores(const std::vector<std::string>& files, int phraseLimit,
                               const std::function<zq_Score*(const char*)>& read) {
  return learnMusic(files, phraseLimit, [&](ZQMatrixMedium* matrix, const char* file, int* notes) {
    zq_Score* const score = read(file);
    zq_ScoreFeedReport* const report = zmatrix::updateMatrixWithScore(matrix, score, file, 0);
    *notes = static_cast<int>(report->notesLearned);
    zmatrix::deleteScoreFeedReport(report);
    zmatrix::deleteScore(score);
    return 1;
  });
}

}  // namespace bench
