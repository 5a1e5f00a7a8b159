// Learning from scores: each run of a score is learned in the sub-matrix of its meter, texture, sound and coding, through the
// update and the profiles of the file feeds. The result for each note is reported.
#pragma once

#include "music/score/ZQScore.h"

class ZQMatrix;
class ZQMatrixMedium;

namespace zmatrix {

/// Null for a null argument. For deleteScoreFeedReport(). Throws std::bad_alloc if memory runs out, as do the feeds below.
[[nodiscard]] zq_ScoreFeedReport* createScoreFeedPlan(const zq_Score* score, const zq_ScoreFeedSettings* settings);
zq_ScoreFeedReport* updateMatrixWithScore(ZQMatrixMedium* matrix, const zq_Score* score, const char* fileName,
                                          int leavesOutPercussion);
zq_ScoreFeedReport* updateMatrixWithScore(ZQMatrix* matrix, const zq_Score* score, const char* fileName, int leavesOutPercussion);
void deleteScoreFeedReport(zq_ScoreFeedReport* report);

/// A short text; empty for a number that is no zq_ScoreCause.
const char* textOfScoreCause(int cause);

/// The tempo learned in the current sub-matrix; 0 if none is known.
double getLearnedTempo(ZQMatrixMedium* matrix);
double getLearnedTempo(ZQMatrix* matrix);
/// 0 no music, 1 classic, 2 exact, 3 both.
int getLearnedReadings(ZQMatrixMedium* matrix);
int getLearnedReadings(ZQMatrix* matrix);

}  // namespace zmatrix
