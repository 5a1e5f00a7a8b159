#include "file/PlainMatrixFile.h"

#include <cstdlib>

namespace plain {

namespace {

void appendNumber(std::string& bytes, long long value, int size) {
  for (int i = 0; i < size; ++i) bytes += static_cast<char>((value >> (8 * i)) & 0xff);
}

}  // namespace

void MatrixFile::number(const std::string& name, long long value, int size, int since) {
  if (version < since) return;
  places.push_back({name, content.size(), size});
  appendNumber(content, value, size);
}

void MatrixFile::text(const std::string& value, int size) {
  content += value + std::string(static_cast<size_t>(size) - value.size(), '\0');
}

void MatrixFile::flagged(const std::string& name, const std::vector<int>& values) {
  number(name + ".flag", values.empty() ? 0 : 1);
  for (size_t i = 0; i < values.size(); ++i) number(name + "." + std::to_string(i), values[i]);
}

const FieldPlace& MatrixFile::place(const std::string& name) const {
  for (const FieldPlace& field : places) {
    if (field.name == name) return field;
  }
  abort();
}

std::string MatrixFile::with(const FieldPlace& field, long long value) const {
  std::string changed;
  appendNumber(changed, value, field.size);
  return std::string(content).replace(field.offset, static_cast<size_t>(field.size), changed);
}

long long MatrixFile::numberAt(const std::string& bytes, const FieldPlace& field) {
  uint64_t value = 0;
  for (int i = field.size - 1; i >= 0; --i) {
    value = value << 8 | static_cast<unsigned char>(bytes[field.offset + static_cast<size_t>(i)]);
  }
  return field.size == 8 ? static_cast<long long>(value) : static_cast<int>(static_cast<uint32_t>(value));
}

// The size in the record is the sum of the lengths that it has behind each tier's part.
void MatrixFile::build() {
  buildHeader();
  buildBlock("global", false);
  buildBlock("symbol", true);
  const size_t start = content.size();
  buildBaseRecord();
  size_t sum = content.size() - start;
  if (tier >= 1) {
    buildMediumRecord();
    sum += content.size() - start;
  }
  if (tier >= 2) {
    buildFullRecord();
    sum += content.size() - start;
  }
  content = with("updateInfoSize", static_cast<long long>(sum));
  buildElements();
}

void MatrixFile::buildFullRecord() {
  number("levelDown", -1);
  number("levelUp", -1);
  number("numberOfSymbols", 0);
  number("newSymbol", 256);
  number("keepSymbols", 1);
}

void MatrixFile::buildHeader() {
  text("zmatrix", 8);
  text("made by hand", 504);
  number("lastSoftwareVersion", version);
  number("is64BitMatrix", 0);
  number("maxNumberOfMatrices", 4);
  number("numberOfMatrices", 1);
  number("matrixAILevel", 0);
  number("offsetToUpdateInfos", 0);
  number("matrixBlockSize", 300);
  number("matrixBlockSizeOld", 0);
  number("maximalStack", 8);
  number("numberOfMatrixUpdates", 3);
  number("numberOfAppendedUpdates", 0, 4, 105);
  number("matrixDebugOutputDevice", 0);
  number("userRandomValue", 31459, 8);
  number("userRandomType", 1);
  number("systemRandomValue", 123456, 8);
  number("systemRandomType", 1);
  number("matrixInfoType", tier, 4, 105);
  text("", 256);
  text("", 256);
  text("", 256);
}

void MatrixFile::buildBlock(const std::string& block, bool isSymbolBlock) {
  const auto field = [&](const char* name, int value, int since = 0) { number(block + "." + name, value, 4, since); };
  field("matrixType", isSymbolBlock ? 2 : 0);
  field("allowLargeIndices", 0);
  field("coordinateDimension", 1);
  field("memorySearchMethod", 1);
  field("isPhraseMatrix", 0);
  field("preProcessingType", 0);
  text("", 256);
  field("maxPhraseLength", 64);
  field("useStartOfSequence", 1);
  field("useEndOfSequence", 1);
  field("usePhrases", isSymbolBlock ? 0 : 1);
  field("skillOutputLevel", 256);
  field("successorMethod", 3);
  field("restartWithTrueStartItem", 1);
  field("enableStopItem", 1);
  field("includeOverdeterminedRules", 1);
  field("addUpdateInfo", 0);
  field("addSequenceToUpdateInfo", 1, 105);
  field("addSequenceToUpdateInfoMode", 1, 105);
  field("midiTimeSignatureNom", isSymbolBlock ? 0 : 4);
  field("midiTimeSignatureDenom", isSymbolBlock ? 0 : 4);
  for (const char* name : {"language", "midiSubType", "midiSoundID"}) field(name, 0);
  field("midiNoteOnQuantization", 16);
  field("midiDurationQuantization", 16);
  field("midiTrackAnalyze", 2);
  field("musicStyle", 0);
  text("", 16);
  int code = 50;
  for (const char* name : {"ocronType", "ocronEndSymbol", "ocronAlgorithm", "gocronAlgorithm", "gocronNumberBase",
                           "gocronASTERISKValue", "gocronPValue", "gocronTWOValue", "gocronPOWValue", "gocronQValue"}) {
    field(name, code++, 112);
  }
  field("keepSymbols", 1);
}

void MatrixFile::buildBaseRecord() {
  number("updateInfoSize", 0);
  number("magicNumber", 43112609);
  number("updateInfoType", tier);
  number("timeStamp", 1000000000);
  number("softwareVersion", version);
  number("matrixID", 0);
  number("matrixType", 0);
  number("allowLargeIndices", 0);
  number("coordinateDimension", 1);
  number("isFinalized", 0);
  number("memIsReadOnly", 0);
  number("sizeOfCoordinateDimensions", -4);
  number("maximalMatrixIndex", 500000);
  number("maxDimOfMatrix", 4096);
  number("memorySearchMethod", 1);
  number("currentDimension", 3);
  number("internalCurrentDimension", 32);
  number("numberOfMatrixWriteEvents", 8);
  number("numberOfMatrixDeleteEvents", 0);
  number("numberOfMatrixElements", 4);
  number("numberOfWriteElements", 3);
  number("numberOfWriteCounts", 8);
  number("numberOfEndElements", 2);
  number("internalLengthOfTemporaryMemory", 256);
  flagged("minimalIndices", {1, 2, -1});
  flagged("maximalIndices", {3, 2, -1});
}

void MatrixFile::buildMediumRecord() {
  number("updateIndex", 2);
  number("isPhraseMatrix", 0);
  number("totalLengthOfAllUpdateSequences", 20);
  number("preProcessingType", 0);
  text("feed.txt", 256);
  number("lengthOfUpdateSequence", 9);
  number("maxPhraseLength", 64);
  number("numberOfRuleElements", 3);
  number("numberOfUniqueRuleElements", 2);
  number("numberOfOverDeterminedRules", 1);
  number("numberOfStartElements", 1);
  number("lengthOfKernelOriginal", 2);
  number("lengthOfKernelPreProcessed", 1);
  number("internalLengthOfKernelOriginal", 256);
  number("internalLengthOfKernelPreProcessed", 256);
  number("kernelMatrixHandle", 4);
  for (const char* name : {"useStartOfSequence", "useEndOfSequence", "usePhrases"}) number(name, 1);
  number("skillOutputLevel", 256);
  number("successorMethod", 3);
  for (const char* name : {"restartWithTrueStartItem", "enableStopItem", "includeOverdeterminedRules"}) number(name, 1);
  number("isOverDetermined", 0, 4, 89);
  number("addUpdateInfo", 0);
  number("addSequenceToUpdateInfo", 1, 4, 105);
  number("addSequenceToUpdateInfoMode", 1, 4, 105);
  number("successorRandomValue", 987654321, 8);
  number("successorRandomType", 1);
  number("midiTimeSignatureNom", 3);
  number("midiTimeSignatureDenom", 8);
  number("midiSubType", 1);
  number("midiSoundID", 6);
  number("midiNoteOnQuantization", 32);
  number("midiDurationQuantization", 64);
  number("midiTrackAnalyze", 1);
  number("musicStyle", 5);
  text("\1\2\3", 16);
  number("language", 2);
  for (int code = 0; code < 10; ++code) number("code" + std::to_string(code), 60 + code, 4, 112);
  flagged("rulesInDimension", {1, 1, 1});
  flagged("uniqueRulesInDimension", {1, 1, 0});
  flagged("writeElementsInDimension", {2, 0, 1});
  flagged("kernelOriginal", {11, 12});
  flagged("kernelPreProcessed", {13});
  if (version >= 134) {
    number("namesOfUpdateFiles.flag", 1);
    number("namesOfUpdateFiles.length", 10);
    text("feed.txt\n", 10);
  }
  number("updateSequence.flag", 0);
}

void MatrixFile::element(int position, int writeCount, long long value, int index, int next, int previous, int child,
                         int parent) {
  const std::string name = "element" + std::to_string(position) + ".";
  number(name + "writeCount", writeCount);
  number(name + "value", value, 8);
  number(name + "index", index);
  number(name + "next", next);
  number(name + "previous", previous);
  number(name + "child", child);
  number(name + "parent", parent);
  if (tier >= 1) {
    number(name + "withSuccessor", position == 0 ? 8 : writeCount / 2);
    number(name + "withoutPredecessor", position == 4 ? 1 : 0);
  }
  if (tier >= 2) {
    number(name + "symbolID", 0);
    number(name + "symbolDownLink", 0);
  }
}

void MatrixFile::buildElements() {
  element(0, 0, 0, 0, 0, 0, 4, 0);
  for (int root = 1; root < 4; ++root) element(root, 0, 0, 0, 0, 0, 0, 0);
  element(4, 2, 100, 1, 2, 0, 4, -4);
  element(5, 5, -7, -1, 0, 0, 0, 3);
  element(6, 1, 1LL << 40, 3, 0, -2, 0, -6);
  number("run", -1);
  element(8, 0, 0, 2, 0, 0, -3, -4);
}

}  // namespace plain
