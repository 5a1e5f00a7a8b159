#include "MusicContinuation.h"

#include <algorithm>
#include <climits>

#include "Failure.h"
#include "MusicCoding.h"
#include "MusicLearning.h"
#include "ScratchFile.h"

namespace {

constexpr long long usualCount = 200;
constexpr std::size_t longestContext = 64;  // the last notes of a start, as many as are used
constexpr int idsOfStart = 64;

// The notes, which have four coordinates each, with as many coordinates as the sub-matrix has.
std::vector<int> itemsFor(const ZQMatrixProperties& record, const std::vector<std::vector<int>>& notes) {
  std::vector<int> items;
  for (const std::vector<int>& note : notes) {
    items.insert(items.end(), note.begin(), note.begin() + std::min(record.coordinateDimension, 4));
  }
  return items;
}

std::vector<std::vector<int>> notesFrom(const ZQMatrixProperties& record, const std::vector<int>& items) {
  std::vector<std::vector<int>> notes;
  const auto dimension = static_cast<std::size_t>(record.coordinateDimension);
  for (std::size_t at = 0; at + dimension <= items.size(); at += dimension) {
    std::vector<int> note(items.begin() + static_cast<std::ptrdiff_t>(at),
                          items.begin() + static_cast<std::ptrdiff_t>(at + dimension));
    if (dimension < 3) note.push_back(3072);
    if (dimension < 4) note.push_back(record.midiSoundID);
    notes.push_back(note);
  }
  return notes;
}

bool isAlike(const ZQMatrixProperties& one, const ZQMatrixProperties& other) {
  return one.midiTimeSignatureNom == other.midiTimeSignatureNom && one.midiTimeSignatureDenom == other.midiTimeSignatureDenom &&
         one.midiSubType == other.midiSubType && one.midiSoundID == other.midiSoundID;
}

}  // namespace

MusicContinuation::MusicContinuation(Matrix& matrix, const GenerationOptions& options) : matrix_(matrix), options_(options) {
  refuseTextOptions(options, "music");
  if (!options.start.empty()) voices_ = readStart();
  if (!options.matrixID) {
    chooseFromAll();
    return;
  }
  id_ = *options.matrixID;
  if (id_ >= matrix.numberOfIDs() || !matrix.isOccupied(id_) || !isMusic(matrix.record(id_))) {
    throw Failure{ExitCode::usage,
                  "--matrix " + std::to_string(id_) + ": no sub-matrix of this ID holds music (`zmatrix info` lists them)"};
  }
}

void MusicContinuation::chooseFromAll() {
  int longestKnown = -1;
  for (int id = 0; id < matrix_.numberOfIDs(); ++id) {
    if (!matrix_.isOccupied(id) || !isMusic(matrix_.record(id))) continue;
    const int known = voices_.empty() ? 0 : goTo(id);
    if (known > longestKnown || (known == longestKnown && notesOf(matrix_.record(id)) > notesOf(matrix_.record(id_)))) {
      id_ = id;
      longestKnown = known;
    }
  }
  if (id_ < 0) throw Failure{ExitCode::badInput, "nothing to continue: the model holds no music"};
}

// The reading of the options, else that of the model.
Reading MusicContinuation::readingOfStart() const {
  const bool isExact = matrix_.readings().hasExact;
  return options_.reading.reading.value_or(isExact ? Reading::exact : Reading::classic);
}

// Learns the start into a temporary matrix with the settings of the model, to get the notes as the model would learn them.
std::vector<MusicContinuation::Voice> MusicContinuation::readStart() const {
  requireReadable(options_.start);
  const Kind kind = kindOfContent(options_.start);
  if (subjectOf(kind) != Subject::music) throw Failure{ExitCode::badInput, options_.start + " is neither a MIDI nor a kern file"};
  const std::unique_ptr<MusicLearning> learning = MusicLearning::of(readingOfStart(), options_.reading);
  const std::unique_ptr<Matrix> scratch = Matrix::create(Tier::medium, {-1});
  scratch->reserveIDs(idsOfStart);
  scratch->prepareForMusic(matrix_.musicSettings());
  scratch->setPhraseLimit(1);
  scratch->keepHistory();
  learning->learn(*scratch, {options_.start, options_.start, 0, kind});
  std::vector<Voice> voices;
  for (int id = 0; id < scratch->numberOfIDs(); ++id) {
    if (!scratch->isOccupied(id)) continue;
    const ZQMatrixProperties record = scratch->record(id);
    std::vector<std::vector<int>> notes = notesFrom(record, scratch->lastSeriesLearned(id));
    if (notes.size() > longestContext) notes.erase(notes.begin(), notes.end() - longestContext);
    voices.push_back({record, notes});
  }
  if (voices.empty()) {
    throw Failure{ExitCode::badInput, options_.start + " has no track that can be continued (see `zmatrix inspect`)"};
  }
  return voices;
}

// The track with the meter, subtype and sound of the sub-matrix, else the one with the most notes.
const MusicContinuation::Voice* MusicContinuation::voiceFor(int id) const {
  const ZQMatrixProperties& record = matrix_.record(id);
  const Voice* longest = &voices_.front();
  for (const Voice& voice : voices_) {
    if (isAlike(voice.record, record)) return &voice;
    if (notesOf(voice.record) > notesOf(longest->record)) longest = &voice;
  }
  return longest;
}

// Selects a sub-matrix and sets its context. Returns the length of the known ending of the start.
int MusicContinuation::goTo(int id) {
  const MutedMessages muted(matrix_);  // the library warns of a start that was not learned
  matrix_.select(id);
  if (voices_.empty()) return 0;
  matrix_.setContext(itemsFor(matrix_.record(id), voiceFor(id)->notes));
  return matrix_.lengthOfContext();
}

// Shifts the context, which may begin anywhere in the start, so that it begins in the first bar.
void MusicContinuation::moveToFirstBar(int id) {
  const MutedMessages muted(matrix_);
  const auto dimension = static_cast<std::size_t>(matrix_.record(id).coordinateDimension);
  const int barLength = barLengthOf(matrix_.record(id));
  std::vector<int> items = matrix_.context();
  if (items.size() < dimension) return;
  const int shift = items[1] / barLength * barLength;
  for (std::size_t at = 1; at < items.size(); at += dimension) items[at] -= shift;
  matrix_.setContext(items);
}

std::string MusicContinuation::description() const {
  const ZQMatrixProperties& record = matrix_.record(id_);
  return "ID " + std::to_string(id_) + ": " + meterOf(record) + ", " + nameOfSubType(record.midiSubType) + ", " +
         nameOfSound(record.midiSoundID) + ", " + countOf(notesOf(record), "note");
}

// The result of a model of the classic reading, written by the library's own MIDI writer, so that its bytes stay the same.
std::string MusicContinuation::classicMidi(int count) {
  const ScratchFile file;
  const bool isWritten = matrix_.writeMusic(count, file.path());
  std::string bytes = file.bytes();
  if (!isWritten || bytes.empty()) throw Failure{ExitCode::limit, "the notes could not be written: out of memory"};
  return bytes;
}

void MusicContinuation::write(Output& output, Progress& progress) {
  goTo(id_);
  if (!voices_.empty()) moveToFirstBar(id_);
  matrix_.setMethod(options_.method);
  matrix_.seed(options_.seed);
  progress.show("writing", 0);
  const auto count = static_cast<int>(std::min<long long>(options_.count.value_or(usualCount), INT_MAX));
  const bool isOfScores = matrix_.readings().hasExact || options_.tempo;
  output.write(isOfScores ? midiOf(*matrix_.compose(count, options_.tempo)) : classicMidi(count));
  output.commit();
  progress.clear();
}
