// Learning of music files, the same for all their formats.
#pragma once

#include <string>
#include <vector>

#include "Measurement.h"
#include "frame/flat/ZQMatrixCreators.h"
#include "sequence/ZQMatrixMedium.h"

namespace bench {

/// Learns files in one sub-matrix after the other; an operation is a note, the second figure a phrase.
inline Measurement learnMusic(const std::vector<std::string>& files, int phraseLimit,
                              int (ZQMatrixMedium::*learnFile)(const char*, int*)) {
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
    (matrix->*learnFile)(file.c_str(), &notes);
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

}  // namespace bench
