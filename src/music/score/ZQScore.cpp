#include "music/score/ZQScore.h"

namespace zmatrix {

namespace {

// In the order of zq_ScoreFindingKind.
const char* const findingTexts[] = {
    "a token with a duration and without a pitch that is no rest: it takes time and gives no note",
    "a token that can't be read: it takes no time",
    "a note without a duration of its own or of its chord: it gets none",
    "a tie goes on or ends where no note of its pitch is held: it becomes a note of its own",
    "a tie that nothing ends: the note has what was tied so far",
    "a spine has a token before its last one is over, or later",
    "a record has fewer tokens than there are spines: the missing ones count as null tokens",
    "a record has more tokens than there are spines: the surplus is passed over",
    "a spine path that can't be followed",
    "a spine that the file doesn't close",
    "a note outside 0 to 127 of MIDI: it is moved by octaves",
    "a meter that is none: it is passed over",
    "a tempo that is none: it is passed over",
    "a time that has no denominator within the bound: it goes to the nearest of 12288 steps of a whole note",
    "a time beyond 2,147,483,647 whole notes: the track or spine ends here",
    "a note-on that nothing ends: it lasts to the end of its track",
    "a note-off where no note is held",
    "data bytes before any status: passed over",
    "a chunk that is longer than the file or its event longer than the chunk",
    "a chunk that is no track: passed over",
    "a track without an end-of-track event",
    "fewer or more tracks than the head says",
    "the file counts seconds: they are written down at 120 quarter notes a minute",
    "an event of wrong bytes or length, or bytes behind the end of a track: passed over",
};
static_assert(sizeof findingTexts / sizeof *findingTexts == zq_ScoreNumberOfKinds);
static_assert(sizeof(zq_Score::findingCounts) / sizeof(long long) == zq_ScoreNumberOfKinds);

}  // namespace

const char* textOfScoreFinding(int kind) {
  return kind >= 0 && kind < zq_ScoreNumberOfKinds ? findingTexts[kind] : "";
}

}  // namespace zmatrix
