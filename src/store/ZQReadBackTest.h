// The second memory test, shared by all tiers: reads back vectors whose values the caller knows.
#pragma once

#include <memory>
#include <new>

#include "store/ZQMatrixBase.h"

namespace zmatrix {

template <class Tier>
struct ZQReadBackTest {
  using Matrix = typename Tier::Matrix;

  static int perform(Matrix& matrix, int numberOfVectors, int** indexVectors, int* lengths, long long* values, int* errors,
                     int* tests) {
    if (indexVectors == nullptr || lengths == nullptr || values == nullptr || errors == nullptr || tests == nullptr) {
      dbPrintf(0,
               "Can't perform second Memory test, because no values for indexVectors,indexVectorValues or indexVectorDimensions "
               "available!\n");
      return -1;
    }
    *errors = 0;
    *tests = 0;
    for (int i = 0; i < numberOfVectors; ++i, ++*tests) {
      if (!isAsExpected(matrix, i, indexVectors[i], lengths[i], values[i])) ++*errors;
    }
    return 1;
  }

 private:
  struct Found {
    int existCode = 0;
    int writeCount = 0;
    long long value = 0;
  };

  static bool isAsExpected(Matrix& matrix, int number, const int* vector, int length, long long expected) {
    Found found;
    if (vector != nullptr && !read(matrix, vector, length, found)) return false;
    if (found.existCode < 1) {
      dbPrintf(0, "%d: read-error %d from readMatrixData: ", number, found.existCode);
      printCoordinates(matrix, vector, length);
      return false;
    }
    if (found.existCode == 1) {
      dbPrintf(0, "retCode 1 unexpected in second memory test for: ");
      printCoordinates(matrix, vector, length);
      if (found.writeCount > 0) {
        dbPrintf(0, "read unexpected writeCount: %d from readMatrixData with retCode 1\n", found.writeCount);
      }
      return false;
    }
    if (found.writeCount < 1) {
      dbPrintf(0, "read unexpected writeCount: %d from readMatrixData with retCode >=2\n", found.writeCount);
    }
    if (found.value != expected) {
      dbPrintf(0, "read-value %d differs from expected value %d . Coordinates: ", static_cast<int>(found.value),
               static_cast<int>(expected));
      printCoordinates(matrix, vector, length);
    }
    return found.writeCount >= 1 && found.value == expected;
  }

  static bool read(Matrix& matrix, const int* vector, int length, Found& found) {
    const int large = matrix.getMatrixInfo()->getAllowLargeIndices();
    const int coordinateDimension = matrix.getMatrixInfo()->getCoordinateDimension();
    if (large == 0) {
      found.value = Tier::readBack(matrix, vector, length, &found.existCode, &found.writeCount);
    } else if (large == 1 && coordinateDimension == 2) {
      found.value = Tier::readBack32(matrix, vector, length, &found.existCode, &found.writeCount);
    } else if (large == 2 && coordinateDimension == 4) {
      // The interface passes the items as int. A length that readMatrixData64 refuses is passed on without reading the vector.
      const int readable = length > 0 && length <= matrix.getMatrixInfo()->getMaxDimOfMatrix() / 4 ? length : 0;
      std::unique_ptr<long long[]> items(new (std::nothrow) long long[static_cast<size_t>(readable) + 1]);
      if (items == nullptr) return false;
      for (int i = 0; i < readable; ++i) items[static_cast<size_t>(i)] = vector[i];
      found.value = Tier::readBack64(matrix, items.get(), length, &found.existCode, &found.writeCount);
    } else {
      dbPrintf(0, "Illegal combination of coordDimension (%d) and allowLargeIndices (%d)\n", coordinateDimension, large);
      return false;
    }
    return true;
  }

  static void printCoordinates(const Matrix& matrix, const int* vector, int length) {
    if (vector == nullptr || length > matrix.getMatrixInfo()->getMaxDimOfMatrix()) length = 0;
    for (int i = 0; i < length; ++i) dbPrintf(0, i == 0 ? "%d" : ",%d", vector[i]);
    dbPrintf(0, "\n");
  }
};

}  // namespace zmatrix
