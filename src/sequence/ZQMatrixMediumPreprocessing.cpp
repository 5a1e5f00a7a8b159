// Preprocessing and its inverse in a matrix: the settings come from the current sub-matrix, the original items from its kernel or
// from the caller.
#include <algorithm>
#include <cstdio>
#include <span>

#include "frame/ZQDebugChannel.h"
#include "numbers/ZQOcronParameters.h"
#include "sequence/ZQInversePreprocessing.h"
#include "sequence/ZQMatrixMedium.h"
#include "sequence/ZQNumberCoding.h"
#include "sequence/ZQObjexBlock.h"

using zmatrix::ObjexBlock;
using zmatrix::PrecedingItems;
using zmatrix::PreprocessingSettings;
using zmatrix::preprocessingSettingsOf;
using zmatrix::SystemOwned;

namespace {

// The operation with a sequence has its own message only for pairs; for triples and quadruples it prints that of the plain one.
constexpr char illegalTimeSignature[] =
    "getNextOriginalObjecFromPreprocessedObjex: illegal values for timeSignature, assuming 4/4 time signature...\n";
constexpr char illegalTimeSignatureOfPairs[] =
    "getNextOriginalObjecFromPreprocessedObjexAndOriginalSequence: illegal values for timeSignature, assuming 4/4 time "
    "signature...\n";

template <class Value>
std::span<const Value> sequenceOf(const Value* values, int length) {
  return {values, static_cast<size_t>(values != nullptr ? std::max(length, 0) : 0)};
}

/// True if a MIDI item or a difference can be restored from the items of `sequence` up to `index`. Prints a message for an index
/// below 0.
bool canRestoreFrom(int** sequence, int index, int length, int preProcessingType) {
  const bool isDifference = preProcessingType >= 0 && preProcessingType <= ZQPreProcessingTypeHighestDifference;
  if (!isDifference && zmatrix::coordinatesOfMidiType(preProcessingType) == 0) return true;
  const bool needsItems = preProcessingType != ZQPreProcessingTypeNone;
  if (needsItems && length <= index) return false;
  if (index < 0) {
    dbPrintf(0, isDifference ? "getNextOriginalObjecFromPreprocessedObjexAndOriginalSequence: index < 0 not allowed\n"
                             : "getNextOriginalObjecFromPreprocessedObjexAndOriginalSequence: index <0 not allowed\n");
    return false;
  }
  return sequence != nullptr || !needsItems;
}

}  // namespace

// --- forward

int* ZQMatrixMedium::getPreProcessedSequenceFromOriginalSequence(const int* originalSequence, int length, int* resultLength) {
  return zmatrix::preProcessedSequence(preprocessingSettingsOf(*getMatrixInfo()), sequenceOf(originalSequence, length),
                                       resultLength);
}

const int* ZQMatrixMedium::preProcessIntoScratch(const int* originalSequence, int length, int* resultLength) {
  return zmatrix::preProcessedSequenceIn(generation_.preProcessed, preprocessingSettingsOf(*getMatrixInfo()),
                                         sequenceOf(originalSequence, length), resultLength);
}

long long* ZQMatrixMedium::getLongLongPreProcessedSequenceFromOriginalSequence(const long long* originalSequence, int length,
                                                                               int* resultLength) {
  return zmatrix::longLongPreProcessedSequence(preprocessingSettingsOf(*getMatrixInfo()), sequenceOf(originalSequence, length),
                                               resultLength);
}

// Preprocesses as many zeros instead of the values, which hosts may depend on.
long long* ZQMatrixMedium::getLongLongPreProcessedSequenceFromOriginalIntSequence(const int* originalSequence, int length,
                                                                                  int* resultLength) {
  SystemOwned<long long> values;
  if (originalSequence != nullptr && length >= 1) values.reset(systemMallocArray<long long>(length));
  if (values != nullptr) std::fill_n(values.get(), length, 0LL);
  return getLongLongPreProcessedSequenceFromOriginalSequence(values.get(), length, resultLength);
}

// --- conversion between the two forms of a sequence

int* ZQMatrixMedium::getFlatSequenceFromObjexSequence(int** objex, int count, int* length) {
  const int coordinateDimension = getMatrixInfo()->getCoordinateDimension();
  SystemOwned<int> flat = zmatrix::flatSequenceOfObjex(objex, count, coordinateDimension);
  *length = flat != nullptr ? count * coordinateDimension : 0;
  return flat.release();
}

int** ZQMatrixMedium::getObjexSequenceFromFlatSequence(const int* flat, int length, int* count) {
  *count = 0;
  const int coordinateDimension = getMatrixInfo()->getCoordinateDimension();
  if (coordinateDimension < 1) {
    dbPrintf(0, "error from getObjexFromFlatSequence: coorddimension <0: %d\n", coordinateDimension);
    fflush(stdout);
    return nullptr;
  }
  ObjexBlock objex = zmatrix::newObjexBlockFrom(flat, length, coordinateDimension);
  if (objex != nullptr) *count = length / coordinateDimension;
  return objex.release();
}

int** ZQMatrixMedium::getPreProcessedObjexSequenceFromOriginalObjexSequence(int** objex, int count, int* resultCount) {
  *resultCount = 0;
  int length = 0, preProcessedLength = 0, preProcessedCount = 0;
  const SystemOwned<int> flat(getFlatSequenceFromObjexSequence(objex, count, &length));
  const SystemOwned<int> preProcessed(getPreProcessedSequenceFromOriginalSequence(flat.get(), length, &preProcessedLength));
  ObjexBlock items(getObjexSequenceFromFlatSequence(preProcessed.get(), preProcessedLength, &preProcessedCount));
  if (static_cast<long long>(preProcessedCount) * getMatrixInfo()->getCoordinateDimension() != preProcessedLength) {
    dbPrintf(0, "Error from getProcessedObjexSequence: illegel length\n");
    return nullptr;
  }
  *resultCount = preProcessedCount;
  return items.release();
}

// --- inverse of one item

int* ZQMatrixMedium::getNextOriginalObjexFromPreProcessedObjex(int* objex) {
  ZQMatrixMediumInfo* info = getMatrixInfo();
  if (zmatrix::isNumberCoding(info->getPreProcessingType()))
    return zmatrix::numberOfCode(info, objex, info->readableFrom(objex), zmatrix::InverseOperation::plain);
  // The length is a field that hosts can set: it may exceed the room.
  const int numberOfItems = info->getLengthOfKernelOriginalSequence();
  if (!info->provideKernelOriginal(numberOfItems)) return nullptr;
  const PrecedingItems kernel =
      PrecedingItems::inSequence(info->getKernelOriginalItems(), numberOfItems, info->getCoordinateDimension());
  return zmatrix::nextOriginalObjex(preprocessingSettingsOf(*info), kernel, objex, illegalTimeSignature);
}

int* ZQMatrixMedium::getNextOriginalObjexFromPreProcessedObjexAndOriginalSequence(int** sequence, int index, int length,
                                                                                  int* objex) {
  ZQMatrixMediumInfo* info = getMatrixInfo();
  if (zmatrix::isNumberCoding(info->getPreProcessingType()))
    return zmatrix::numberOfCode(info, objex, info->readableFrom(objex), zmatrix::InverseOperation::withSequence);
  const PreprocessingSettings settings = preprocessingSettingsOf(*info);
  if (objex == nullptr || !canRestoreFrom(sequence, index, length, settings.preProcessingType)) return nullptr;
  const bool arePairs = settings.preProcessingType == ZQPreProcessingTypeMidiNoteAndModQuanta;
  const PrecedingItems items = PrecedingItems::inObjex(sequence, index < 0 ? 0 : index + 1);
  return zmatrix::nextOriginalObjex(settings, items, objex, arePairs ? illegalTimeSignatureOfPairs : illegalTimeSignature);
}

// --- parameters of number codes

int ZQMatrixMedium::isValidOcronType(int ocronType) {
  return zmatrix::isOcronTypeFor(ocronType, getMatrixInfo()->getPreProcessingType()) ? 1 : 0;
}

void ZQMatrixMedium::applyGlobalGocronParametersToMatrix() {
  const gocronParametersTag& parameters = *zmatrix::getGlobalGocronParameters();
  ZQMatrixMediumInfo* info = getMatrixInfo();
  info->setOcronType(parameters.ocronType);
  info->setOcronEndSymbol(parameters.ocronEndSymbol);
  info->setOcronAlgorithm(parameters.ocronAlgorithm);
  info->setGocronAlgorithm(parameters.gocronAlgorithm);
  info->setGocronNumberBase(parameters.gocronNumberBase);
  info->setGocronASTERISKValue(parameters.gocronASTERISKValue);
  info->setGocronPValue(parameters.gocronPValue);
  info->setGocronTWOValue(parameters.gocronTWOValue);
  info->setGocronPOWValue(parameters.gocronPOWValue);
  info->setGocronQValue(parameters.gocronQValue);
}
