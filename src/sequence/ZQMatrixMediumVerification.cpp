// The self-tests of the medium tier: instances of the templates shared by all tiers.
#include "sequence/ZQMatrixMedium.h"

#include "sequence/ZQMediumTier.h"
#include "store/ZQReadBackTest.h"
#include "store/ZQStoreVerification.h"

int ZQMatrixMedium::perform1stMemoryTest(int which, int* numberOfWriteElements, int* numberOfEndElements, int trim) {
  return zmatrix::ZQStoreVerification<Tier>::first(*this, which, numberOfWriteElements, numberOfEndElements, trim);
}

int ZQMatrixMedium::performMatrixLinearTest(int* numberOfWriteElements, int* numberOfEndElements, int trim) {
  return zmatrix::ZQStoreVerification<Tier>::linear(*this, numberOfWriteElements, numberOfEndElements, trim);
}

int ZQMatrixMedium::performMatrixConsistencyTest(int* numberOfWriteElements, int* numberOfEndElements, int trim) {
  return zmatrix::ZQStoreVerification<Tier>::consistency(*this, numberOfWriteElements, numberOfEndElements, trim);
}

int ZQMatrixMedium::perform2ndMemoryTest(int numberOfVectors, int** indexVectors, int* lengths, long long* values, int* errors,
                                         int* tests) {
  return zmatrix::ZQReadBackTest<Tier>::perform(*this, numberOfVectors, indexVectors, lengths, values, errors, tests);
}
