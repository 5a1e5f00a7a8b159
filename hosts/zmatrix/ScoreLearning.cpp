// Learning by the exact reading: files are read as scores, and the scores are fed.
#include <map>

#include "ExactReport.h"
#include "Material.h"
#include "Messages.h"
#include "MusicLearning.h"

namespace {

// "34 notes of 1200".
std::string shareOf(long long part, long long whole) {
  return countOf(part, "note") + " of " + std::to_string(whole);
}

class ScoreLearning : public MusicLearning {
 public:
  explicit ScoreLearning(const ReadingOptions& options) : options_(options) {}

  void look(const InputFile& input, const Matrix::MusicSettings& settings) override {
    const Score score = read(input);
    if (const std::string refusal = refusalOf(*score); !refusal.empty()) {
      ++refusals_[refusal];
      return;
    }
    if (score->state == zq_ScoreCutShort) ++endings_;
    findings_ += findingsIn(*score);
    const FeedReport plan = planOf(*score, settings, options_.leavesOutPercussion);
    for (const auto& [cause, notes] : leftOutOf(*plan)) causes_[cause] += notes;
    if (plan->hasNoMeter != 0 && plan->notes > 0) ++withoutMeter_;
    notes_ += plan->notes;
    onsetsMoved_ += plan->onsetsMoved;
    durationsMoved_ += plan->durationsMoved;
    for (long long at = 0; at < plan->numberOfRuns; ++at) kinds_.insert(kindOf(plan->runs[at]));
  }

  void learn(Matrix& matrix, const InputFile& input) override {
    matrix.learnScore(*read(input), input.name, options_.leavesOutPercussion);
  }

  void printOmissions() const override {
    for (const auto& [reason, count] : refusals_) note("left out " + countOf(count, "file") + ": " + reason);
    for (const auto& [cause, notes] : causes_) note("left out " + countOf(notes, "note") + ": " + cause);
    if (endings_ > 0) note(countOf(endings_, "file") + " not read to the end; the part before the fault was learned");
    if (withoutMeter_ > 0) note(countOf(withoutMeter_, "file") + " without a meter, learned as 4/4");
    if (onsetsMoved_ > 0) note("the grid moves " + shareOf(onsetsMoved_, notes_) + " (--grid N sets a finer one)");
    if (durationsMoved_ > 0) {
      note("the grid changes the duration of " + shareOf(durationsMoved_, notes_) + " (--duration-grid N sets a finer one)");
    }
    if (!refusals_.empty() || !causes_.empty() || endings_ + findings_ > 0) {
      note((findings_ > 0 ? countOf(findings_, "finding") + "; " : "") + "for details see `zmatrix inspect FILE`");
    }
  }

  std::string reasons() const override {
    std::string why;
    for (const auto& [reason, count] : refusals_) why += (why.empty() ? "" : "; ") + countOf(count, "file") + ": " + reason;
    for (const auto& [cause, notes] : causes_) why += (why.empty() ? "" : "; ") + countOf(notes, "note") + ": " + cause;
    return why;
  }

 private:
  Score read(const InputFile& input) const { return readScore(input.path, input.kind, options_.graceQuanta.value_or(0)); }

  static long long findingsIn(const zq_Score& score) {
    long long findings = 0;
    for (const long long count : score.findingCounts) findings += count;
    return findings;
  }

  const ReadingOptions options_;
  long long notes_ = 0;
  long long endings_ = 0;
  long long withoutMeter_ = 0;
  long long findings_ = 0;
  long long onsetsMoved_ = 0;
  long long durationsMoved_ = 0;
  std::map<std::string, long long> causes_;    ///< of notes
  std::map<std::string, long long> refusals_;  ///< of files
};

}  // namespace

std::unique_ptr<MusicLearning> makeScoreLearning(const ReadingOptions& options) {
  return std::make_unique<ScoreLearning>(options);
}
