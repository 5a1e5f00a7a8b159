// Writing a score as a Standard MIDI File of format 1, so that reading it exactly gives the same notes again.
//
// Track 0 has tempi, meters and keys; then comes one track per part. A reader ends notes of one channel and key in the order in
// which they begin, so that a note that ends before an earlier one of its key is written to a second track. Parts that share a
// channel but not their program set the program anew wherever they have notes.
#pragma once

#include <zmatrix/zq_types.h>

namespace zmatrix {

int writeScoreToMidiFile(const zq_Score* score, const char* path, zq_ScoreWriting* writing);
unsigned char* createMidiDataOfScore(const zq_Score* score, long long* numberOfBytes, zq_ScoreWriting* writing);

}  // namespace zmatrix
