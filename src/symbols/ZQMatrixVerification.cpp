// The self-tests of the full tier: instances of the templates shared by all tiers.
#include "symbols/ZQMatrix.h"

#include "store/ZQReadBackTest.h"
#include "store/ZQStoreVerification.h"
#include "symbols/ZQFullTier.h"

int ZQMatrix::perform1stMemoryTest(int which, int* numberOfWriteElements, int* numberOfEndElements, int trim) {
  return zmatrix::ZQStoreVerification<Tier>::first(*this, which, numberOfWriteElements, numberOfEndElements, trim);
}

int ZQMatrix::perform1stMemoryTestSimplyfied(int which, int trim) {
  int numberOfWriteElements = 0, numberOfEndElements = 0;
  return perform1stMemoryTest(which, &numberOfWriteElements, &numberOfEndElements, trim);
}

int ZQMatrix::performMatrixLinearTest(int* numberOfWriteElements, int* numberOfEndElements, int trim) {
  return zmatrix::ZQStoreVerification<Tier>::linear(*this, numberOfWriteElements, numberOfEndElements, trim);
}

int ZQMatrix::performMatrixConsistencyTest(int* numberOfWriteElements, int* numberOfEndElements, int trim) {
  return zmatrix::ZQStoreVerification<Tier>::consistency(*this, numberOfWriteElements, numberOfEndElements, trim);
}

int ZQMatrix::perform2ndMemoryTest(int numberOfVectors, int** indexVectors, int* lengths, long long* values, int* errors,
                                   int* tests) {
  return zmatrix::ZQReadBackTest<Tier>::perform(*this, numberOfVectors, indexVectors, lengths, values, errors, tests);
}
