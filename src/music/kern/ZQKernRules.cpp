#include "music/kern/ZQKernRules.h"

namespace zmatrix {

namespace {

// In the order of KernRule.
const KernRuleText texts[] = {
    {true, 1, false,
     "humdrum: ERROR 1: Record containing add-spine indicator has not been\n                  followed by exclusive "
     "interpretation for that spine\n                 "},
    {true, 2, true, "humdrum: ERROR 2: Illegal empty record"},
    {true, 3, true, "humdrum: ERROR 3: Leading tab"},
    {true, 4, true, "humdrum: ERROR 4: Trailing tab"},
    {true, 5, true, "humdrum: ERROR 5: Consecutive tabs"},
    {true, 6, false, "humdrum: ERROR 6: Missing initial asterisk in interpretation\n                  keyword"},
    {true, 7, false, "humdrum: ERROR 7: Null exclusive interpretation found "},
    {true, 8, false, "humdrum: ERROR 8: Incorrect number of spines in interpretation\n                  record"},
    {true, 9, false, "humdrum: ERROR 9: Local comment precedes first exclusive interpretation\n                  record"},
    {true, 10, false,
     "humdrum: ERROR 10: Number of sub-comments in local comment does not match the\n                   number of currently "
     "active spines"},
    {true, 11, false, "humdrum: ERROR 11: Missing initial exclamation mark in local comment\n                  "},
    {true, 12, false, "humdrum: ERROR 12: Data record appears before first exclusive interpretation\n                   record"},
    {true, 13, false,
     "humdrum: ERROR 13: Number of tokens in data record does not match the\n                   number of currently active "
     "spines"},
    {true, 14, true, "humdrum: ERROR 14: All spines have not been properly terminated\n                  "},
    {true, 15, false,
     "humdrum: ERROR 15: First exclusive interpretation record contains a null\n                   interpretation"},
    {true, 16, false,
     "humdrum: ERROR 16: First exclusive interpretation record contains a spine-path\n                   indicator"},
    {true, 17, false,
     "humdrum: ERROR 17: First exclusive interpretation record contains a\n                   non-exclusive interpretation"},
    {true, 18, false, "humdrum: ERROR 18: Spine-path indicators mixed with \n                   keyword interpretations"},
    {true, 19, false, "humdrum: ERROR 19: Improper number of exchange-path indicators\n                  "},
    {true, 20, false, "humdrum: ERROR 20: Single join-path indicator found at end of\n                   interpretation record"},
    {true, 21, false,
     "humdrum: ERROR 21: Join-path indicator is not adjacent to another\n                   join-path indicator"},
    {true, 22, false, "humdrum: ERROR 22: Exclusive interpretations do not match for designated\n                   join spines"},
    {true, 23, false, "humdrum: ERROR 23: Leading spaces in token"},
    {true, 24, false, "humdrum: ERROR 24: Trailing spaces in token"},
    {true, 25, false, "humdrum: ERROR 25: Consecutive spaces in token"},
    {true, 26, false, "humdrum: ERROR 26: Multiple-stop contains null token"},
    {false, 1, false, "humdrum: WARNING 1: Local comment may be mistaken for global comment\n                   "},
    {false, 2, false, "humdrum: WARNING 2: Data token may be mistaken for global comment\n                   "},
    {false, 3, false, "humdrum: WARNING 3: Data token may be mistaken for local comment\n                   "},
    {false, 4, false, "humdrum: WARNING 4: Data token may be mistaken for exclusive interpretation\n                   "},
    {false, 5, false, "humdrum: WARNING 5: Data token may be mistaken for tandem interpretation\n                   "},
};

}  // namespace

const KernRuleText& textOf(KernRule rule) {
  return texts[static_cast<int>(rule)];
}

}  // namespace zmatrix
