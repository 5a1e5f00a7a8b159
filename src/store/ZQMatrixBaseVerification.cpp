// The self-tests of the base tier: instantiates the templates shared by all tiers.
#include "store/ZQMatrixBase.h"

#include "store/ZQBaseTier.h"
#include "store/ZQReadBackTest.h"
#include "store/ZQStoreVerification.h"

int ZQMatrixBase::perform1stMemoryTest(int which, int* numberOfWriteElements, int* numberOfEndElements, int trim) {
  return zmatrix::ZQStoreVerification<Tier>::first(*this, which, numberOfWriteElements, numberOfEndElements, trim);
}

int ZQMatrixBase::performMatrixLinearTest(int* numberOfWriteElements, int* numberOfEndElements, int trim) {
  return zmatrix::ZQStoreVerification<Tier>::linear(*this, numberOfWriteElements, numberOfEndElements, trim);
}

int ZQMatrixBase::performMatrixConsistencyTest(int* numberOfWriteElements, int* numberOfEndElements, int trim) {
  return zmatrix::ZQStoreVerification<Tier>::consistency(*this, numberOfWriteElements, numberOfEndElements, trim);
}

int ZQMatrixBase::perform2ndMemoryTest(int numberOfVectors, int** indexVectors, int* lengths, long long* values, int* errors,
                                       int* tests) {
  return zmatrix::ZQReadBackTest<Tier>::perform(*this, numberOfVectors, indexVectors, lengths, values, errors, tests);
}
