#include "file/PlainMatrixFile.h"

#include <cstdlib>

namespace plain {

namespace {

void appendNumber(std::string& bytes, long long value, int size) {
  for (int i = 0; i < size; ++i) bytes += static_cast<char>((value >> (8 * i)) & 0xff);
}

}  // namespace

void MatrixFile::append(const std::string& before, std::initializer_list<Number> fields) {
  for (const Number& field : fields) {
    if (version_ < field.since) continue;
    places_.push_back({before + field.name, content_.size(), field.size});
    appendNumber(content_, field.value, field.size);
  }
}

void MatrixFile::text(const std::string& value, int size) {
  content_ += value + std::string(static_cast<size_t>(size) - value.size(), '\0');
}

void MatrixFile::flagged(const std::string& name, const std::vector<int>& values) {
  append(name, {{".flag", values.empty() ? 0 : 1}});
  for (size_t i = 0; i < values.size(); ++i) append(name, {{"." + std::to_string(i), values[i]}});
}

const FieldPlace& MatrixFile::place(const std::string& name) const {
  for (const FieldPlace& field : places_) {
    if (field.name == name) return field;
  }
  abort();
}

std::string MatrixFile::with(const FieldPlace& field, long long value) const {
  std::string changed;
  appendNumber(changed, value, field.size);
  return std::string(content_).replace(field.offset, static_cast<size_t>(field.size), changed);
}

long long MatrixFile::numberAt(const std::string& bytes, const FieldPlace& field) {
  uint64_t value = 0;
  for (int i = field.size - 1; i >= 0; --i) {
    value = value << 8 | static_cast<unsigned char>(bytes[field.offset + static_cast<size_t>(i)]);
  }
  return field.size == 8 ? static_cast<long long>(value) : static_cast<int>(static_cast<uint32_t>(value));
}

// The size in the record is the sum of its lengths after each tier's part.
void MatrixFile::build() {
  buildHeader();
  buildBlock("global.", false);
  buildBlock("symbol.", true);
  const size_t start = content_.size();
  buildBaseRecord();
  size_t sum = content_.size() - start;
  if (tier_ >= 1) {
    buildMediumRecord();
    sum += content_.size() - start;
  }
  if (tier_ >= 2) {
    buildFullRecord();
    sum += content_.size() - start;
  }
  content_ = with("updateInfoSize", static_cast<long long>(sum));
  buildElements();
}

void MatrixFile::buildFullRecord() {
  append("", {{"levelDown", -1}, {"levelUp", -1}, {"numberOfSymbols", 0}, {"newSymbol", 256}, {"keepSymbols", 1}});
}

void MatrixFile::buildHeader() {
  text("zmatrix", 8);
  text("made by hand", 504);
  append("", {{"lastSoftwareVersion", version_},
              {"is64BitMatrix", 0},
              {"maxNumberOfMatrices", 4},
              {"numberOfMatrices", 1},
              {"matrixAILevel", 0},
              {"offsetToUpdateInfos", 0},
              {"matrixBlockSize", 300},
              {"matrixBlockSizeOld", 0},
              {"maximalStack", 8},
              {"numberOfMatrixUpdates", 3},
              {"numberOfAppendedUpdates", 0, 4, 105},
              {"matrixDebugOutputDevice", 0},
              {"userRandomValue", 31459, 8},
              {"userRandomType", 1},
              {"systemRandomValue", 123456, 8},
              {"systemRandomType", 1},
              {"matrixInfoType", tier_, 4, 105}});
  for (int path = 0; path < 3; ++path) text("", 256);
}

void MatrixFile::buildBlock(const std::string& block, bool isSymbolBlock) {
  append(block, {{"matrixType", isSymbolBlock ? 2 : 0},
                 {"allowLargeIndices", 0},
                 {"coordinateDimension", 1},
                 {"memorySearchMethod", 1},
                 {"isPhraseMatrix", 0},
                 {"preProcessingType", 0}});
  text("", 256);
  append(block, {{"maxPhraseLength", 64},
                 {"useStartOfSequence", 1},
                 {"useEndOfSequence", 1},
                 {"usePhrases", isSymbolBlock ? 0 : 1},
                 {"skillOutputLevel", 256},
                 {"successorMethod", 3},
                 {"restartWithTrueStartItem", 1},
                 {"enableStopItem", 1},
                 {"includeOverdeterminedRules", 1},
                 {"addUpdateInfo", 0},
                 {"addSequenceToUpdateInfo", 1, 4, 105},
                 {"addSequenceToUpdateInfoMode", 1, 4, 105},
                 {"midiTimeSignatureNom", isSymbolBlock ? 0 : 4},
                 {"midiTimeSignatureDenom", isSymbolBlock ? 0 : 4},
                 {"language", 0},
                 {"midiSubType", 0},
                 {"midiSoundID", 0},
                 {"midiNoteOnQuantization", 16},
                 {"midiDurationQuantization", 16},
                 {"midiTrackAnalyze", 2},
                 {"musicStyle", 0}});
  text("", 16);
  int code = 50;
  for (const char* name : {"ocronType", "ocronEndSymbol", "ocronAlgorithm", "gocronAlgorithm", "gocronNumberBase",
                           "gocronASTERISKValue", "gocronPValue", "gocronTWOValue", "gocronPOWValue", "gocronQValue"}) {
    append(block, {{name, code++, 4, 112}});
  }
  append(block, {{"keepSymbols", 1}});
}

void MatrixFile::buildBaseRecord() {
  append("", {{"updateInfoSize", 0},
              {"magicNumber", 43112609},
              {"updateInfoType", tier_},
              {"timeStamp", 1000000000},
              {"softwareVersion", version_},
              {"matrixID", 0},
              {"matrixType", 0},
              {"allowLargeIndices", 0},
              {"coordinateDimension", 1},
              {"isFinalized", 0},
              {"memIsReadOnly", 0},
              {"sizeOfCoordinateDimensions", -4},
              {"maximalMatrixIndex", 500000},
              {"maxDimOfMatrix", 4096},
              {"memorySearchMethod", 1},
              {"currentDimension", 3},
              {"internalCurrentDimension", 32},
              {"numberOfMatrixWriteEvents", 8},
              {"numberOfMatrixDeleteEvents", 0},
              {"numberOfMatrixElements", 4},
              {"numberOfWriteElements", 3},
              {"numberOfWriteCounts", 8},
              {"numberOfEndElements", 2},
              {"internalLengthOfTemporaryMemory", 256}});
  flagged("minimalIndices", {1, 2, -1});
  flagged("maximalIndices", {3, 2, -1});
}

void MatrixFile::buildMediumRecord() {
  append("", {{"updateIndex", 2}, {"isPhraseMatrix", 0}, {"totalLengthOfAllUpdateSequences", 20}, {"preProcessingType", 0}});
  text("feed.txt", 256);
  append("", {{"lengthOfUpdateSequence", 9},
              {"maxPhraseLength", 64},
              {"numberOfRuleElements", 3},
              {"numberOfUniqueRuleElements", 2},
              {"numberOfOverDeterminedRules", 1},
              {"numberOfStartElements", 1},
              {"lengthOfKernelOriginal", 2},
              {"lengthOfKernelPreProcessed", 1},
              {"internalLengthOfKernelOriginal", 256},
              {"internalLengthOfKernelPreProcessed", 256},
              {"kernelMatrixHandle", 4},
              {"useStartOfSequence", 1},
              {"useEndOfSequence", 1},
              {"usePhrases", 1},
              {"skillOutputLevel", 256},
              {"successorMethod", 3},
              {"restartWithTrueStartItem", 1},
              {"enableStopItem", 1},
              {"includeOverdeterminedRules", 1},
              {"isOverDetermined", 0, 4, 89},
              {"addUpdateInfo", 0},
              {"addSequenceToUpdateInfo", 1, 4, 105},
              {"addSequenceToUpdateInfoMode", 1, 4, 105},
              {"successorRandomValue", 987654321, 8},
              {"successorRandomType", 1},
              {"midiTimeSignatureNom", 3},
              {"midiTimeSignatureDenom", 8},
              {"midiSubType", 1},
              {"midiSoundID", 6},
              {"midiNoteOnQuantization", 32},
              {"midiDurationQuantization", 64},
              {"midiTrackAnalyze", 1},
              {"musicStyle", 5}});
  text("\1\2\3", 16);
  append("", {{"language", 2}});
  for (int code = 0; code < 10; ++code) append("code", {{std::to_string(code), 60 + code, 4, 112}});
  flagged("rulesInDimension", {1, 1, 1});
  flagged("uniqueRulesInDimension", {1, 1, 0});
  flagged("writeElementsInDimension", {2, 0, 1});
  flagged("kernelOriginal", {11, 12});
  flagged("kernelPreProcessed", {13});
  append("namesOfUpdateFiles.", {{"flag", 1, 4, 134}, {"length", 10, 4, 134}});
  if (version_ >= 134) text("feed.txt\n", 10);
  append("", {{"updateSequence.flag", 0}});
}

void MatrixFile::element(int position, int writeCount, long long value, int index, int next, int previous, int child,
                         int parent) {
  const std::string name = "element" + std::to_string(position) + ".";
  append(name, {{"writeCount", writeCount},
                {"value", value, 8},
                {"index", index},
                {"next", next},
                {"previous", previous},
                {"child", child},
                {"parent", parent}});
  if (tier_ >= 1) append(name, {{"withSuccessor", position == 0 ? 8 : writeCount / 2}, {"withoutPredecessor", position == 4}});
  if (tier_ >= 2) append(name, {{"symbolID", 0}, {"symbolDownLink", 0}});
}

void MatrixFile::buildElements() {
  element(0, 0, 0, 0, 0, 0, 4, 0);
  for (int root = 1; root < 4; ++root) element(root, 0, 0, 0, 0, 0, 0, 0);
  element(4, 2, 100, 1, 2, 0, 4, -4);
  element(5, 5, -7, -1, 0, 0, 0, 3);
  element(6, 1, 1LL << 40, 3, 0, -2, 0, -6);
  append("", {{"run", -1}});
  element(8, 0, 0, 2, 0, 0, -3, -4);
}

}  // namespace plain
