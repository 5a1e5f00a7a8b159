#include "NumberCoding.h"

#include "CodingTable.h"

namespace {

const NumberCoding codings[] = {
    {"plain", ZQPreProcessingTypeNone, 0, "the numbers as they are"},
    {"difference", 1, 0, "the steps from each to the next"},
    {"difference2", 2, 0, "the steps between the steps"},
    {"difference3", 3, 0, "the steps between those"},
    {"ocron", ZQPreProcessingTypeOcron, 4, "the symbols of each one's ocron"},
    {"gocron", ZQPreProcessingTypeGocron, 4, "each one's ocron as a number"},
    {"prime-ocron", ZQPreProcessingTypePrimeOcron, 6, "the symbols of each one's way among primes and non-primes"},
    {"prime-gocron", ZQPreProcessingTypePrimeGocron, 6, "the same as a number"},
    {"virtual-ocron", ZQPreProcessingTypeVirtualOcron, 7, "the symbols of each one's ocron without products"},
    {"virtual-gocron", ZQPreProcessingTypeVirtualGocron, 7, "the same as a number"},
    {"gocron-value", ZQPreProcessingTypeGocronValue, 4, "the number that each stands for as a gocron"},
    {"prime-index", ZQPreProcessingTypePrimePi, 0, "how many primes there are up to each"},
    {"nth-prime", ZQPreProcessingTypeNthPrime, 0, "the prime of that index"},
    {"non-prime-index", ZQPreProcessingTypeNotPrimePi, 0, "how many non-primes there are up to each"},
    {"nth-non-prime", ZQPreProcessingTypeNthNotPrime, 0, "the non-prime of that index"},
};

}  // namespace

const NumberCoding* findNumberCoding(const std::string& name) {
  return findIn(codings, &NumberCoding::name, name);
}

const NumberCoding* findNumberCoding(int preprocessing) {
  return findIn(codings, &NumberCoding::preprocessing, preprocessing);
}

std::vector<std::string> namesOfNumberCodings() {
  return namesIn(codings);
}

bool isOcronCoding(int preprocessing) {
  return preprocessing == ZQPreProcessingTypeOcron || preprocessing == ZQPreProcessingTypePrimeOcron ||
         preprocessing == ZQPreProcessingTypeVirtualOcron;
}

bool isGocronCoding(int preprocessing) {
  return preprocessing == ZQPreProcessingTypeGocron || preprocessing == ZQPreProcessingTypePrimeGocron ||
         preprocessing == ZQPreProcessingTypeVirtualGocron;
}

bool isArithmetic(int preprocessing) {
  return preprocessing >= ZQPreProcessingTypeOcron;
}
