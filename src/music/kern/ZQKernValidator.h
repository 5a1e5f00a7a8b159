// The first pass over a kern file: checks the whole file against the rules of the Humdrum representation, spine by spine. It
// prints a message for each broken rule and a summary; no fault ends the check.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "music/kern/ZQKernLines.h"
#include "music/kern/ZQKernRules.h"

namespace zmatrix {

class KernValidator {
 public:
  KernValidator(KernLines& lines, KernObserver& observer) : lines_(lines), observer_(observer) {}
  /// Returns the number of faults that refuse the file.
  int check();

 private:
  using Tokens = std::vector<std::string_view>;

  /// An active spine.
  struct Spine {
    std::string name;  ///< its exclusive interpretation, empty if not known
    char path = '*';   ///< '*' for none, 'N' while its name is missing, else the second character of its token
  };

  void checkLine(std::string_view line);
  void checkInterpretations();
  void checkNamesOfAddedSpines();
  void checkFirstInterpretations();
  void checkLocalComments();
  void checkData(std::string_view line);
  void checkBlanks(int column, std::string_view token);
  void checkConfusions(int column, std::string_view token);
  void checkNumberOfTokens(KernRule tooEarly, KernRule wrongNumber);
  void storeNewInterpretations();
  void takePaths();
  void applyPaths();
  size_t joinPaths(size_t first);
  void exchangePaths(size_t first);
  void report(KernRule rule, int column = 0, std::string_view token = {});

  KernLines& lines_;
  KernObserver& observer_;
  Tokens tokens_;  // the tokens of the current line, stored in the line
  std::vector<Spine> spines_, spinesAfterPaths_;
  bool newPath_ = false;                 // an added spine still needs its exclusive interpretation
  bool firstInterpretationYet_ = false;  // this section has had an interpretation record
  int currentNumberOfSpines_ = 0;        // the number that the records imply, which can differ from the size of spines_
  int numberOfRefusals_ = 0;
};

}  // namespace zmatrix
