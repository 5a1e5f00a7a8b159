#include "SymbolMatrix.h"

#include <random>

#include "frame/ZQMemory.h"
#include "support/TierUnderTest.h"

using zmatrix::systemFree;

std::string unstructuredText(unsigned seed, int numberOfWords, int longestWord) {
  std::mt19937 engine(seed);
  const auto below = [&engine](int limit) { return static_cast<int>(engine() % static_cast<unsigned>(limit)); };
  std::string text;
  for (int i = 0; i < numberOfWords; ++i) {
    const int length = 1 + below(longestWord);
    for (int k = 0; k < length; ++k) text += static_cast<char>(k % 2 == 0 ? '!' + below(90) : 0xC0 + below(60));
    text += below(20) == 0 ? "\n\n" : " ";
  }
  return text;
}

SymbolMatrix::SymbolMatrix(int phraseLimit, int memorySearchMethod) : matrix_(createAndInitMatrix()) {
  zmatrix::setSearchState({});  // so that positions don't depend on the order of the tests
  matrix_->setMatrixDebugOn(0);
  matrix_->setMatrixAILevel(1);
  matrix_->setGlobalDefaultMatrixPropertiesForANSIText();
  matrix_->setGlobalMaxPhraseLengthForUpdateWithSequence(phraseLimit);
  matrix_->setGlobalMemorySearchMethod(memorySearchMethod);
  matrix_->setGlobalLanguage(4);
}

SymbolMatrix::~SymbolMatrix() {
  deleteMatrix(matrix_);
}

int SymbolMatrix::learn(const std::string& text) {
  int length = 0;
  return matrix_->updateMatrixWithANSIFile(folder_.put("text.txt", text).c_str(), &length, 0);
}

SymbolMatrix::Found SymbolMatrix::derive(Derive operation, const std::string& text) {
  const zmatrix::Vector values = zmatrix::valuesOf(text);
  Found found;
  int count = -1;
  int* entries = (matrix_->*operation)(values.data(), static_cast<int>(values.size()), &count, &found.numberOfUnknown,
                                       &found.numberOfPredefined);
  if (entries != nullptr) found.entries.assign(entries, entries + count);
  if (entries == nullptr && count != 0) found.entries.assign(1, -1);  // never expected
  systemFree(entries);
  return found;
}

SymbolMatrix::Found SymbolMatrix::symbolsOf(const std::string& text) {
  return derive(&ZQMatrix::getNextLevelSymbolsFromOriginalObjects, text);
}

SymbolMatrix::Found SymbolMatrix::handlesOf(const std::string& text) {
  return derive(&ZQMatrix::getNextLevelSymbolHandlesFromOriginalObjects, text);
}

std::vector<int> SymbolMatrix::symbolsOfAny(std::vector<int> sequence) {
  int count = -1;
  int* symbols = matrix_->getSymbolsFromAnyLongSequence(sequence.data(), static_cast<int>(sequence.size()), &count);
  std::vector<int> result(symbols, symbols + count);
  systemFree(symbols);
  return result;
}

void SymbolMatrix::raiseStack() {
  matrix_->getMatrixFileHeader()->_setMaximalStack(matrix_->getMaximalStack() + 1);
}

std::string SymbolMatrix::phraseOf(int symbol) {
  int length = -1;
  int* items = matrix_->createPreviousLevelElementsFromOriginalSymbol(symbol, &length);
  std::string phrase;
  for (int i = 0; i < length; ++i) phrase += static_cast<char>(items[i]);
  systemFree(items);
  return phrase;
}

Words SymbolMatrix::spell(const std::vector<int>& symbols) {
  const int basicID = matrix_->getCurrentMatrixID();
  matrix_->setCurrentMatrixID(matrix_->getCurrentMatrixIDLevelUp());
  raiseStack();
  Words words;
  for (const int symbol : symbols) words.push_back(symbol == '\n' ? "\n" : phraseOf(symbol));
  matrix_->setCurrentMatrixID(basicID);
  matrix_->getMatrixFileHeader()->_setMaximalStack(matrix_->getMaximalStack() - 1);
  return words;
}

std::string SymbolMatrix::brokenLink() {
  const int levelUp = matrix_->getCurrentMatrixIDLevelUp();
  int numberOfSymbols = 0;
  for (int position = 0; position <= matrix_->getMaximalStack(); ++position) {
    const auto* element = static_cast<const ZQMatrixElement*>(matrix_->elementAt(position));
    if (element == nullptr || element->getSymbolID() == 0) continue;
    ++numberOfSymbols;
    const int symbol = element->getSymbolID();
    const auto* above = static_cast<const ZQMatrixElement*>(matrix_->elementAt(matrix_->childAt(levelUp, symbol)));
    if (above == nullptr) return "no element for symbol " + std::to_string(symbol);
    if (above->getSymbolDownLinkHandle() != position) {
      return "symbol " + std::to_string(symbol) + " leads to " + std::to_string(above->getSymbolDownLinkHandle()) +
             " instead of " + std::to_string(position);
    }
  }
  if (numberOfSymbols == matrix_->getNumberOfSymbols()) return "";
  return std::to_string(numberOfSymbols) + " symbols, counted " + std::to_string(matrix_->getNumberOfSymbols());
}
