#include "Matrix.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>

#include "ContinuingMatrix.h"
#include "Failure.h"
#include "Inputs.h"
#include "Tiers.h"

namespace {

[[noreturn]] void refuse(const std::string& what) {
  throw Failure{ExitCode::badInput, what};
}

[[noreturn]] void refuseForWantOfIDs(int numberOfIDs, const std::string& path) {
  throw Failure{ExitCode::limit, "the model has " + std::to_string(numberOfIDs) +
                                     " sub-matrices, one for each meter, kind and sound, and " + path +
                                     " needs another: learn all files into a new model"};
}

template <class Functions>
std::unique_ptr<Matrix> createOf(MessageLevel messageLevel) {
  auto* handle = Functions::create(messageLevel.printsMessages() ? 1 : 0, messageLevel.level, "");
  if (handle == nullptr) throw Failure{ExitCode::limit, "no memory for a matrix"};
  return std::make_unique<ContinuingMatrix<Functions>>(handle, messageLevel);
}

// Loads at message level -1, because during a load the library uses the message device stored in the file, which may be a debug
// file.
template <class Functions>
std::unique_ptr<Matrix> loadOf(const std::string& path, MessageLevel messageLevel) {
  auto* handle = Functions::load(path.c_str(), -1);
  if (handle == nullptr) refuse("cannot read " + path + ": it is damaged or needs more memory than available");
  return std::make_unique<ContinuingMatrix<Functions>>(handle, messageLevel);
}

}  // namespace

void refuseToLearn(const std::string& what) {
  refuse(what);
}

int unpackInteger(const char* bytes, int size) {
  const int length = std::min(std::abs(size), 4);
  unsigned int value = 0;
  for (int at = 0; at < length; ++at) value |= static_cast<unsigned int>(static_cast<unsigned char>(bytes[at])) << (8 * at);
  if (size == -1) return static_cast<std::int8_t>(value);
  if (size == -2) return static_cast<std::int16_t>(value);
  return static_cast<int>(value);
}

void requireRoomForTracks(const std::vector<LibraryMessages::Kind>& kinds, int numberOfIDs, const std::string& path) {
  const std::string noFreeID = "could not find a free matrixID";
  for (const LibraryMessages::Kind& kind : kinds) {
    if (kind.first[0].find(noFreeID) != std::string::npos) refuseForWantOfIDs(numberOfIDs, path);
  }
}

void requireAllTaken(const zq_ScoreFeedReport* report, int numberOfIDs, const std::string& path) {
  if (report == nullptr) throw Failure{ExitCode::limit, "out of memory"};
  if (report->leftOut[zq_ScoreNoSubMatrix] > 0) refuseForWantOfIDs(numberOfIDs, path);
  if (report->leftOut[zq_ScoreNotTaken] > 0) {
    throw Failure{ExitCode::limit, "the matrix is too small for all of " + path + ": lower --max-phrase, or learn fewer files"};
  }
}

std::unique_ptr<Matrix> Matrix::create(Tier tier, MessageLevel messageLevel) {
  if (tier == Tier::full) return createOf<FullTier>(messageLevel);
  if (tier == Tier::medium) return createOf<MediumTier>(messageLevel);
  return createOf<BaseTier>(messageLevel);
}

std::unique_ptr<Matrix> Matrix::load(const std::string& path, MessageLevel messageLevel) {
  requireReadable(path);
  switch (s_getMatrixInfoTypeFromFile(path.c_str())) {
    case ZQMatrixInfoTypeFull:
      return loadOf<FullTier>(path, messageLevel);
    case ZQMatrixInfoTypeMedium:
      return loadOf<MediumTier>(path, messageLevel);
    case ZQMatrixInfoTypeBase:
      return loadOf<BaseTier>(path, messageLevel);
    default:
      refuse("cannot read " + path + ": it is not a matrix file (`zmatrix learn` makes one)");
  }
}

bool Matrix::isSound() {
  bool sound = true;
  for (int id = 0; id < numberOfIDs(); ++id) {
    if (isOccupied(id) && !scan(id).isSound) sound = false;
  }
  return sound;
}

long long Matrix::itemsLearned() const {
  long long sum = 0;
  for (int id = 0; id < numberOfIDs(); ++id) sum += itemsLearned(id);
  return sum;
}

const char* nameOf(Tier tier) {
  static const char* const names[] = {"base", "medium", "full"};
  return names[static_cast<int>(tier)];
}

const char* languageOf(const ZQMatrixProperties& record) {
  static const char* const names[] = {"unknown language", "German", "English", "French", "Spanish"};
  const int language = record.language;
  return names[language >= ZQLanguageGerman && language <= ZQLanguageSpanish ? language : 0];
}
