#include "NumberCoding.h"

#include <algorithm>
#include <iterator>

namespace {

const NumberCoding codings[] = {
    {"plain", ZQPreProcessingTypeNone, 0, "their values"},
    {"difference", 1, 0, "their differences"},
    {"difference2", 2, 0, "their second differences"},
    {"difference3", 3, 0, "their third differences"},
    {"ocron", ZQPreProcessingTypeOcron, 4, "the symbols of their ocrons"},
    {"gocron", ZQPreProcessingTypeGocron, 4, "their gocrons"},
    {"prime-ocron", ZQPreProcessingTypePrimeOcron, 6, "the symbols of their ocrons of type 6"},
    {"prime-gocron", ZQPreProcessingTypePrimeGocron, 6, "their gocrons of type 6"},
    {"virtual-ocron", ZQPreProcessingTypeVirtualOcron, 7, "the symbols of their ocrons of type 7"},
    {"virtual-gocron", ZQPreProcessingTypeVirtualGocron, 7, "their gocrons of type 7"},
    {"gocron-value", ZQPreProcessingTypeGocronValue, 4, "their values as gocrons"},
    {"prime-index", ZQPreProcessingTypePrimePi, 0, "the number of primes up to each"},
    {"nth-prime", ZQPreProcessingTypeNthPrime, 0, "the prime with each as its index"},
    {"non-prime-index", ZQPreProcessingTypeNotPrimePi, 0, "the number of non-primes up to each"},
    {"nth-non-prime", ZQPreProcessingTypeNthNotPrime, 0, "the non-prime with each as its index"},
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
