#include "music/score/ZQScoreFeed.h"

#include <algorithm>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "music/midi/ZQMidiFeed.h"
#include "music/score/ZQScoreCheck.h"
#include "music/score/ZQScoreRuns.h"
#include "music/score/ZQScoreTempo.h"
#include "sequence/ZQMatrixMedium.h"
#include "symbols/ZQMatrix.h"

namespace zmatrix {

namespace {

// In the order of zq_ScoreCause.
const char* const causeTexts[] = {
    "learned",
    "the only note of its part: music is learned as steps from note to note",
    "the settings leave out its channel",
    "drums, percussion and effects are left out",
    "no meter of up to 255 beats has bars of this length",
    "the note lasts longer than 87,381 whole notes",
    "all reserved sub-matrices are used for other music",
    "the matrix can't learn the run because of its settings, its limits or memory",
    "the settings are not for music",
};
static_assert(sizeof causeTexts / sizeof *causeTexts == zq_ScoreNumberOfCauses);
static_assert(sizeof(zq_ScoreFeedReport::leftOut) / sizeof(long long) == zq_ScoreNumberOfCauses);

/// The report with its storage. Hosts see the plain structure at its begin.
struct OwnedReport : zq_ScoreFeedReport {
  OwnedReport() : zq_ScoreFeedReport() {}

  std::vector<zq_ScoreRun> ownedRuns;
};

double meanOf(double sum, long long count) {
  return count > 0 ? sum / static_cast<double>(count) : 0;
}

long long kindsOf(const ScorePlan& plan) {
  std::set<KindOfRun> kinds;
  for (const PlannedRun& run : plan.runs) {
    if (run.reported.cause == zq_ScoreLearned) kinds.insert(run.kind());
  }
  return static_cast<long long>(kinds.size());
}

/// Counts each note once: as learned if any of its runs is learned, else by the cause of the first run.
void countNotes(const ScorePlan& plan, OwnedReport& report) {
  constexpr unsigned char unknown = zq_ScoreNumberOfCauses;
  std::vector<unsigned char> causes(plan.causes);
  for (unsigned char& cause : causes) cause = cause == zq_ScoreLearned ? unknown : cause;
  for (const PlannedRun& run : plan.runs) {
    const auto mark = [&](long long note) {
      unsigned char& cause = causes[static_cast<size_t>(note)];
      if (run.reported.cause == zq_ScoreLearned || cause == unknown) cause = static_cast<unsigned char>(run.reported.cause);
    };
    for (size_t i = run.first; i < run.first + run.count; ++i) mark(plan.notes[i].note);
    if (run.learnsLeading) mark(run.leading.note);
    if (run.reported.cause == zq_ScoreLearned) report.notesFed += run.reported.notes;
  }
  for (const unsigned char cause : causes) {
    if (cause == zq_ScoreLearned) {
      ++report.notesLearned;
    } else {
      ++report.leftOut[cause == unknown ? static_cast<int>(zq_ScoreNotTaken) : cause];
    }
  }
}

zq_ScoreFeedReport* reportOf(const zq_Score& score, const ScorePlan& plan, int result) {
  auto report = std::make_unique<OwnedReport>();
  report->result = result;
  report->numberOfSubMatrices = static_cast<int>(kindsOf(plan));
  report->hasNoMeter = score.numberOfMeters == 0 ? 1 : 0;
  report->notes = score.numberOfNotes;
  countNotes(plan, *report);
  report->shortenedRests = plan.shortenedRests;
  report->onsetsMoved = plan.onsetsMoved;
  report->durationsMoved = plan.durationsMoved;
  report->notesWithoutDuration = plan.notesWithoutDuration;
  report->largestOnsetMove = plan.largestOnsetMove;
  report->meanOnsetMove = meanOf(plan.sumOfOnsetMoves, plan.notesMeasured);
  report->largestDurationMove = plan.largestDurationMove;
  report->meanDurationMove = meanOf(plan.sumOfDurationMoves, plan.notesMeasured - plan.notesWithoutDuration);
  for (const PlannedRun& run : plan.runs) report->ownedRuns.push_back(run.reported);
  report->numberOfRuns = static_cast<long long>(report->ownedRuns.size());
  report->runs = report->ownedRuns.data();
  return report.release();
}

/// The report on a score without any learnable note.
zq_ScoreFeedReport* refusedReport(const zq_Score& score) {
  ScorePlan plan;
  plan.causes.assign(static_cast<size_t>(score.numberOfNotes), zq_ScoreNoMusicSettings);
  return reportOf(score, plan, 0);
}

bool isBarLineValid(const zq_ScoreBarLine& line) {
  return line.onset >= 0 && line.onsetDenominator > 0 && line.onsetDenominator <= ScoreTime::largestDenominator &&
         line.onset <= ScoreTime::latest * line.onsetDenominator;
}

bool isValid(const zq_Score* score) {
  long long refusedNote = -1;
  if (!isScoreValid(score, &refusedNote) || score->numberOfBarLines < 0) return false;
  if (score->numberOfBarLines > 0 && score->barLines == nullptr) return false;
  return std::all_of(score->barLines, score->barLines + score->numberOfBarLines, isBarLineValid);
}

// --- feed

template <class Matrix>
zq_ScoreFeedSettings settingsOf(Matrix& matrix, int leavesOutPercussion) {
  zq_ScoreFeedSettings settings{matrix.getGlobalPreProcessingType(),
                                matrix.getGlobalMidiNoteOnQuantization(),
                                matrix.getGlobalMidiDurationQuantization(),
                                matrix.getGlobalMidiTrackAnalyze(),
                                leavesOutPercussion,
                                {}};
  if (const char* filter = matrix.getGlobalMidiChannelFilterArray()) std::copy_n(filter, 16, settings.channelFilter);
  return settings;
}

/// Reserved for one score at most: an empty sub-matrix takes some kilobytes.
constexpr long long mostSubMatrices = 4096;

/// The feed of one score. The global block is restored at the end.
template <class Matrix>
class ScoreFeed {
 public:
  ScoreFeed(Matrix* target, const zq_Score& source, const char* name)
      : matrix_(target),
        score_(source),
        fileName_(name != nullptr ? name : ""),
        keep_(target),
        before_(globalMidiSettings(*target)) {}
  ~ScoreFeed() { setGlobalMidiSettings(*matrix_, before_); }
  ScoreFeed(const ScoreFeed&) = delete;
  ScoreFeed& operator=(const ScoreFeed&) = delete;

  /// Returns the result of the last update. The plan's runs get their sub-matrix, or the cause why they have none.
  int run(ScorePlan& plan) {
    reserve(static_cast<int>(std::min(kindsOf(plan), mostSubMatrices)));
    int result = 0;
    for (PlannedRun& run : plan.runs) {
      if (run.reported.cause == zq_ScoreLearned) feed(plan, run, &result);
    }
    return result;
  }

 private:
  /// More sub-matrices can be reserved only while all are empty.
  void reserve(int needed) {
    if (matrix_->getHighestOccupiedMatrixID() >= 0) return;
    if (needed > matrix_->getMaxNumberOfMatrices()) matrix_->setMaxNumberOfMatrices(needed);
  }

  void feed(const ScorePlan& plan, PlannedRun& run, int* result) {
    setGlobalMidiSettings(*matrix_, midiSettingsFor(run.reported.preProcessingType));
    if (!makeMatrixCurrent(run)) {
      run.reported.cause = zq_ScoreNoSubMatrix;
      return;
    }
    applyMidiProperties(matrix_, fileName_, midiProfileTexts);
    describe(run);
    const std::vector<int> sequence = plan.sequenceOf(score_, run);
    const int coordinates = coordinatesOfNote(run.reported.preProcessingType);
    *result = matrix_->updateMatrixWithLongMIDISequence(sequence.data(), static_cast<int>(sequence.size()) / coordinates);
    run.reported.matrixID = matrix_->getCurrentMatrixID();
    if (*result < 1) {
      run.reported.cause = zq_ScoreNotTaken;
    } else {
      idOfKind_[run.kind()] = run.reported.matrixID;
    }
  }

  /// All properties of the run's kind must match; here a sound or texture of 0 is a value, not a wildcard.
  bool makeMatrixCurrent(const PlannedRun& run) {
    const KindOfRun kind = run.kind();
    if (const auto known = idOfKind_.find(kind); known != idOfKind_.end()) {
      matrix_->setCurrentMatrixID(known->second);
      return true;
    }
    const int style = matrix_->getGlobalMusicStyle();
    int id = getMatrixIDForMidi(matrix_, matrix_->getGlobalMatrixType(), kind.numerator, kind.denominator, [&](const auto& info) {
      return info.getPreProcessingType() == kind.preProcessingType && info.getMidiSubType() == kind.subType &&
             info.getMidiSoundID() == kind.soundID && info.getMusicStyle() == style && !info.isEmpty();
    });
    if (id < 0) {
      id = matrix_->getNextFreeMatrixID();
      if (id < 0) return false;
      matrix_->setNumberOfMatrices(id + 1);
    }
    matrix_->setCurrentMatrixID(id);
    return true;
  }

  void describe(const PlannedRun& run) {
    auto* info = matrix_->getMatrixInfo();
    const LearnedTrack track{run.reported.numerator, run.reported.denominator, run.reported.subType, run.reported.soundID,
                             run.reported.part + 1};
    describeLearnedTrack(info, track, fileName_);
    const int style = matrix_->getGlobalMusicStyle();
    info->setMusicStyle(style);
    matrix_->setMatrixDescription("Producer: 64-Bit, music read as scores, exactly");
    const NameOfLearnedTrack name = nameOfLearnedTrack(matrix_->getCurrentMatrixID(), track, style);
    const std::string entry = entryOfExactReading(name.text, run.reported.quartersPerMinute) + fileName_;
    if (entries_.insert(entry).second) info->addNameOfUpdateFile(entry.c_str());
  }

  Matrix* matrix_;
  const zq_Score& score_;
  const char* fileName_;
  const KeepCurrentMatrixID<Matrix> keep_;
  const MidiFeedSettings before_;
  std::map<KindOfRun, int> idOfKind_;
  std::set<std::string> entries_;  // of this score: an entry that several runs share is added once
};

template <class Matrix>
zq_ScoreFeedReport* updateMatrixWithScoreIn(Matrix* matrix, const zq_Score* score, const char* fileName,
                                            int leavesOutPercussion) {
  if (!isValid(score)) return nullptr;
  const zq_ScoreFeedSettings settings = settingsOf(*matrix, leavesOutPercussion);
  if (!isMusicSetting(settings) ||
      globalMidiSettings(*matrix).matrixType != midiSettingsFor(settings.preProcessingType).matrixType)
    return refusedReport(*score);
  ScorePlan plan = planScore(*score, settings);
  const int result = ScoreFeed<Matrix>(matrix, *score, fileName).run(plan);
  return reportOf(*score, plan, result);
}

template <class Matrix>
int getLearnedReadingsIn(Matrix* matrix) {
  int readings = 0;
  for (int id = 0; id < matrix->getMaxNumberOfMatrices(); ++id) {
    auto* info = matrix->getMatrixInfo(id);
    if (info->isEmpty() || !isMidiMatrixType(info->getMatrixType())) continue;
    const LearnedReadings ofInfo = readingsOf(info->getNamesOfUpdateFiles());
    readings |= (ofInfo.hasExact ? 2 : 0) | (ofInfo.hasClassic || !ofInfo.hasExact ? 1 : 0);
  }
  return readings;
}

}  // namespace

zq_ScoreFeedReport* createScoreFeedPlan(const zq_Score* score, const zq_ScoreFeedSettings* settings) {
  if (!isValid(score) || settings == nullptr) return nullptr;
  if (!isMusicSetting(*settings)) return refusedReport(*score);
  return reportOf(*score, planScore(*score, *settings), 0);
}

zq_ScoreFeedReport* updateMatrixWithScore(ZQMatrixMedium* matrix, const zq_Score* score, const char* fileName,
                                          int leavesOutPercussion) {
  return updateMatrixWithScoreIn(matrix, score, fileName, leavesOutPercussion);
}

zq_ScoreFeedReport* updateMatrixWithScore(ZQMatrix* matrix, const zq_Score* score, const char* fileName,
                                          int leavesOutPercussion) {
  return updateMatrixWithScoreIn(matrix, score, fileName, leavesOutPercussion);
}

void deleteScoreFeedReport(zq_ScoreFeedReport* report) {
  delete static_cast<OwnedReport*>(report);
}

const char* textOfScoreCause(int cause) {
  return cause >= 0 && cause < zq_ScoreNumberOfCauses ? causeTexts[cause] : "";
}

double getLearnedTempo(ZQMatrixMedium* matrix) {
  return readingsOf(matrix->getMatrixInfo()->getNamesOfUpdateFiles()).medianTempo;
}

double getLearnedTempo(ZQMatrix* matrix) {
  return readingsOf(matrix->getMatrixInfo()->getNamesOfUpdateFiles()).medianTempo;
}

int getLearnedReadings(ZQMatrixMedium* matrix) {
  return getLearnedReadingsIn(matrix);
}

int getLearnedReadings(ZQMatrix* matrix) {
  return getLearnedReadingsIn(matrix);
}

}  // namespace zmatrix
