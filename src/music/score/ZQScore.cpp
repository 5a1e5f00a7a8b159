#include "music/score/ZQScore.h"

namespace zmatrix {

namespace {

// In the order of zq_ScoreFindingKind.
const char* const findingTexts[] = {
    "a token with a duration but without a pitch, not a rest: it takes time and gives no note",
    "an unreadable token: it takes no time",
    "a note without a duration, of its own or of its chord: its duration is 0",
    "a tie continues or ends where no note of its pitch is held: the token became a note of its own",
    "a tie without an end: the note has the duration tied so far",
    "a spine has a token before or after the end of its preceding token",
    "a record has fewer tokens than there are spines: the missing ones count as null tokens",
    "a record has more tokens than there are spines: the surplus was ignored",
    "an invalid spine path",
    "a spine that the file doesn't close",
    "a note outside 0 to 127 of MIDI was moved by octaves",
    "an invalid meter was ignored",
    "an invalid tempo was ignored",
    "a time whose denominator is too large was rounded to a multiple of 1/12288 whole note",
    "a time beyond 2,147,483,647 whole notes: the track or spine ends here",
    "a note-on without an end: the note lasts to the end of its track",
    "a note-off where no note is held",
    "data bytes before the first status byte were ignored",
    "a chunk is longer than the file, or an event longer than its chunk",
    "an unknown chunk was ignored",
    "a track without an end-of-track event",
    "the file has fewer or more tracks than the header says",
    "times in seconds were converted at 120 quarter notes per minute",
    "an event with wrong bytes or a wrong length, or bytes after the end of a track, were ignored",
};
static_assert(sizeof findingTexts / sizeof *findingTexts == zq_ScoreNumberOfKinds);
static_assert(sizeof(zq_Score::findingCounts) / sizeof(long long) == zq_ScoreNumberOfKinds);

}  // namespace

const char* textOfScoreFinding(int kind) {
  return kind >= 0 && kind < zq_ScoreNumberOfKinds ? findingTexts[kind] : "";
}

}  // namespace zmatrix
