// Learning a text as words alone: what lies inside words at the basic level, sequences of words in the level above.
#pragma once

class ZQMatrix;

namespace zmatrix {

/// Learns the words of a text in the current sub-matrix, each by itself, and then the sequence of their symbols in the level
/// above. `sequence`: `length` characters. 1 learned; 0 no text sub-matrix, no level of symbols in use, no words, or refused
/// settings; -1 a write failed; -2 memory has run out.
int updateMatrixWithWordsOfLongANSISequence(ZQMatrix* matrix, const int* sequence, int length);

}  // namespace zmatrix
