// Setting the kernel of one sub-matrix from an original sequence, told once for the tier that knows one level and the tier that
// sets a kernel a level.
#pragma once

#include "sequence/ZQMatrixMedium.h"

namespace zmatrix {

struct KernelSettingRequest {
  int matrixIDAtRoot;             ///< the handle of a kernel that is reset to the root
  int setInitialValues;           ///< 1: a later reset is to come back to these items
  bool warnsOfUnsecureRecompute;  ///< says where the original items of a kernel are a guess from its length
};

struct KernelSetting {
  int result;            ///< what the operation returns: items of the original kernel, or -1
  bool followsSequence;  ///< false: the kernel is at the root, for what the sequence was
};

/// Sets the kernel of the current sub-matrix.
KernelSetting setKernelFromOriginalSequence(ZQMatrixMedium& matrix, const int* sequence, int length,
                                            const KernelSettingRequest& request);

}  // namespace zmatrix
