// The kernel: the context of a continuation that the matrix knows. It has two faces: the preprocessed face is the longest ending
// of the preprocessed items so far that is a path with successors; the original face is the original items for it, preceded by
// those that the inverse of the preprocessing needs. Both are stored in the info record of the current sub-matrix. A sequence
// that setFromPreProcessed refuses, or setFromOriginal can't preprocess, leaves the kernel unchanged; any other failure sets it
// to the root.
#pragma once

#include <span>

#include "sequence/ZQMatrixMedium.h"

namespace zmatrix {

struct KernelSettingRequest {
  int matrixIDAtRoot;             ///< the handle of a kernel that is reset to the root
  int setInitialValues;           ///< 1: a later reset returns to these items
  bool warnsOfUnsecureRecompute;  ///< warns if the original items of the kernel are only estimated from its length
};

struct KernelSetting {
  int result;            ///< result of the operation: items of the original face, or -1
  bool followsSequence;  ///< false: the kernel is at the root, or unchanged if the sequence could not be preprocessed
};

class ZQKernel {
 public:
  explicit ZQKernel(ZQMatrixMedium& matrix)
      : matrix_(matrix),
        info_(*matrix.getMatrixInfo()),
        scratch_(matrix.getGenerationScratch()),
        coordinateDimension_(info_.getCoordinateDimension()) {}

  /// Sets both faces from a sequence of original items.
  KernelSetting setFromOriginal(const int* sequence, int length, const KernelSettingRequest& request);

  /// Sets only the preprocessed face. Returns its number of items, or an error code from -1 to -6.
  int setFromPreProcessed(const int* sequence, int length);

  /// Sets both faces from the first `numberOfItems` original items and one appended item. While the faces agree, only the
  /// appended item is preprocessed and searched for.
  void push(const int* item, int numberOfItems);

  /// Appends an item to the preprocessed face.
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
