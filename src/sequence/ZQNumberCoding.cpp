#include "sequence/ZQNumberCoding.h"

#include <algorithm>

#include "frame/ZQDebugChannel.h"
#include "frame/ZQSystemOwned.h"
#include "numbers/ZQGocron.h"
#include "numbers/ZQGocronSequence.h"
#include "numbers/ZQOcronEvaluator.h"
#include "numbers/ZQOcronParameters.h"
#include "numbers/ZQOcronSequence.h"
#include "numbers/ZQPrimes.h"
#include "numbers/ZQSharedPrimes.h"

namespace zmatrix {

namespace {

/// The end of a message of both inverse operations, for each of the types 1010 to 1016.
struct CodingText {
  const char* plain;
  const char* withSequence;
};
constexpr CodingText codingTexts[] = {
    {"  normal Ocrons\n", "  normal Ocrons\n"},
    {"  normal Gocrons\n", "  normal Gocrons\n"},
    {"PrimeOcrons\n", "PrimeOcrons\n"},
    {"Prime Gocrons\n", "PrimeGocrons\n"},
    {"  virtual Ocrons\n", "  virtual Ocrons\n"},
    {"  virtual Gocrons\n", "  virtual Gocrons\n"},
    {"Inverse Prime Gocrons\n", "Inverse Prime Gocrons\n"},
};

/// The message names the operation with a sequence in both cases.
void warnAboutOcronType(int ocronType, int preProcessingType, InverseOperation operation) {
  const CodingText& text = codingTexts[preProcessingType - ZQPreProcessingTypeOcron];
  dbPrintf(0, "getNextOriginalObjexFromPreProcessedObjexAndOriginalSequence: illegal ocrontype %d for %s", ocronType,
           operation == InverseOperation::plain ? text.plain : text.withSequence);
}

bool isGocronCoding(int preProcessingType) {
  return preProcessingType == ZQPreProcessingTypeGocron || preProcessingType == ZQPreProcessingTypePrimeGocron ||
         preProcessingType == ZQPreProcessingTypeVirtualGocron;
}

using NumberFunction = int (*)(int);

/// The functions of types 1017 to 1020, and their inverses.
struct PrimeFunctions {
  NumberFunction forward, back;
};
constexpr PrimeFunctions primeFunctions[] = {
    {primePi, nthPrime}, {nthPrime, primePi}, {notPrimePi, nthNotPrime}, {nthNotPrime, notPrimePi}};

const PrimeFunctions& primeFunctionsOf(int preProcessingType) {
  return primeFunctions[preProcessingType - ZQPreProcessingTypePrimePi];
}

/// Applies types 1016 to 1020 to each number.
template <class Value>
Value* codedNumbers(const PreprocessingSettings& settings, std::span<const Value> numbers, int* resultLength) {
  auto* coded = systemMallocArray<Value>(static_cast<long long>(numbers.size()));
  if (coded == nullptr) return nullptr;
  const int type = settings.preProcessingType;
  if (type == ZQPreProcessingTypeGocronValue) {
    const auto decoded = [&settings](Value code) { return static_cast<Value>(gocronToLongLong(settings.ocronType, code)); };
    std::transform(numbers.begin(), numbers.end(), coded, decoded);
  } else {
    const NumberFunction forward = primeFunctionsOf(type).forward;
    std::transform(numbers.begin(), numbers.end(), coded, [forward](Value number) { return forward(static_cast<int>(number)); });
  }
  *resultLength = static_cast<int>(numbers.size());
  return coded;
}

/// The number of the ocron at the begin of `symbols`, or the result code of the evaluator; -1 if no end symbol ends the ocron.
int numberOfOcron(const ZQMatrixMediumInfo& info, const int* symbols, int readable, InverseOperation operation) {
  int length = 0, stackDepth = 0;
  const SystemOwned<char> ocron(getOcronStringFromOcronIntArray(symbols, readable, info.getOcronEndSymbol(), &length));
  const bool isCut =
      operation == InverseOperation::withSequence && info.getPreProcessingType() == ZQPreProcessingTypeVirtualOcron;
  if (isCut) return static_cast<int>(ocronToLongLong(info.getOcronType(), ocron.get(), length, &stackDepth));
  return ocronToint(info.getOcronType(), ocron.get(), length, &stackDepth);
}

}  // namespace

bool isOcronTypeFor(int ocronType, int preProcessingType) {
  switch (preProcessingType) {
    case ZQPreProcessingTypeOcron:
    case ZQPreProcessingTypeGocron:
      return ocronType >= 3 && ocronType <= 5;
    case ZQPreProcessingTypePrimeOcron:
    case ZQPreProcessingTypePrimeGocron:
      return ocronType == 6;
    case ZQPreProcessingTypeVirtualOcron:
    case ZQPreProcessingTypeVirtualGocron:
      return ocronType == 7;
    default:
      return isOcronType(ocronType);
  }
}

int* numberCodedSequence(const PreprocessingSettings& settings, std::span<const int> numbers, int* resultLength) {
  const PrimesHeld held;
  *resultLength = 0;
  const auto length = static_cast<int>(numbers.size());
  if (settings.preProcessingType >= ZQPreProcessingTypeGocronValue) return codedNumbers(settings, numbers, resultLength);
  if (settings.coordinateDimension != 1) return nullptr;
  return isOcronCoding(settings.preProcessingType)
             ? createOcronSequenceFromIntegerSequenceUseGlobalPars(numbers.data(), length, resultLength)
             : createGoedelSequenceFromIntegerSequenceUseGlobalPars(numbers.data(), length, resultLength);
}

long long* longLongNumberCodedSequence(const PreprocessingSettings& settings, std::span<const long long> numbers,
                                       int* resultLength) {
  const PrimesHeld held;
  if (settings.preProcessingType >= ZQPreProcessingTypeGocronValue) return codedNumbers(settings, numbers, resultLength);
  if (settings.preProcessingType >= ZQPreProcessingTypeGocron && settings.coordinateDimension != 1) *resultLength = 0;
  return nullptr;
}

int* numberOfCode(ZQMatrixMediumInfo* info, int* objex, int readable, InverseOperation operation) {
  const int type = info->getPreProcessingType(), ocronType = info->getOcronType();
  if (objex == nullptr || info->getCoordinateDimension() != 1) return nullptr;
  if (type >= ZQPreProcessingTypePrimePi) {
    objex[0] = primeFunctionsOf(type).back(objex[0]);
    return objex;
  }
  if (!isOcronTypeFor(ocronType, type)) warnAboutOcronType(ocronType, type, operation);
  if (isOcronCoding(type)) {
    const int number = numberOfOcron(*info, objex, readable, operation);
    int* result = info->provideTemporaryMemory(1);
    if (result != nullptr) result[0] = number;
    return result;
  }
  objex[0] = isGocronCoding(type) ? gocronToInt(ocronType, objex[0]) : static_cast<int>(intToGocron(ocronType, objex[0]));
  return objex;
}

}  // namespace zmatrix
