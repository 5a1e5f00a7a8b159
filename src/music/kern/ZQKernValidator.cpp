#include "music/kern/ZQKernValidator.h"

#include <algorithm>

#include "frame/ZQDebugChannel.h"
#include "music/kern/ZQKernTokens.h"

namespace zmatrix {

namespace {

constexpr int bufferSize = 1024;

bool isPathIndicator(std::string_view token) {
  return token.size() == 2 && token[0] == '*' && std::string_view("+^-vx").find(token[1]) != std::string_view::npos;
}

bool hasConsecutiveTabs(std::string_view line) {
  bool has = false;
  for (size_t i = 1; i < line.size(); i++) has = has || (line[i] == '\t' && line[i - 1] == '\t');
  return has;
}

/// Prints a fixed frame without counts: hosts expect the frame.
void printSummary() {
  dbPrintf(8, "Inventory of Interpretations:\t\t\t\tHUMDRUM FILE SUMMARY\n\n");
  dbPrintf(8, "\tInterpretations\tOccurrences\n");
  dbPrintf(8, "\nInventory of data token signifiers:\t");
  dbPrintf(8, "\n\t\t\t\t\t");
  dbPrintf(8, "\n\t\t\t\t\t");
  dbPrintf(8, "\n\n");
  dbPrintf(8, "Number of global comments:      %d\t", 0);
  dbPrintf(8, "Number of local comments:       %d\n", 0);
  dbPrintf(8, "Maximum # of concurrent spines: %d\t", 0);
  dbPrintf(8, "Minimum # of concurrent spines: %d\n", 0);
  dbPrintf(8, "Number of data records:         %d\t", 0);
  dbPrintf(8, "Number of null tokens:          %d\n\n", 0);
  dbPrintf(8, "\nChanges in number of spines:\n");
  dbPrintf(8, "\tNew spines:        %d\n", 0);
  dbPrintf(8, "\tTerminated spines: %d\n", 0);
  dbPrintf(8, "\tSplit spines:      %d\n", 0);
  dbPrintf(8, "\tJoined spines:     %d\n", 0);
  dbPrintf(8, "\tExchanges spines:  %d\n", 0);
}

}  // namespace

void KernValidator::report(KernRule rule, int column, std::string_view token) {
  const KernRuleText& text = textOf(rule);
  dbPrintf(0, "%s", text.message);
  if (text.refusesFile) numberOfRefusals_++;
  observer_.brokeRule(rule, {lines_.lineNumber(), column, token});
}

int KernValidator::check() {
  // A last line without a line feed is not checked, so that its spines count as not terminated.
  bool isCut = false;
  while (lines_.next(bufferSize)) {
    if (lines_.pieceOfLine() == 2) observer_.departed(zq_KernLongLine, {lines_.lineNumber(), 0, {}}, bufferSize);
    isCut = lines_.reachedEnd();
    if (isCut) break;
    std::string_view line = lines_.text();
    if (line.ends_with('\n')) line.remove_suffix(1);
    checkLine(line);
  }
  if (isCut) observer_.departed(zq_KernUncheckedLastLine, {lines_.lineNumber(), 0, {}}, 0);
  if (currentNumberOfSpines_ != 0) report(KernRule::notTerminated);
  printSummary();
  return numberOfRefusals_;
}

void KernValidator::checkLine(std::string_view line) {
  if (line.starts_with('\t')) report(KernRule::leadingTab);
  if (line.empty()) {
    report(KernRule::emptyRecord);
    return;
  }
  const size_t start = std::min(line.find_first_not_of('\t'), line.size());
  if (line.substr(start).starts_with("!!")) return;
  if (line.ends_with('\t')) report(KernRule::trailingTab);
  if (hasConsecutiveTabs(line)) report(KernRule::consecutiveTabs);
  splitFilledTokens(line, '\t', tokens_);
  if (tokens_.empty()) return;
  switch (tokens_[0][0]) {
    case '*':
      checkInterpretations();
      break;
    case '!':
      checkLocalComments();
      break;
    default:
      checkData(line);
  }
}

// --- interpretations

void KernValidator::checkInterpretations() {
  if (newPath_) checkNamesOfAddedSpines();
  int column = 0;
  for (const std::string_view token : tokens_) {
    column++;
    if (!token.starts_with('*')) report(KernRule::interpretationWithoutAsterisk, column, token);
    if (token == "**") report(KernRule::nullExclusiveInterpretation, column, token);
  }
  const int numberOfTokens = static_cast<int>(tokens_.size());
  if (!firstInterpretationYet_) {
    firstInterpretationYet_ = true;
    checkFirstInterpretations();
  } else if (numberOfTokens != currentNumberOfSpines_) {
    report(KernRule::interpretationCount);
  }
  currentNumberOfSpines_ = numberOfTokens;
  if (std::none_of(tokens_.begin(), tokens_.end(), isPathIndicator)) {
    storeNewInterpretations();
    return;
  }
  takePaths();
  applyPaths();
  if (currentNumberOfSpines_ == 0) firstInterpretationYet_ = false;
}

void KernValidator::checkNamesOfAddedSpines() {
  for (size_t i = 0; i < std::min(tokens_.size(), spines_.size()); i++) {
    if (spines_[i].path != 'N') continue;
    if (!tokens_[i].starts_with("**")) report(KernRule::addedSpineNotNamed, static_cast<int>(i) + 1, tokens_[i]);
    spines_[i].path = '*';
  }
  newPath_ = false;
}

void KernValidator::checkFirstInterpretations() {
  int column = 0;
  for (const std::string_view token : tokens_) {
    column++;
    if (token == "*") report(KernRule::nullInFirstInterpretation, column, token);
    if (!token.starts_with("**")) report(KernRule::nonExclusiveInFirstInterpretation, column, token);
    if (isPathIndicator(token)) report(KernRule::pathInFirstInterpretation, column, token);
  }
}

void KernValidator::storeNewInterpretations() {
  for (size_t i = 0; i < tokens_.size(); i++) {
    const bool isExclusive = tokens_[i].starts_with("**");
    if (i == spines_.size()) spines_.emplace_back();
    if (isExclusive) spines_[i].name = tokens_[i];
  }
}

void KernValidator::takePaths() {
  for (size_t i = 0; i < std::min(tokens_.size(), spines_.size()); i++) {
    const std::string_view token = tokens_[i];
    if (token == "*") {
      spines_[i].path = '*';
      continue;
    }
    if (!isPathIndicator(token)) report(KernRule::pathMixedWithKeyword, static_cast<int>(i) + 1, token);
    // A keyword is recognised by its second character alone: "*-" with a carriage return behind it still ends the spine.
    spines_[i].path = token.size() > 1 ? token[1] : '\0';
  }
}

void KernValidator::applyPaths() {
  spinesAfterPaths_.clear();
  for (size_t i = 0; i < spines_.size();) {
    Spine& spine = spines_[i];
    switch (spine.path) {
      case '+':
        spine.path = '*';
        spinesAfterPaths_.push_back(std::move(spine));
        spinesAfterPaths_.push_back({"", 'N'});
        currentNumberOfSpines_++;
        newPath_ = true;
        i++;
        break;
      case '-':
        currentNumberOfSpines_--;
        i++;
        break;
      case '^':
        spine.path = '*';
        spinesAfterPaths_.push_back(spine);
        spinesAfterPaths_.push_back(std::move(spine));
        currentNumberOfSpines_++;
        i++;
        break;
      case 'v':
        i = joinPaths(i);
        break;
      case 'x':
        exchangePaths(i);
        [[fallthrough]];
      default:
        spinesAfterPaths_.push_back(std::move(spine));
        i++;
    }
  }
  spines_.swap(spinesAfterPaths_);
}

/// Joins the spine with the joining spines that follow it, and returns the index of the next spine.
size_t KernValidator::joinPaths(size_t first) {
  Spine& spine = spines_[first];
  size_t next = first + 1;
  const auto column = [](size_t index) { return static_cast<int>(index) + 1; };
  if (next == spines_.size()) {
    report(KernRule::joinAtEnd, column(first), "*v");  // the path is kept, in case the next record is too short to replace it
  } else {
    if (spines_[next].path != 'v') report(KernRule::joinNotAdjacent, column(first), "*v");
    spine.path = '*';
  }
  for (; next < spines_.size() && spines_[next].path == 'v'; next++) {
    if (spines_[next].name != spine.name) report(KernRule::joinOfDifferent, column(next), spines_[next].name);
    currentNumberOfSpines_--;
  }
  spinesAfterPaths_.push_back(std::move(spine));
  return next;
}

void KernValidator::exchangePaths(size_t first) {
  spines_[first].path = '*';
  size_t partner = 0;
  int numberOfPartners = 0;
  for (size_t i = first + 1; i < spines_.size(); i++) {
    if (spines_[i].path != 'x') continue;
    spines_[i].path = '*';
    partner = i;
    numberOfPartners++;
  }
  if (numberOfPartners == 1) {
    spines_[first].name.swap(spines_[partner].name);
  } else {
    report(KernRule::exchangeCount, static_cast<int>(first) + 1, "*x");
  }
}

// --- comments and data

void KernValidator::checkNumberOfTokens(KernRule tooEarly, KernRule wrongNumber) {
  if (newPath_) report(KernRule::addedSpineNotNamed);
  newPath_ = false;
  const int numberOfTokens = static_cast<int>(tokens_.size());
  if (!firstInterpretationYet_) {
    report(tooEarly);
    currentNumberOfSpines_ = numberOfTokens;
  } else if (numberOfTokens != currentNumberOfSpines_) {
    report(wrongNumber);
  }
}

void KernValidator::checkLocalComments() {
  checkNumberOfTokens(KernRule::earlyLocalComment, KernRule::localCommentCount);
  int column = 0;
  for (const std::string_view token : tokens_) {
    column++;
    if (!token.starts_with('!')) report(KernRule::localCommentWithoutMark, column, token);
    if (token.starts_with("!!")) report(KernRule::localLikeGlobalComment, column, token);
  }
}

void KernValidator::checkData(std::string_view line) {
  checkNumberOfTokens(KernRule::earlyData, KernRule::dataCount);
  const bool lineHasBlanks = line.find(' ') != std::string_view::npos;
  int column = 0;
  for (const std::string_view token : tokens_) {
    column++;
    const bool hasBlanks = lineHasBlanks && token.find(' ') != std::string_view::npos;
    if (hasBlanks) checkBlanks(column, token);
    if (column > 1) checkConfusions(column, token);
    if (hasBlanks && hasNullSubToken(token)) report(KernRule::nullInMultipleStop, column, token);
  }
}

void KernValidator::checkBlanks(int column, std::string_view token) {
  if (token.starts_with(' ')) report(KernRule::leadingSpace, column, token);
  if (token.ends_with(' ')) report(KernRule::trailingSpace, column, token);
  if (token.find("  ") != std::string_view::npos) report(KernRule::consecutiveSpaces, column, token);
}

/// Reports what a token of a later column would mean in the first column; only the first match is reported.
void KernValidator::checkConfusions(int column, std::string_view token) {
  if (token.starts_with("!!")) {
    report(KernRule::dataLikeGlobalComment, column, token);
  } else if (token.starts_with('!')) {
    report(KernRule::dataLikeLocalComment, column, token);
  } else if (token.starts_with("**")) {
    report(KernRule::dataLikeExclusive, column, token);
  } else if (token.starts_with('*')) {
    report(KernRule::dataLikeTandem, column, token);
  }
}

}  // namespace zmatrix
