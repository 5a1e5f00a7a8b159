// Music: MIDI and kern files. Each track is learned in the sub-matrix of its meter, kind and sound.
#include <algorithm>
#include <set>
#include <sstream>

#include "Failure.h"
#include "Material.h"
#include "MusicCoding.h"
#include "MusicContinuation.h"
#include "MusicLearning.h"
#include "Nearest.h"

namespace {

// The library stores a description of the track before the name: "MatID0: 4/4, Monophon, Undefined, Piano (track1): tune.mid".
std::set<std::string> filesOf(const ZQMatrixProperties& record) {
  std::set<std::string> files;
  std::istringstream names(record.namesOfUpdateFiles != nullptr ? record.namesOfUpdateFiles : "");
  for (std::string name; std::getline(names, name);) {
    const std::size_t end = name.rfind("MatID", 0) == 0 ? name.find("): ") : std::string::npos;
    files.insert(end == std::string::npos ? name : name.substr(end + 3));
  }
  return files;
}

const char* nameOf(const Matrix::Readings& readings) {
  if (readings.hasExact && readings.hasClassic) return "exact and classic";
  return nameOf(readings.hasExact ? Reading::exact : Reading::classic);
}

constexpr int usualPhraseLimit = 8;
constexpr int usualGrid = 16;
constexpr int leastIDs = 64;  // leaves room for the tracks of later files
constexpr int mostIDs = 4096;

class MusicMaterial : public Material {
 public:
  explicit MusicMaterial(const LearningOptions& options) : options_(options) {}

  void requireFitting(const Output& output) const override {
    if (output.isOnTerminal()) throw Failure{ExitCode::usage, "won't write MIDI to a terminal; use --out FILE.mid"};
  }

  std::unique_ptr<Matrix> makeMatrix(const std::vector<InputFile>& inputs, MessageLevel messageLevel) override {
    settings_ = wantedSettings();
    look(options_.reading.reading.value_or(Reading::exact), inputs);
    std::unique_ptr<Matrix> matrix = Matrix::create(options_.tier.value_or(Tier::medium), messageLevel);
    matrix->reserveIDs(std::clamp(static_cast<int>(learning_->kinds().size()) + leastIDs / 2, leastIDs, mostIDs));
    matrix->prepareForMusic(settings_);
    matrix->setPhraseLimit(options_.maxPhrase.value_or(usualPhraseLimit));
    matrix->keepHistory();  // the notes of a sub-matrix are counted only with a history
    return matrix;
  }

  void adjust(Matrix& matrix, const std::vector<InputFile>& inputs) override {
    settings_ = matrix.musicSettings();
    const MusicCoding* const coding = findMusicCoding(settings_.preprocessing);
    if (options_.coding && (coding == nullptr || *options_.coding != coding->name)) {
      refuseUpdate(std::string("the model was learned with --coding ") + (coding == nullptr ? "of its own" : coding->name));
    }
    if (options_.grid.value_or(settings_.grid) != settings_.grid) {
      refuseUpdate("the model was learned with --grid " + std::to_string(settings_.grid));
    }
    if (options_.durationGrid.value_or(settings_.durationGrid) != settings_.durationGrid) {
      refuseUpdate("the model was learned with --duration-grid " + std::to_string(settings_.durationGrid));
    }
    if (options_.tracks) settings_.tracks = *options_.tracks;
    if (!options_.skippedChannels.empty()) settings_.skippedChannels = wantedFilter();
    if (options_.maxPhrase) matrix.setPhraseLimit(*options_.maxPhrase);
    look(readingFor(matrix), inputs);
  }

  // A feed may leave the global settings changed, so they are set before and after each file.
  int learn(Matrix& matrix, const InputFile& input) override {
    matrix.prepareForMusic(settings_);
    learning_->learn(matrix, input);
    matrix.prepareForMusic(settings_);
    return -1;
  }

  void printOmissions() const override { learning_->printOmissions(); }

  std::string nothingLearned() const override {
    const std::string why = learning_->reasons();
    return "nothing to learn: " + (why.empty() ? "the input has no track with notes" : why);
  }

  std::string amountIn(Matrix& matrix) const override {
    long long notes = 0;
    long long matrices = 0;
    for (int id = 0; id < matrix.numberOfIDs(); ++id) {
      if (!matrix.isOccupied(id) || !isMusic(matrix.record(id))) continue;
      notes += notesOf(matrix.record(id));
      ++matrices;
    }
    return countOf(notes, "note") + " of " + countOf(matrices, "kind") + " of track";
  }

  void describe(Matrix& matrix, nlohmann::ordered_json& description) const override {
    const Matrix::MusicSettings settings = matrix.musicSettings();
    const MusicCoding* const coding = findMusicCoding(settings.preprocessing);
    description["coding"] = coding == nullptr ? "preprocessing " + std::to_string(settings.preprocessing) : coding->name;
    description["reading"] = nameOf(matrix.readings());
    description["grid"] = settings.grid;
    description["duration_grid"] = settings.durationGrid;
  }

  nlohmann::ordered_json overview(Matrix& matrix) const override {
    nlohmann::ordered_json lines = nlohmann::ordered_json::array();
    for (int id = 0; id < matrix.numberOfIDs(); ++id) {
      if (!matrix.isOccupied(id)) continue;
      const ZQMatrixProperties& record = matrix.record(id);
      if (!isMusic(record)) continue;
      const MusicCoding* const coding = findMusicCoding(record.preProcessingType);
      lines.push_back({{"id", id},
                       {"meter", meterOf(record)},
                       {"kind", nameOfSubType(record.midiSubType)},
                       {"sound", nameOfSound(record.midiSoundID)},
                       {"coding", coding == nullptr ? "" : coding->name},
                       {"tempo", matrix.learnedTempo(id)},
                       {"notes", notesOf(record)},
                       {"files", filesOf(record).size()}});
    }
    return lines;
  }

  std::unique_ptr<Continuation> continuation(Matrix& matrix, const GenerationOptions& options) const override {
    return std::make_unique<MusicContinuation>(matrix, options);
  }

 private:
  Matrix::MusicSettings wantedSettings() const {
    const std::string name = options_.coding.value_or("triple");
    const MusicCoding* const coding = findMusicCoding(name);
    if (coding == nullptr) throw Failure{ExitCode::usage, name + " is not a coding of music: " + listOf(namesOfMusicCodings())};
    return {coding->preprocessing, options_.grid.value_or(usualGrid), options_.durationGrid.value_or(usualGrid),
            options_.tracks.value_or(Tracks::both), wantedFilter()};
  }

  std::array<char, 16> wantedFilter() const {
    std::array<char, 16> filter{};
    for (const int channel : options_.skippedChannels) filter[static_cast<std::size_t>(channel - 1)] = 1;
    return filter;
  }

  // Looks at all files before the first is learned.
  void look(Reading reading, const std::vector<InputFile>& inputs) {
    reading_ = reading;
    learning_ = MusicLearning::of(reading, options_.reading);
    for (const InputFile& input : inputs) learning_->look(input, settings_);
  }

  // An update uses the reading of the model. A model that holds both readings, or is empty, takes the one of the options.
  Reading readingFor(Matrix& matrix) const {
    const Matrix::Readings readings = matrix.readings();
    if (readings.hasClassic == readings.hasExact) return options_.reading.reading.value_or(Reading::exact);
    const Reading reading = readings.hasExact ? Reading::exact : Reading::classic;
    if (options_.reading.reading.value_or(reading) != reading) {
      refuseUpdate(std::string("the model was learned with --reading ") + nameOf(reading));
    }
    return reading;
  }

  const LearningOptions& options_;
  Matrix::MusicSettings settings_{};
  Reading reading_ = Reading::exact;
  std::unique_ptr<MusicLearning> learning_;
};

}  // namespace

std::unique_ptr<Material> makeMusicMaterial(const LearningOptions& options) {
  return std::make_unique<MusicMaterial>(options);
}
