// The kernel: the context of a continuation, as far as the matrix knows it. Its preprocessed face is the longest ending of the
// items so far that is a path with successors; its original face is the same stretch as original items, with those in front that
// the inverse of the preprocessing needs. Both lie in the info record of the current sub-matrix. Every failure but a refusal
// leaves the kernel at the root.
#pragma once

#include <span>

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

class ZQKernel {
 public:
  explicit ZQKernel(ZQMatrixMedium& matrixToContinue)
      : matrix_(matrixToContinue),
        info_(*matrixToContinue.getMatrixInfo()),
        scratch_(matrixToContinue.getGenerationScratch()),
        coordinateDimension_(info_.getCoordinateDimension()) {}

  /// Sets both faces.
  KernelSetting setFromOriginal(const int* sequence, int length, const KernelSettingRequest& request);

  /// Sets the preprocessed face alone. Items of it, or a refusal from -1 to -6.
  int setFromPreProcessed(const int* sequence, int length);

  /// Sets both faces from the first `numberOfItems` original items with one more behind. While the faces agree only that item is
  /// preprocessed and looked for.
  void push(const int* item, int numberOfItems);

  /// Sets the preprocessed face from what it is with one more item behind.
  void pushPreProcessed(const int* item);

 private:
  int refusalOf(int length) const;
  bool isTooLong(int length) const;
  KnownSuffix findKnownSuffix(const int* sequence, int length);
  bool provideForSuffix(int numberOfItems);
  bool keepSuffix(const KnownSuffix& suffix, const int* sequence, int length);
  bool pushOneItem(const int* item);
  void storeOriginal(const int* items, int numberOfItems);
  KernelSetting setFromShortOriginal(const int* sequence, int length, const KernelSettingRequest& request);
  KernelSetting reset(const KernelSettingRequest& request);
  int countNotes(int numberOfItems) const;
  int offsetInOriginal(int length, int preProcessedLength, bool warnsOfUnsecureRecompute) const;
  std::span<const int> originalItems() const;
  std::span<const int> preProcessedItems() const;

  ZQMatrixMedium& matrix_;
  ZQMatrixMediumInfo& info_;
  ZQGenerationScratch& scratch_;
  const int coordinateDimension_;
};

}  // namespace zmatrix
