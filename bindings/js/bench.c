// The native counterpart of bench.js: learns the characters of a text and generates items.
//   bench TEXT COUNT ORDER      prints the processor time of both in seconds
#include <stdio.h>
#include <stdlib.h>
#include <time.h>
#include <zmatrix/zq.h>

static double seconds(void) { return (double)clock() / CLOCKS_PER_SEC; }

static int* charactersOf(const char* path, int* length) {
  FILE* file = fopen(path, "rb");
  if (file == NULL) return NULL;
  fseek(file, 0, SEEK_END);
  const long size = ftell(file);
  rewind(file);
  int* characters = malloc((size_t)size * sizeof(int));
  *length = 0;
  for (int character; characters != NULL && (character = getc(file)) != EOF;) characters[(*length)++] = character;
  fclose(file);
  return characters;
}

int main(int argc, char** argv) {
  int length = 0;
  int* characters = argc == 4 ? charactersOf(argv[1], &length) : NULL;
  const int count = argc == 4 ? atoi(argv[2]) : 0;
  int* items = malloc((size_t)count * sizeof(int));
  double* probabilities = malloc((size_t)count * sizeof(double));
  if (characters == NULL || items == NULL || probabilities == NULL) return 1;

  double begin = seconds();
  ZQMatrixMedium* matrix = createAndInitMatrixMedium();
  s_setGlobalDefaultMatrixPropertiesForANSIText_Medium(matrix);
  s_setGlobalMaxPhraseLengthForUpdateWithSequence_Medium(matrix, atoi(argv[3]));
  zq_prepareMatrixForText_Medium(matrix, characters, length, "text");
  if (s_updateMatrixWithLongANSISequence_Medium(matrix, characters, length) < 1) return 1;
  const double learning = seconds() - begin;

  begin = seconds();
  s_initializeKernelSequenceWithOriginalSequence_Medium(matrix, characters, 16, 1);
  for (int read = 0; read < count;) read += zq_readItems_Medium(matrix, count - read, items, probabilities, NULL);
  printf("%.3f %.3f\n", learning, seconds() - begin);
  deleteMatrixMedium(matrix);
  return 0;
}
