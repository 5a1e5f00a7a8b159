// For operations that visit other sub-matrices: the current matrix ID is put back, however they end.
#pragma once

namespace zmatrix {

/// Puts the current matrix ID back at the end of a scope.
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
