#include "music/score/ZQGeneratedScore.h"

#include <algorithm>
#include <array>

#include "music/midi/ZQGeneratedMidi.h"
#include "music/midi/ZQMidiSounds.h"
#include "music/score/ZQScoreBuilder.h"
#include "music/score/ZQScoreFeed.h"
#include "sequence/ZQPreprocessing.h"

namespace zmatrix {

namespace {

constexpr int refused = 0;
constexpr int outOfMemory = -7;
constexpr double usualTempo = 120;
constexpr int percussionChannel = 9;
constexpr int channels = 16;
constexpr int numberOfSounds = 16;

/// A program that represents the sound. Percussive sounds and effects have none in the table of sounds; they get the first
/// program of their class.
unsigned char programOf(int sound) {
  constexpr unsigned char timpani = 47, rain = 96;
  if (sound == ZQMatrixSoundPercussive) return timpani;
  if (sound == ZQMatrixSoundEffects) return rain;
  return static_cast<unsigned char>(std::max(getGMProgramChangeIDFromSoundID(sound), 0));
}

/// A score with one part per sound, in the order of their first notes.
class SoundParts {
 public:
  explicit SoundParts(ScoreBuilder& scoreBuilder) : builder_(scoreBuilder) { parts_.fill(none); }

  int partOf(int sound) {
    int& part = parts_[static_cast<size_t>(sound)];
    if (part == none) part = builder_.addPart(0, sound == drumSound ? percussionChannel : nextChannel());
    return part;
  }

 private:
  static constexpr int none = -1;

  int nextChannel() {
    const int given = channel_;
    channel_ += channel_ + 1 == percussionChannel ? 2 : 1;
    return given % channels;
  }

  ScoreBuilder& builder_;
  std::array<int, numberOfSounds> parts_{};
  int channel_ = 0;
};

void addNote(ScoreBuilder& builder, SoundParts& parts, const ZQMidiObject& object) {
  const int sound = object.getSoundID() < numberOfSounds ? object.getSoundID() : 0;
  const long long start = std::max(object.getStartQuanta(), 0);
  const ScoreTime onset = scoreTime(start, quantaPerWholeNote).time;
  const ScoreTime duration = scoreTime(std::max(object.getEndQuanta() - start, 0LL), quantaPerWholeNote).time;
  zq_ScoreNote note{};
  note.onset = onset.numerator;
  note.onsetDenominator = onset.denominator;
  note.duration = duration.numerator;
  note.durationDenominator = duration.denominator;
  note.part = parts.partOf(sound);
  note.pitch = static_cast<unsigned char>(object.getNoteNumber() & 127);
  note.velocity = static_cast<unsigned char>(object.getVelocity());
  note.program = programOf(sound);
  note.sound = static_cast<unsigned char>(sound);
  note.flags = sound == drumSound ? zq_ScorePercussion : 0;
  builder.addNote(note);
}

}  // namespace

zq_Score* createGeneratedScore(ZQMatrixMedium* matrix, int numberOfObjex, double quartersPerMinute, int* result) {
  int unused = 0;
  int& outcome = result != nullptr ? *result : unused;
  outcome = refused;
  if (matrix->getCurrentMatrixID() < 0 || matrix->getCurrentMatrixID() >= matrix->getMaxNumberOfMatrices()) return nullptr;
  GeneratedMidi music(matrix);
  outcome = music.check();
  if (outcome != 1) return nullptr;
  outcome = outOfMemory;  // also the result if an exception is thrown below
  if (!music.composeNotes(numberOfObjex)) return nullptr;
  ScoreBuilder builder(zq_ScoreGenerated);
  builder.score().state = zq_ScoreRead;
  SoundParts parts(builder);
  for (const ZQMidiObject* object : music.notes()) addNote(builder, parts, *object);
  const auto* info = matrix->getMatrixInfo();
  const int numerator = info->getMidiTimeSignatureNom(), denominator = info->getMidiTimeSignatureDenom();
  const bool hasMeter = numerator > 0 && denominator > 0;
  builder.addMeter({}, 0, -1, hasMeter ? numerator : 4, hasMeter ? denominator : 4);
  const double learned = quartersPerMinute > 0 ? quartersPerMinute : getLearnedTempo(matrix);
  builder.addTempo({}, learned > 0 ? learned : usualTempo);
  zq_Score* const score = builder.finish();
  outcome = 1;
  return score;
}

}  // namespace zmatrix
