#include "sequence/ZQPreprocessing.h"

#include <algorithm>
#include <climits>
#include <type_traits>

#include "frame/ZQDebugChannel.h"
#include "frame/ZQMemory.h"
#include "frame/ZQSystemOwned.h"
#include "frame/ZQTextCharacters.h"
#include "sequence/ZQNumberCoding.h"

namespace zmatrix {

namespace {

/// Results in blocks that go to the caller.
struct OwnBlocks {
  template <class Value>
  Value* provide(long long numberOfValues) {
    return systemMallocArray<Value>(numberOfValues);
  }
  /// Gives back what a result doesn't need of its block.
  template <class Value>
  Value* shrunkTo(Value* block, long long numberOfValues) {
    if (numberOfValues < 1) return block;
    auto* smaller = static_cast<Value*>(systemRealloc(block, static_cast<size_t>(numberOfValues) * sizeof(Value)));
    return smaller != nullptr ? smaller : block;
  }
};

/// Results in a list that is used again.
struct KeptList {
  ZQArray<int>& list;

  template <class Value>
  Value* provide(long long numberOfValues) {
    return numberOfValues >= 0 ? list.makeRoomFor(static_cast<size_t>(numberOfValues)) : nullptr;
  }
  template <class Value>
  Value* shrunkTo(Value* block, long long) {
    return block;
  }
};

template <class Value, class Room>
Value* zeroedBlock(Room room, size_t length, int* resultLength) {
  auto* block = room.template provide<Value>(static_cast<long long>(length));
  if (block == nullptr) return nullptr;
  std::fill_n(block, length, Value{0});
  *resultLength = static_cast<int>(length);
  return block;
}

// --- differences

/// Forward difference of the given order, each coordinate for itself: after `order` passes over one copy item i is the difference
/// of the original items i to i + order. Order 0 is the plain copy.
template <class Value, class Room>
Value* differenceOfOrder(Room room, int order, int coordinateDimension, std::span<const Value> original, int* resultLength) {
  using Unsigned = std::make_unsigned_t<Value>;
  *resultLength = 0;
  if (coordinateDimension < 1) return nullptr;
  const long long length = static_cast<long long>(original.size());
  const long long differenceLength = length - static_cast<long long>(coordinateDimension) * order;
  if (differenceLength < 1) return nullptr;
  auto* values = room.template provide<Value>(length);
  if (values == nullptr) return nullptr;
  std::copy(original.begin(), original.end(), values);
  for (long long remaining = length - coordinateDimension; remaining >= differenceLength; remaining -= coordinateDimension)
    for (long long i = 0; i < remaining; i++)
      values[i] = static_cast<Value>(static_cast<Unsigned>(values[i + coordinateDimension]) - static_cast<Unsigned>(values[i]));
  *resultLength = static_cast<int>(differenceLength);
  return differenceLength < length ? room.shrunkTo(values, differenceLength) : values;
}

// --- text

constexpr int blank = 32, lineEnd = 10, hyphen = 45;

/// One text on its way from line breaks as the author set them to plain running text.
class TextNormaliser {
 public:
  TextNormaliser(std::span<const int> text, int* normalised) : text_(text), normalised_(normalised) {}

  /// Writes at most as many values as the text has, and returns how many.
  int run() {
    while (position_ < text_.size()) {
      if (isWhiteCharacter(text_[position_]))
        copyRunOfWhitespace();
      else
        write(text_[position_++]);
    }
    return static_cast<int>(written_);
  }

 private:
  void write(int value) {
    if (written_ < text_.size()) normalised_[written_++] = value;
  }

  /// Copies a run of whitespace as one blank, one line end (for a blank line) or nothing (after a hyphen at the end of a line),
  /// and the value behind it, if there is one.
  void copyRunOfWhitespace() {
    const bool followsHyphen = position_ > 0 && text_[position_ - 1] == hyphen;
    int lineEnds = 0;
    for (; position_ < text_.size() && isWhiteCharacter(text_[position_]); position_++) lineEnds += text_[position_] == lineEnd;
    const bool hasNext = position_ < text_.size();

    if (lineEnds == 1 && followsHyphen) {
      if (hasNext && !isUpperCaseCharacter(text_[position_])) takeHyphenBack();
    } else {
      write(lineEnds >= 2 ? lineEnd : blank);
    }
    if (hasNext) write(text_[position_++]);
  }

  void takeHyphenBack() {
    written_--;
    if (normalised_[written_] != hyphen) dbPrintf(0, "da stimmt was nicht\n");
  }

  std::span<const int> text_;
  int* normalised_;
  size_t position_ = 0;
  size_t written_ = 0;
};

template <class Room>
int* normalisedText(Room room, std::span<const int> text, int* resultLength) {
  auto* normalised = room.template provide<int>(static_cast<long long>(text.size()));
  if (normalised == nullptr) return nullptr;
  *resultLength = TextNormaliser(text, normalised).run();
  return room.shrunkTo(normalised, *resultLength);
}

// --- MIDI

/// Start times are quanta in 32 bits; differences of two don't fit there, so bars are counted in 64.
struct BarLines {
  long long barLength;

  /// The bar lines that get a marker between two starts: none if they lie closer than a bar, else all that were passed.
  long long markersBetween(long long start, long long nextStart) const {
    if (nextStart - start < barLength) return 0;
    const long long firstBarLine = (start / barLength + 1) * barLength;
    return firstBarLine > nextStart ? 0 : (nextStart - firstBarLine) / barLength + 1;
  }
};

/// A bar can be as short as one quantum, so that few items may pass billions of bar lines. More markers than this, of which music
/// of a day and a night has none too many, are not made of them.
constexpr long long mostBarMarkers = 1000000;

/// One of the three types of MIDI items, by the number of its coordinates.
template <int coordinates>
struct MidiPreprocessing {
  static void writeMarker(int* item) {
    std::fill_n(item, coordinates, 0);
    item[0] = ZQNotNote;
  }

  static void writeItem(int* item, const int* previous, const int* original, long long barLength) {
    std::copy_n(original, coordinates, item);
    bool isDrum = false;
    if constexpr (coordinates == 4) isDrum = original[3] == drumSound;
    if (!isDrum) item[0] = wrappedDifference(original[0], previous[0]);
    item[1] = static_cast<int>(original[1] % barLength);
  }

  static long long numberOfMarkers(std::span<const int> original, size_t numberOfItems, const BarLines& bars) {
    long long markers = 0;
    for (size_t i = 1; i < numberOfItems; i++)
      markers += bars.markersBetween(original[(i - 1) * coordinates + 1], original[i * coordinates + 1]);
    return markers;
  }

  template <class Room>
  static int* run(Room room, const PreprocessingSettings& settings, std::span<const int> original, int* resultLength) {
    if (settings.coordinateDimension != coordinates) return nullptr;
    const BarLines bars{barLengthInQuanta(
        settings, "getPreprocessed Sequence: illegal values for timeSignature, assuming 4/4 time signature...\n")};
    const size_t numberOfItems = original.size() / coordinates;
    const long long markers = numberOfMarkers(original, numberOfItems, bars);
    const long long items = numberOfItems > 0 ? static_cast<long long>(numberOfItems) - 1 : 0;
    const long long length = (items + markers) * coordinates;
    if (markers > mostBarMarkers || length > INT_MAX) {
      dbPrintf(0, "error from getPreprocessed Sequence: %lld bar markers for %lld items, at most %lld are made\n", markers, items,
               mostBarMarkers);
      return nullptr;
    }
    auto* result = room.template provide<int>(length);
    if (result == nullptr) return nullptr;

    int* item = result;
    for (size_t i = 1; i < numberOfItems; i++) {
      const int* previous = &original[(i - 1) * coordinates];
      const int* next = &original[i * coordinates];
      for (long long n = bars.markersBetween(previous[1], next[1]); n > 0; n--, item += coordinates) writeMarker(item);
      writeItem(item, previous, next, bars.barLength);
      item += coordinates;
    }
    *resultLength = static_cast<int>(length);
    return result;
  }
};

template <class Value>
bool isEmpty(std::span<const Value> originalSequence) {
  if (originalSequence.data() != nullptr && !originalSequence.empty()) return false;
  dbPrintf(0, "Warning from getProcessedSequence: originalSequence is empty\n");
  return true;
}

/// What the number codings leave over: differences, text and MIDI items.
template <class Room>
int* preProcessedIn(Room room, const PreprocessingSettings& settings, std::span<const int> originalSequence, int* resultLength) {
  const int type = settings.preProcessingType;
  if (type >= 0 && type <= ZQPreProcessingTypeHighestDifference)
    return differenceOfOrder(room, type, settings.coordinateDimension, originalSequence, resultLength);
  switch (type) {
    case ZQPreProcessingTypeANSIText:
      return normalisedText(room, originalSequence, resultLength);
    case ZQPreProcessingTypeSecondText:
      return zeroedBlock<int>(room, originalSequence.size(), resultLength);
    case ZQPreProcessingTypeMidiNoteAndModQuanta:
      return MidiPreprocessing<2>::run(room, settings, originalSequence, resultLength);
    case ZQPreProcessingTypeMidiTriple_NDMT:
      return MidiPreprocessing<3>::run(room, settings, originalSequence, resultLength);
    case ZQPreProcessingTypeMidiGMQuadruple_NDMTS:
      return MidiPreprocessing<4>::run(room, settings, originalSequence, resultLength);
    default:
      return nullptr;
  }
}

}  // namespace

long long barLengthInQuanta(const PreprocessingSettings& settings, const char* illegalTimeSignatureMessage) {
  if (settings.midiTimeSignatureNom != 0 && settings.midiTimeSignatureDenom != 0) {
    const long long barLength =
        static_cast<long long>(settings.midiTimeSignatureNom) * quantaPerWholeNote / settings.midiTimeSignatureDenom;
    if (barLength > 0) return barLength;
  }
  dbPrintf(0, "%s", illegalTimeSignatureMessage);
  return quantaPerWholeNote;
}

bool givesSequence(const PreprocessingSettings& settings, long long length) {
  const int type = settings.preProcessingType;
  if (length < 1 || type < 0) return false;
  if (type <= ZQPreProcessingTypeHighestDifference) {
    return settings.coordinateDimension >= 1 && length > static_cast<long long>(settings.coordinateDimension) * type;
  }
  if (type == ZQPreProcessingTypeANSIText || type == ZQPreProcessingTypeSecondText) return true;
  return coordinatesOfMidiType(type) != 0 && coordinatesOfMidiType(type) == settings.coordinateDimension;
}

int* preProcessedSequence(const PreprocessingSettings& settings, std::span<const int> originalSequence, int* resultLength) {
  *resultLength = 0;
  if (isEmpty(originalSequence)) return nullptr;
  if (isNumberCoding(settings.preProcessingType)) return numberCodedSequence(settings, originalSequence, resultLength);
  return preProcessedIn(OwnBlocks{}, settings, originalSequence, resultLength);
}

const int* preProcessedSequenceIn(ZQArray<int>& room, const PreprocessingSettings& settings,
                                  std::span<const int> originalSequence, int* resultLength) {
  if (!isNumberCoding(settings.preProcessingType)) {
    *resultLength = 0;
    return isEmpty(originalSequence) ? nullptr : preProcessedIn(KeptList{room}, settings, originalSequence, resultLength);
  }
  const SystemOwned<int> coded(preProcessedSequence(settings, originalSequence, resultLength));
  const bool isKept = coded != nullptr && room.copyFrom(std::span<const int>(coded.get(), static_cast<size_t>(*resultLength)));
  if (!isKept) *resultLength = 0;
  return isKept ? room.makeRoomFor(room.size()) : nullptr;
}

long long* longLongPreProcessedSequence(const PreprocessingSettings& settings, std::span<const long long> originalSequence,
                                        int* resultLength) {
  if (isEmpty(originalSequence)) return nullptr;
  const int type = settings.preProcessingType;
  if (type < 0) return nullptr;
  if (type <= ZQPreProcessingTypeHighestDifference)
    return differenceOfOrder(OwnBlocks{}, type, settings.coordinateDimension, originalSequence, resultLength);
  if (type == ZQPreProcessingTypeSecondText) return zeroedBlock<long long>(OwnBlocks{}, originalSequence.size(), resultLength);
  return isNumberCoding(type) ? longLongNumberCodedSequence(settings, originalSequence, resultLength) : nullptr;
}

}  // namespace zmatrix
