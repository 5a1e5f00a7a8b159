// The preprocessing types that encode numbers: as ocrons or gocrons, which express their prime factors, or by rank among the
// primes. They need the table of primes. Encoding uses the parameters of the calling thread, decoding the type and end symbol of
// the sub-matrix; every evaluation stops at the end symbol of the thread.
#pragma once

#include <span>

#include "sequence/ZQPreprocessing.h"
#include "settings/ZQMatrixMediumInfo.h"

namespace zmatrix {

/// True for the types 1010 to 1020.
constexpr bool isNumberCoding(int preProcessingType) {
  return preProcessingType >= ZQPreProcessingTypeOcron && preProcessingType <= ZQPreProcessingTypeNthNotPrime;
}

/// True for the types that turn each number into several integers, ended by an end symbol.
constexpr bool isOcronCoding(int preProcessingType) {
  return preProcessingType == ZQPreProcessingTypeOcron || preProcessingType == ZQPreProcessingTypePrimeOcron ||
         preProcessingType == ZQPreProcessingTypeVirtualOcron;
}

/// True if the ocron type is valid, and fits a preprocessing type that encodes ocrons or gocrons.
bool isOcronTypeFor(int ocronType, int preProcessingType);

/// Encodes a sequence that isn't empty. Null, with the result length 0, for ocrons and gocrons of items with several coordinates,
/// if no number has a gocron, and if memory runs out.
int* numberCodedSequence(const PreprocessingSettings& settings, std::span<const int> numbers, int* resultLength);

/// The same for 64-bit values; types 1017 to 1020 use only their low 32 bits. Null for types 1010 to 1015, with the result length
/// unchanged, except for types 1011 to 1015 and items with several coordinates, where it is 0.
long long* longLongNumberCodedSequence(const PreprocessingSettings& settings, std::span<const long long> numbers,
                                       int* resultLength);

/// The two inverse operations. They differ in a message, and in the largest value of a virtual ocron.
enum class InverseOperation { plain, withSequence };

/// Decodes one item. The result is `objex`, changed in place, or for an ocron the temporary memory of the sub-matrix. At most
/// `readable` integers of `objex` are read. Null for a null item, an item of several coordinates, or if memory runs out.
int* numberOfCode(ZQMatrixMediumInfo* info, int* objex, int readable, InverseOperation operation);

}  // namespace zmatrix
