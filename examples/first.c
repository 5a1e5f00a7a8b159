/* Learns the steps of a series of integers, and continues another series with them. */
#include <stdio.h>
#include <zmatrix/zmatrix.h>

int main(void) {
  int series[] = {0, 1, 3, 4, 6, 7, 9, 10, 12, 13, 15, 16};
  int start[] = {100, 101, 103};
  double probability, stopProbability;

  ZQMatrixMedium* matrix = createAndInitMatrixMedium();
  s_setDefaultMatrixPropertiesForIntegerSeries_Medium(matrix, NULL);
  s_setMaxPhraseLengthForUpdateWithSequence_Medium(matrix, 8);
  s_updateMatrixWithLongINTSequence_Medium(matrix, series, 12);
  s_initializeKernelSequenceWithOriginalSequence_Medium(matrix, start, 3, 1);
  for (int i = 0; i < 8; i++) {
    int* item = s_readObjexFromMatrix_Medium(matrix, &probability, &stopProbability);
    printf("%d%c", *item, i < 7 ? ' ' : '\n');
  }
  deleteMatrixMedium(matrix);
  return 0;
}
