// The operations of the medium tier on the kernel.
#include "frame/ZQSystemOwned.h"
#include "sequence/ZQKernel.h"
#include "sequence/ZQMatrixMedium.h"

using zmatrix::SystemOwned;
using zmatrix::ZQKernel;

int ZQMatrixMedium::initializeKernelSequenceWithPreProcessedSequence(const int* sequence, int length) {
  return ZQKernel(*this).setFromPreProcessed(sequence, length);
}

int ZQMatrixMedium::initializeKernelSequenceWithOriginalSequence(const int* sequence, int length, int setInitialValues) {
  return ZQKernel(*this).setFromOriginal(sequence, length, {getCurrentMatrixID(), setInitialValues, false}).result;
}

int ZQMatrixMedium::updateAndGetMatrixKernelHandle() {
  int length = 0, coordinateDimension = 0;
  const SystemOwned<int> kernel(getMatrixInfo()->getKernelPreProcessedSequenceIndexVector(&length, &coordinateDimension));
  const int handle = getMatrixHandleFromElementVector(kernel.get(), length);
  getMatrixInfo()->setKernelMatrixHandle(handle);
  return handle;
}

int ZQMatrixMedium::getNumberOfSuccessorsFromKernelHandle() {
  return getNumberOfSuccessorsFromMatrixHandle(getMatrixInfo()->getKernelMatrixHandle());
}
