#include "numbers/ZQPrimeSieve.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstring>
#include <memory>
#include <new>

namespace zmatrix {

namespace {

constexpr int numbersPerByte = 30;
constexpr std::array<uint8_t, 8> residues = {1, 7, 11, 13, 17, 19, 23, 29};
constexpr std::array<uint8_t, 3> wheelPrimes = {2, 3, 5};

/// Multiples of these are not struck out one by one: their pattern repeats after as many bytes as the product of these primes.
constexpr std::array<uint8_t, 4> patternPrimes = {7, 11, 13, 17};
constexpr uint32_t patternBytes = 7 * 11 * 13 * 17;
constexpr uint32_t firstStrikingPrime = 19;

/// Bytes of a segment, a multiple of the 8 of a word: half of the L1 cache; the other half holds the state of the primes.
constexpr uint32_t segmentBytes = 32768;

/// The bit of each residue modulo 30. Residues that share a factor with 30 have no bit and are never looked up.
constexpr auto bitOfResidue = [] {
  std::array<uint8_t, numbersPerByte> bits{};
  for (size_t bit = 0; bit < residues.size(); bit++) bits[residues[bit]] = static_cast<uint8_t>(bit);
  return bits;
}();

/// The number of each bit of an 8-byte word, relative to the first number of the word.
constexpr auto offsetOfBit = [] {
  std::array<uint8_t, 64> offsets{};
  for (size_t bit = 0; bit < 64; bit++) offsets[bit] = static_cast<uint8_t>(bit / 8 * numbersPerByte + residues[bit % 8]);
  return offsets;
}();

long long rootOf(long long number) {
  auto root = static_cast<long long>(std::sqrt(static_cast<double>(number)));
  while (root * root > number) root--;
  while ((root + 1) <= number / (root + 1)) root++;
  return root;
}

/// A prime and, for each bit, the byte of its next multiple, counted from the begin of the segment. Multiples with the same bit
/// are `prime` bytes apart.
struct StrikingPrime {
  uint32_t prime;
  std::array<uint32_t, 8> nextByte;
};

class SegmentedSieve {
 public:
  SegmentedSieve(long long lowerBound, long long limit) : lowerBound_(lowerBound), limit_(limit) {}

  /// Finds the primes whose multiples are struck out. False if memory runs out.
  bool prepare() {
    const long long root = rootOf(limit_);
    if (root < firstStrikingPrime) return true;
    const long long capacity = mostPrimesBetween(0, std::max(root, 5000LL));
    const std::unique_ptr<uint32_t[]> found(new (std::nothrow) uint32_t[static_cast<size_t>(capacity)]);
    if (found == nullptr) return false;
    numberOfPrimes_ = writePrimesBetween<uint32_t>(firstStrikingPrime, root, found.get(), capacity);
    if (numberOfPrimes_ < 0) return false;
    primes_.reset(new (std::nothrow) StrikingPrime[static_cast<size_t>(numberOfPrimes_)]);
    if (primes_ == nullptr) return false;
    for (long long i = 0; i < numberOfPrimes_; i++) primes_[i].prime = found[i];
    return true;
  }

  template <class Value>
  long long write(Value* primes, long long capacity) {
    if (!makePattern()) return -1;
    long long written = writeWheelPrimes(primes, capacity);
    const long long lastByte = limit_ / numbersPerByte;
    for (long long first = lowerBound_ / numbersPerByte; first <= lastByte && written >= 0; first += segmentBytes) {
      const auto length = static_cast<uint32_t>(std::min<long long>(segmentBytes, lastByte - first + 1));
      sieveSegment(first, length);
      written = collect(first, length, primes, written, capacity);
    }
    return written;
  }

 private:
  bool makePattern() {
    pattern_.reset(new (std::nothrow) uint8_t[patternBytes]);
    if (pattern_ == nullptr) return false;
    std::fill_n(pattern_.get(), patternBytes, uint8_t{0xff});
    for (const uint32_t prime : patternPrimes)
      for (uint32_t multiple = prime; multiple < patternBytes * numbersPerByte; multiple += 2 * prime)
        if (multiple % 3 != 0 && multiple % 5 != 0)
          pattern_[multiple / numbersPerByte] &= static_cast<uint8_t>(~(1u << bitOfResidue[multiple % numbersPerByte]));
    return true;
  }

  template <class Value>
  long long writeWheelPrimes(Value* primes, long long capacity) const {
    long long written = 0;
    for (const uint8_t prime : wheelPrimes) {
      if (prime < lowerBound_ || prime > limit_) continue;
      if (written == capacity) return -1;
      primes[written++] = prime;
    }
    return written;
  }

  void sieveSegment(long long first, uint32_t length) {
    copyPattern(first, length);
    if (first == 0) keepSmallPrimes();
    const uint64_t end = (static_cast<uint64_t>(first) + length) * numbersPerByte;
    while (striking_ < numberOfPrimes_ && static_cast<uint64_t>(primes_[striking_].prime) * primes_[striking_].prime < end)
      setFirstMultiples(primes_[striking_++], first);
    for (long long i = 0; i < striking_; i++) strike(primes_[i], length);
    cutEdges(first, length);
  }

  void copyPattern(long long first, uint32_t length) {
    auto from = static_cast<uint32_t>(first % patternBytes);
    for (uint32_t done = 0; done < length;) {
      const uint32_t part = std::min(length - done, patternBytes - from);
      memcpy(segment_ + done, pattern_.get() + from, part);
      done += part;
      from = 0;
    }
    memset(segment_ + length, 0, (8 - length % 8) % 8);
  }

  /// The pattern strikes out its own primes and leaves 1, which is no prime: both are corrected here.
  void keepSmallPrimes() {
    for (const uint8_t prime : patternPrimes) segment_[0] |= static_cast<uint8_t>(1u << bitOfResidue[prime]);
    segment_[0] &= static_cast<uint8_t>(~1u);
  }

  /// Sets the first multiple of this prime for each bit: from its square on, in this segment or behind it. A multiple may lie
  /// beyond 63 bits.
  static void setFirstMultiples(StrikingPrime& striking, long long first) {
    const uint64_t prime = striking.prime, firstByte = static_cast<uint64_t>(first);
    uint64_t factor = std::max(prime, (firstByte * numbersPerByte + prime - 1) / prime);
    for (int found = 0; found < 8; factor++) {
      if (factor % 2 == 0 || factor % 3 == 0 || factor % 5 == 0) continue;
      const uint64_t multiple = prime * factor;
      striking.nextByte[bitOfResidue[multiple % numbersPerByte]] = static_cast<uint32_t>(multiple / numbersPerByte - firstByte);
      found++;
    }
  }

  void strike(StrikingPrime& striking, uint32_t length) {
    const uint32_t prime = striking.prime;
    for (uint32_t bit = 0; bit < 8; bit++) {
      const auto mask = static_cast<uint8_t>(~(1u << bit));
      uint32_t byte = striking.nextByte[bit];
      for (; byte < length; byte += prime) segment_[byte] &= mask;
      striking.nextByte[bit] = byte - length;
    }
  }

  /// Clears the numbers outside of the bounds: they can only be in the first and the last byte.
  void cutEdges(long long first, uint32_t length) {
    const uint64_t begin = static_cast<uint64_t>(first) * numbersPerByte;
    const uint64_t beginOfLast = begin + static_cast<uint64_t>(length - 1) * numbersPerByte;
    for (size_t bit = 0; bit < residues.size(); bit++) {
      const auto mask = static_cast<uint8_t>(~(1u << bit));
      if (begin + residues[bit] < static_cast<uint64_t>(lowerBound_)) segment_[0] &= mask;
      if (beginOfLast + residues[bit] > static_cast<uint64_t>(limit_)) segment_[length - 1] &= mask;
    }
  }

  template <class Value>
  long long collect(long long first, uint32_t length, Value* primes, long long written, long long capacity) const {
    for (uint32_t byte = 0; byte < length; byte += 8) {
      uint64_t word = 0;
      memcpy(&word, segment_ + byte, sizeof word);
      if constexpr (std::endian::native == std::endian::big) word = __builtin_bswap64(word);
      if (capacity - written < std::popcount(word)) return -1;
      const long long begin = (first + byte) * numbersPerByte;
      for (; word != 0; word &= word - 1) primes[written++] = static_cast<Value>(begin + offsetOfBit[std::countr_zero(word)]);
    }
    return written;
  }

  long long lowerBound_, limit_;
  std::unique_ptr<StrikingPrime[]> primes_;
  long long numberOfPrimes_ = 0;
  long long striking_ = 0;  ///< the number of primes whose square lies below the end of the segment
  std::unique_ptr<uint8_t[]> pattern_;
  alignas(64) uint8_t segment_[segmentBytes];
};

}  // namespace

long long mostPrimesBetween(long long lowerBound, long long limit) {
  const auto upTo = static_cast<double>(limit);
  const double most = 1.05 * upTo / (std::log(upTo) - 1);
  const double oddNumbers = (upTo - static_cast<double>(lowerBound)) / 2 + 2;
  return static_cast<long long>(std::min(most, lowerBound > 0 ? oddNumbers : most));
}

template <class Value>
long long writePrimesBetween(long long lowerBound, long long limit, Value* primes, long long capacity) {
  lowerBound = std::max(lowerBound, 0LL);
  if (limit < 2) return 0;
  const std::unique_ptr<SegmentedSieve> sieve(new (std::nothrow) SegmentedSieve(lowerBound, limit));
  if (sieve == nullptr || !sieve->prepare()) return -1;
  return sieve->write(primes, capacity);
}

template long long writePrimesBetween(long long lowerBound, long long limit, int* primes, long long capacity);
template long long writePrimesBetween(long long lowerBound, long long limit, long long* primes, long long capacity);
template long long writePrimesBetween(long long lowerBound, long long limit, uint32_t* primes, long long capacity);

}  // namespace zmatrix
