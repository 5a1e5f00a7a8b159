#include "NumberCoding.h"

#include <algorithm>
#include <iterator>

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

template <class Predicate>
const NumberCoding* findCoding(Predicate predicate) {
  const NumberCoding* const found = std::find_if(std::begin(codings), std::end(codings), predicate);
  return found == std::end(codings) ? nullptr : found;
}

}  // namespace

const NumberCoding* findNumberCoding(const std::string& name) {
  return findCoding([&](const NumberCoding& coding) { return name == coding.name; });
}

const NumberCoding* findNumberCoding(int preprocessing) {
  return findCoding([&](const NumberCoding& coding) { return preprocessing == coding.preprocessing; });
}

std::vector<std::string> namesOfNumberCodings() {
  std::vector<std::string> names;
  for (const NumberCoding& coding : codings) names.emplace_back(coding.name);
  return names;
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
