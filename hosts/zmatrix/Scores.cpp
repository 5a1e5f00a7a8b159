#include "Scores.h"

#include "Failure.h"

namespace {

const char* textOf(int writingState) {
  if (writingState == zq_ScoreTooLarge) return "it is too large for a MIDI file";
  if (writingState == zq_ScoreRefused) return "the score is invalid";
  return "out of memory";
}

}  // namespace

Score readScore(const std::string& path, Kind kind, int graceQuanta) {
  Score score(
      kind == Kind::kern ? zq_createScoreFromKernFile(path.c_str(), graceQuanta) : zq_createScoreFromMidiFile(path.c_str()),
      zq_deleteScore);
  if (!score) throw Failure{ExitCode::limit, "out of memory"};
  return score;
}

std::string refusalOf(const zq_Score& score) {
  if (score.state == zq_ScoreNotFound) return "it can't be opened";
  if (score.state != zq_ScoreOtherFormat) return "";
  return score.format == zq_ScoreKern ? "no **kern column" : "not a MIDI file";
}

std::string midiOf(const zq_Score& score) {
  long long length = 0;
  zq_ScoreWriting writing{};
  unsigned char* const bytes = zq_createMidiDataOfScore(&score, &length, &writing);
  if (bytes == nullptr) throw Failure{ExitCode::limit, std::string("the notes could not be written: ") + textOf(writing.state)};
  std::string data(bytes, bytes + length);
  s_Free(bytes);
  return data;
}
