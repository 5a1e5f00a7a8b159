// The rules that a Humdrum file is checked against, with a message for each. Five of them refuse the file; the others only print
// their message.
#pragma once

#include "music/kern/ZQKernObserver.h"

namespace zmatrix {

enum class KernRule : int {
  addedSpineNotNamed,
  emptyRecord,
  leadingTab,
  trailingTab,
  consecutiveTabs,
  interpretationWithoutAsterisk,
  nullExclusiveInterpretation,
  interpretationCount,
  earlyLocalComment,
  localCommentCount,
  localCommentWithoutMark,
  earlyData,
  dataCount,
  notTerminated,
  nullInFirstInterpretation,
  pathInFirstInterpretation,
  nonExclusiveInFirstInterpretation,
  pathMixedWithKeyword,
  exchangeCount,
  joinAtEnd,
  joinNotAdjacent,
  joinOfDifferent,
  leadingSpace,
  trailingSpace,
  consecutiveSpaces,
  nullInMultipleStop,
  localLikeGlobalComment,
  dataLikeGlobalComment,
  dataLikeLocalComment,
  dataLikeExclusive,
  dataLikeTandem,
};

struct KernRuleText {
  bool isError;  ///< else a warning
  int number;    ///< of the error or of the warning
  bool refusesFile;
  const char* message;  ///< part of the interface: line ends and blanks are kept as they are, missing line ends included
};

const KernRuleText& textOf(KernRule rule);

}  // namespace zmatrix
