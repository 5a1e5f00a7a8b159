// Scores and reports of the score functions, deleted with their scope.
#pragma once

#include <memory>

#include "music/score/ZQScore.h"
#include "music/score/ZQScoreFeed.h"

namespace zmatrix {

struct DeleteScore {
  void operator()(zq_Score* score) const { deleteScore(score); }
  void operator()(zq_ScoreFeedReport* report) const { deleteScoreFeedReport(report); }
};
using Score = std::unique_ptr<zq_Score, DeleteScore>;
using ScoreReport = std::unique_ptr<zq_ScoreFeedReport, DeleteScore>;

}  // namespace zmatrix
