/* A host in C11 that includes only the public headers and links the shared library. It uses each tier once. */
#include <stdio.h>
#include <string.h>
#include <zmatrix/version.h>
#include <zmatrix/zmatrix.h>
#include <zmatrix/zq.h>

static int failures = 0;

#define CHECK(condition)                                                      \
  do {                                                                        \
    if (!(condition)) {                                                       \
      fprintf(stderr, "%s:%d: not so: %s\n", __FILE__, __LINE__, #condition); \
      ++failures;                                                             \
    }                                                                         \
  } while (0)

static int progressCalls = 0;
static char progressText[80];

static void onProgress(progressCallBackData_tag* data) {
  ++progressCalls;
  memcpy(progressText, data->progressText, sizeof(progressText));
}

static void storeOfTheBaseTier(void) {
  ZQMatrixBase* matrix = createAndInitMatrixBase();
  const int path[] = {3, 1, 4};
  int existCode = 0, writeCount = 0, length = 0, handle = -1;
  int* vector;
  CHECK(matrix != NULL);
  s_mFree_Base(matrix, NULL);
  s_setDefaultMatrixPropertiesForRandomReadWrite_Base(matrix);
  /* Not random slots: a parent in the last used slot would make the path unreadable. */
  s_setMemorySearchMethod_Base(matrix, 1);
  CHECK(s_writeMatrixElement_Base(matrix, path, 3, 159) == 1);
  CHECK(s_writeMatrixElement_Base(matrix, path, 3, 265) == 1);
  CHECK(s_readMatrixData_Base(matrix, path, 3, &existCode, &writeCount) == 265 && existCode == 3 && writeCount == 2);
  CHECK(s_getValueFromElement_Base(s_getMatrixElementFromElementVector_Base(matrix, path, 3, &handle)) == 265);
  vector = s_getIndexVectorFromMatrixHandle_Base(matrix, handle, &length);
  CHECK(length == 3 && vector != NULL && memcmp(vector, path, sizeof(path)) == 0);
  s_mFree_Base(matrix, vector);
  CHECK(s_getMatrixBlockSize_Base(matrix) == 64000 && s_getMatrixInfoType_Base(matrix) == ZQMatrixInfoTypeBase);
  CHECK(s_getGlobalMatrixInfoParameters_Base(s_getMatrixInfo_Base(matrix))->numberOfWriteCounts == 2);
  deleteMatrixBase(matrix);
}

static void sequencesOfTheMediumTier(void) {
  ZQMatrixMedium* matrix = createAndInitMatrixMediumWithDebugParameters(0, -1, "");
  const int sequence[] = {10, 20, 30, 40};
  const int start[] = {10, 20};
  double probability = 0, stopProbability = 0;
  const ZQMatrixProperties* snapshot;
  int* item;
  int length = 0, dimension = 0;
  CHECK(matrix != NULL);
  s_mFree_Medium(matrix, NULL);
  setMatrixProgressDisplayFunction(onProgress);
  s_setDefaultMatrixPropertiesForIntegerSeries_Medium(matrix, "pi");
  s_setPreProcessingType_Medium(matrix, 0);
  s_setSucessorMethod_Medium(matrix, ZQSuccessorMethodMostProbable);
  CHECK(s_updateMatrixWithLongINTSequence_Medium(matrix, sequence, 4) == 1);
  CHECK(progressCalls > 0 && strncmp(progressText, "updateMatrixWithCombinedSequence", 32) == 0);
  setMatrixProgressDisplayFunction(NULL);
  CHECK(s_initializeKernelSequenceWithOriginalSequence_Medium(matrix, start, 2, 1) == 2);
  item = s_readObjexFromMatrix_Medium(matrix, &probability, &stopProbability);
  CHECK(item != NULL && *item == 30 && probability == 1.0);
  item = s_getKernelOriginalSequenceFlatIndexVector_Medium(s_getMatrixInfo_Medium(matrix), &length, &dimension);
  CHECK(item != NULL && length == 3 && dimension == 1 && item[2] == 30);
  s_Free(item);
  snapshot = s_getGlobalMatrixInfoParameters_Medium(s_getMatrixInfo_Medium(matrix));
  CHECK(snapshot->updateIndex == 1 && snapshot->numberOfWriteElements == 10 && strcmp(snapshot->nameOfUpdateFile, "pi") == 0);
  CHECK(s_getHasBeenChanged_Medium(s_getMatrixInfo_Medium(matrix)) == 1);
  deleteMatrixMedium(matrix);
}

static void settingsOfTheFullTier(void) {
  ZQMatrix* matrix = createAndInitMatrix();
  CHECK(matrix != NULL);
  s_mFree(matrix, NULL);
  CHECK(s_getMatrixInfoType(matrix) == ZQMatrixInfoTypeFull && s_getMatrixAILevel(matrix) == 0);
  s_setGlobalSymbolMatrixType(matrix, ZQMatrixTypeANSIText);
  CHECK(s_getGlobalSymbolMatrixProperties(matrix)->matrixType == ZQMatrixTypeANSIText);
  s_setMatrixDescription(matrix, "what it is");
  CHECK(strcmp(s_getMatrixDescription(matrix), "what it is") == 0);
  s_setUserRandomValue(matrix, 31459);
  CHECK(s_getUserRandomValue(matrix) == ((31459LL * 214013 + 2531011) & 0x7fffffff));
  deleteMatrix(matrix);
  deleteMatrix(NULL);
}

static void vectorsAndFileNames(void) {
  ZQMatrixSequenceIndexVector* vector = createZQMatrixSequenceIndexVector();
  ZQFileNameList* list = createZQFileNameList();
  const char* first = "a.mid";
  const char* second = "b.mid";
  char* name = s_Malloc(6);
  int* block = s_Malloc(2 * sizeof(int));
  CHECK(vector != NULL && list != NULL && name != NULL && block != NULL);
  block[0] = 6;
  block[1] = 7;
  CHECK(s_setIndexVectorReference(vector, block, 2) == 1);
  CHECK(s_getLengthOfIndexVector(vector) == 2 && s_getIndexItemAtIndex(vector, 1) == 7 && s_getIndexItemAtIndex(vector, 9) == 0);
  s__setUsedPreprocessingType(vector, 1);
  deleteZQMatrixSequenceIndexVector(vector);
  memcpy(name, first, 6);
  s_addFileName(list, name);
  CHECK(s_getCount(list) == 1 && s_fileIsMidiFile(list, s_getFileNameAtIndex(list, 0)) == 1);
  CHECK(ZQCompareFileNames(&first, &second) < 0);
  deleteZQFileNameList(list);
}

static void versionOfTheLibrary(void) {
  int major = -1, minor = -1, patch = -1;
  CHECK(sscanf(zq_version(), "%d.%d.%d", &major, &minor, &patch) == 3);
  CHECK(major == ZMATRIX_VERSION_MAJOR && minor == ZMATRIX_VERSION_MINOR && patch == ZMATRIX_VERSION_PATCH);
}

static int lastLevel = -1;

static void onMessage(int level, const char* text, void* userData) {
  lastLevel = level;
  snprintf((char*)userData, 100, "%s", text);
}

static void messagesOfTheLibrary(void) {
  char heard[100] = "";
  ZQMatrixMedium* matrix = createAndInitMatrixMediumWithDebugParameters(0, 0, "");
  s_removeLongElements_Medium(matrix, 1);
  CHECK(heard[0] == '\0' && strcmp(zq_lastMessage(), "removeLongElements: matrix is empty!\n") == 0);
  zq_setMessageFunction(onMessage, heard);
  CHECK(s_clearMatrixForID_Medium(matrix, 9) == -1);
  CHECK(lastLevel == 0 && heard[0] != '\0' && strcmp(heard, zq_lastMessage()) == 0);
  s_setMatrixDebugOn_Medium(matrix, 1);
  s_removeLongElements_Medium(matrix, 1);
  CHECK(strcmp(heard, "removeLongElements: matrix is empty!\n") == 0);
  zq_setMessageFunction(NULL, NULL);
  heard[0] = '\0';
  s_removeLongElements_Medium(matrix, 1);
  CHECK(heard[0] == '\0');
  deleteMatrixMedium(matrix);
}

int main(void) {
  messagesOfTheLibrary();
  versionOfTheLibrary();
  storeOfTheBaseTier();
  sequencesOfTheMediumTier();
  settingsOfTheFullTier();
  vectorsAndFileNames();
  s_Free(NULL);
  return failures == 0 ? 0 : 1;
}
