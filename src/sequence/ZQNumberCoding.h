// The preprocessing types that code numbers: as ocrons or gocrons, which tell their prime structure, or by their places among the
// primes. They need the table of primes. Coding uses the parameters of the calling thread, decoding those of the sub-matrix;
// every evaluation stops at the end symbol of the thread.
#pragma once

#include <span>

#include "sequence/ZQPreprocessing.h"
#include "settings/ZQMatrixMediumInfo.h"

namespace zmatrix {

/// True for the types 1010 to 1020.
constexpr bool isNumberCoding(int preProcessingType) {
  return preProcessingType >= ZQPreProcessingTypeOcron && preProcessingType <= ZQPreProcessingTypeNthNotPrime;
}

/// True for the types whose preprocessed sequence is a run of integers for each number, with an end symbol behind it.
constexpr bool isOcronCoding(int preProcessingType) {
  return preProcessingType == ZQPreProcessingTypeOcron || preProcessingType == ZQPreProcessingTypePrimeOcron ||
         preProcessingType == ZQPreProcessingTypeVirtualOcron;
}

/// True if the ocron type is one, and fits the preprocessing type where that codes ocrons or gocrons.
bool isOcronTypeFor(int ocronType, int preProcessingType);

/// Codes a sequence that isn't empty. Null, with the result length 0, for ocrons and gocrons of items with several coordinates,
/// where no number has a gocron, and without memory.
int* numberCodedSequence(const PreprocessingSettings& settings, std::span<const int> numbers, int* resultLength);

/// The same for 64-bit values, of which types 1017 to 1020 see the low 32 bits. Null for types 1010 to 1015, with the result
/// length as it was but for 1011 to 1015 and items with several coordinates, where it is 0.
long long* longLongNumberCodedSequence(const PreprocessingSettings& settings, std::span<const long long> numbers,
                                       int* resultLength);

/// Which of the two inverse operations works: they differ in a message, and in how large a virtual ocron may be.
enum class InverseOperation { plain, withSequence };

/// Decodes one item: in place, and returns it; an ocron into the temporary memory of the sub-matrix, which is returned then. At
/// most `readable` integers of `objex` are read. Null for an item of several coordinates, and without memory.
int* numberOfCode(ZQMatrixMediumInfo* info, int* objex, int readable, InverseOperation operation);

}  // namespace zmatrix
