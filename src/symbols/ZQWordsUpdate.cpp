#include "symbols/ZQWordsUpdate.h"

#include <cstdlib>

#include "frame/ZQSystemOwned.h"
#include "sequence/ZQBulkUpdate.h"
#include "sequence/ZQUpdateWorker.h"
#include "store/ZQKeepCurrentMatrixID.h"
#include "symbols/ZQFullTier.h"
#include "symbols/ZQWordTable.h"

namespace zmatrix {

namespace {

using Write = ZQStoreWrite<ZQFullTier>;

constexpr int lineFeedSymbol = 10;
constexpr int noSymbol = -1;

bool takesWords(ZQMatrix& matrix) {
  const ZQMatrixInfo& info = *matrix.getMatrixInfo();
  return info.getMatrixType() == ZQMatrixTypeANSIText && info.getCoordinateDimension() == 1 && matrix.getMatrixAILevel() == 1;
}

/// Counts a word, and each of its beginnings, once per occurrence, since a phrase needs its context. The element of the last
/// letter gets the symbol. Returns the position of that element, or -1 if a write failed.
int writeWord(ZQMatrix& matrix, const WordTable::Word& word) {
  ZQMatrixInfo& info = *matrix.getMatrixInfo();
  const int length = static_cast<int>(word.letters.size());
  int position = Write::provideRoot(matrix);
  for (int i = 0; i < length && position >= 0; ++i) {
    if (!Write::step(matrix, info, position, i, word.letters[static_cast<size_t>(i)])) return -1;
    const bool isEnd = i == length - 1;
    zmatrix::ZQFullTier::WriteFlags flags{};
    flags.startFlag = i == 0 && info.getUseStartOfSequence() == 1;
    flags.endFlag = isEnd && info.getUseEndOfSequence() == 1;
    flags.symbolMarker = isEnd;
    for (int time = 0; time < word.count; ++time) {
      Write::countWrite(matrix, info, position, i + 1, flags);
      flags.symbolMarker = 0;
    }
  }
  return position;
}

/// Learns a word and returns its symbol; noSymbol if the symbol exceeds the maximal index, -2 if a write failed.
int learnWord(ZQMatrix& matrix, const WordTable::Word& word) {
  const int position = writeWord(matrix, word);
  if (position < 0) return -2;
  auto* root = matrix.elementAt(matrix.getCurrentMatrixID());
  root->addWriteCountWithSuccessor(word.count * static_cast<int>(word.letters.size()));
  root->setWriteCount(root->getWriteCount() + word.count);
  const int highest = matrix.getMatrixInfo()->getMaximalMatrixIndex();
  const int symbol = matrix.elementAt(position)->getSymbolID();
  if (symbol <= highest) return symbol;
  dbPrintf(0, "getSymbolsFromLongAnsi..(): Symbol %d exceeds max. matrix index %d\n", symbol, highest);
  return noSymbol;
}

/// Saves the links of the current symbol level while the level learns, and restores them at the end: moving a field of the level
/// shifts the links of its elements, which makes them stale.
class KeepLinks {
 public:
  explicit KeepLinks(ZQMatrix& matrix) : matrix_(matrix), level_(matrix.getCurrentMatrixID()) {
    const ZQMatrixBaseElement* root = matrix_.elementAt(level_);
    int position = root != nullptr && root->getOffsetToElementInNextDimension() != 0
                       ? level_ + root->getOffsetToElementInNextDimension()
                       : -1;
    while (position >= 0 && matrix_.elementAt(position) != nullptr) {
      const auto* symbol = matrix_.elementAt(position);
      links_.push_back({symbol->getIndexInDimension(), symbol->getSymbolDownLinkHandle()});
      position = Write::nextInField(matrix_, position);
    }
  }
  ~KeepLinks() {
    for (const Link& link : links_) {
      const int position = matrix_.childAt(level_, link.symbol);
      if (position >= 0) matrix_.elementAt(position)->setSymbolDownLinkHandle(link.handle);
    }
  }
  KeepLinks(const KeepLinks&) = delete;
  KeepLinks& operator=(const KeepLinks&) = delete;

 private:
  struct Link {
    int symbol;
    int handle;
  };
  ZQMatrix& matrix_;
  const int level_;
  std::vector<Link> links_;
};

/// Learns a sequence of symbols in the current sub-matrix, which is their level.
int learnSymbols(ZQMatrix& matrix, const std::vector<int>& symbols) {
  ZQMatrixInfo& info = *matrix.getMatrixInfo();
  const int count = static_cast<int>(symbols.size());
  if (info.getAddUpdateInfo() == 1) info.generateUpdateInfoSequence(symbols.data(), count);
  if (matrix.checkSettingsForUpdateMatrixWithSequence(1, ZQPreProcessingTypeNone, 0, ZQMatrixTypeIntegerSeries) < 1) return 0;
  const KeepLinks keep(matrix);
  const int result =
      info.getIncludeOverdeterminedRules() == 0
          ? learnPreProcessed(matrix, symbols.data(), count, {}, nullptr)
          : ZQBulkUpdate<ZQFullTier>(matrix, symbols.data(), count).run(info.getMaxPhraseLengthForUpdateWithSequence());
  if (result == 1) matrix.countUpdate();
  return result;
}

/// Sets the links of the symbols, after learning, which moves phrases.
void linkSymbols(ZQMatrix& matrix, int levelUp, const WordTable& table, const std::vector<int>& symbolOfWord) {
  for (size_t word = 0; word < table.words.size(); ++word) {
    int position = matrix.getCurrentMatrixID();
    for (const int letter : table.words[word].letters) position = matrix.childAt(position, letter);
    const int symbolPosition = symbolOfWord[word] > 0 ? matrix.childAt(levelUp, symbolOfWord[word]) : -1;
    if (symbolPosition < 0) continue;
    matrix.elementAt(symbolPosition)->setSymbolDownLinkHandle(position);
  }
}

/// The symbols of a text, in order.
std::vector<int> symbolsOf(const WordTable& table, const std::vector<int>& symbolOfWord) {
  std::vector<int> symbols;
  symbols.reserve(table.sequence.size());
  for (const int word : table.sequence) {
    const int symbol = word >= 0                     ? symbolOfWord[static_cast<size_t>(word)]
                       : word == WordTable::lineFeed ? lineFeedSymbol
                                                     : noSymbol;
    if (symbol > 0) symbols.push_back(symbol);
  }
  return symbols;
}

int learnWordTable(ZQMatrix& matrix, const WordTable& table) {
  std::vector<int> symbolOfWord(table.words.size(), noSymbol);
  for (size_t word = 0; word < table.words.size(); ++word) {
    symbolOfWord[word] = learnWord(matrix, table.words[word]);
    if (symbolOfWord[word] == -2) return -1;
  }
  matrix.countUpdate();
  const std::vector<int> symbols = symbolsOf(table, symbolOfWord);
  if (symbols.empty()) return 0;
  const KeepCurrentMatrixID<ZQMatrix> keep(&matrix);
  const int basicID = matrix.getCurrentMatrixID();
  const int levelUp = matrix.enterLevelUp();
  if (levelUp < 0) return 0;
  const int result = learnSymbols(matrix, symbols);
  matrix.setCurrentMatrixID(basicID);
  if (result == 1) linkSymbols(matrix, levelUp, table, symbolOfWord);
  return result;
}

}  // namespace

int updateMatrixWithWordsOfLongANSISequence(ZQMatrix* matrix, const int* sequence, int length, int* wordsLeftOut) {
  if (wordsLeftOut != nullptr) *wordsLeftOut = 0;
  if (sequence == nullptr || length < 1 || !takesWords(*matrix)) return 0;
  ZQMatrixInfo& info = *matrix->getMatrixInfo();
  if (info.getMemIsReadOnly() || matrix->getIsPhraseMatrix() != 1 ||
      matrix->checkSettingsForUpdateMatrixWithSequence(1, info.getPreProcessingType(), info.getAllowLargeIndices(),
                                                       ZQMatrixTypeANSIText) < 1) {
    return 0;
  }
  if (info.getAddUpdateInfo() == 1) info.generateUpdateInfoSequence(sequence, length);
  int numberOfItems = 0;
  const SystemOwned<int> items(matrix->getPreProcessedSequenceFromOriginalSequence(sequence, length, &numberOfItems));
  if (items == nullptr) return givesSequence({info.getPreProcessingType(), 1}, length) ? -2 : 0;
  const WordTable table = wordsOfText({items.get(), static_cast<size_t>(numberOfItems)},
                                      std::min(info.getMaxPhraseLengthForUpdateWithSequence(), info.getMaxDimOfMatrix() - 1));
  if (wordsLeftOut != nullptr) *wordsLeftOut = table.numberLeftOut;
  return learnWordTable(*matrix, table);
}

}  // namespace zmatrix
