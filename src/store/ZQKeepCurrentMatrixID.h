// Restores the current matrix ID after an operation that visits other sub-matrices.
#pragma once

namespace zmatrix {

/// Restores the ID at the end of its scope.
template <class Matrix>
class KeepCurrentMatrixID {
 public:
  explicit KeepCurrentMatrixID(Matrix* matrix) : matrix_(matrix), matrixID_(matrix->getCurrentMatrixID()) {}
  ~KeepCurrentMatrixID() { matrix_->setCurrentMatrixID(matrixID_); }
  KeepCurrentMatrixID(const KeepCurrentMatrixID&) = delete;
  KeepCurrentMatrixID& operator=(const KeepCurrentMatrixID&) = delete;

 private:
  Matrix* matrix_;
  int matrixID_;
};

}  // namespace zmatrix
