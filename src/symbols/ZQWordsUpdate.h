// Learns only the words of a text: the letters of each word in the basic level, the sequence of words in the level above.
#pragma once

class ZQMatrix;

namespace zmatrix {

/// Learns the words of a text in the current sub-matrix, each as one phrase with its symbol, and then the sequence of their
/// symbols in the level above. `sequence`: `length` characters. `wordsLeftOut`, if not null, gets the number of words beyond the
/// phrase limit. 1 learned; 0 not a text sub-matrix, no symbol level in use, no words, or refused settings; -1 a write failed;
/// -2 memory has run out. May throw std::bad_alloc.
int updateMatrixWithWordsOfLongANSISequence(ZQMatrix* matrix, const int* sequence, int length, int* wordsLeftOut);

}  // namespace zmatrix
