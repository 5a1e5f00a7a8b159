// Learning by the classic readers: the library's functions read a file and feed it in one call.
#include <map>

#include "Failure.h"
#include "Material.h"
#include "Messages.h"
#include "MusicLearning.h"
#include "MusicReport.h"

namespace {

// Reduces "line 3, column 2: the rule (token)" to "the rule", so that equal faults of several files are counted together.
std::string withoutPlace(const std::string& refusal) {
  const std::size_t colon = refusal.rfind("line ", 0) == 0 ? refusal.find(": ") : std::string::npos;
  if (colon == std::string::npos) return refusal;
  const std::string rule = refusal.substr(colon + 2);
  return rule.substr(0, rule.back() == ')' ? rule.rfind(" (") : rule.size());
}

class ClassicLearning : public MusicLearning {
 public:
  void look(const InputFile& input, const Matrix::MusicSettings& settings) override {
    const MusicReport report = reportOf(input, settings);
    if (!report.refusal.empty()) ++refusals_[withoutPlace(report.refusal)];
    if (!report.ending.empty()) ++endings_;
    for (const std::string& reason : report.discarded) ++reasons_[reason];
    kinds_.insert(report.kinds.begin(), report.kinds.end());
    notesLost_ += report.notesWithoutEnd;
  }

  void learn(Matrix& matrix, const InputFile& input) override { matrix.learnMusic(input.path, input.kind); }

  void printOmissions() const override {
    for (const auto& [reason, count] : reasons_) note("left out " + countOf(count, "track") + ": " + reason);
    for (const auto& [reason, count] : refusals_) note("left out " + countOf(count, "file") + ": " + reason);
    if (endings_ > 0) note(countOf(endings_, "file") + " not read to the end; the part before the fault was learned");
    if (notesLost_ > 0) note("left out " + countOf(notesLost_, "note") + " without an end");
    if (!reasons_.empty() || !refusals_.empty() || endings_ + notesLost_ > 0) note("for details see `zmatrix inspect FILE`");
  }

  std::string reasons() const override {
    std::string why;
    for (const auto& [reason, count] : refusals_) why += (why.empty() ? "" : "; ") + countOf(count, "file") + ": " + reason;
    for (const auto& [reason, count] : reasons_) why += (why.empty() ? "" : "; ") + countOf(count, "track") + ": " + reason;
    return why;
  }

 private:
  long long notesLost_ = 0;
  long long endings_ = 0;
  std::map<std::string, long long> reasons_;   ///< of tracks
  std::map<std::string, long long> refusals_;  ///< of files
};

}  // namespace

std::unique_ptr<MusicLearning> makeClassicLearning() {
  return std::make_unique<ClassicLearning>();
}

std::unique_ptr<MusicLearning> MusicLearning::of(Reading reading, const ReadingOptions& options) {
  if (reading == Reading::exact) return makeScoreLearning(options);
  if (options.graceQuanta) throw Failure{ExitCode::usage, "--grace-quanta needs the exact reading"};
  if (options.leavesOutPercussion) {
    throw Failure{ExitCode::usage, "--no-percussion needs the exact reading; --skip-channel 10 leaves out drums"};
  }
  return makeClassicLearning();
}
