#include "sequence/ZQPreprocessing.h"

#include <algorithm>
#include <climits>
#include <type_traits>

#include "frame/ZQDebugChannel.h"
#include "frame/ZQMemory.h"
#include "frame/ZQSystemOwned.h"
#include "frame/ZQTextCharacters.h"
#include "sequence/ZQMidiItems.h"
#include "sequence/ZQNumberCoding.h"
#include "settings/ZQMatrixMediumInfo.h"

namespace zmatrix {

namespace {

/// Allocates results as blocks for the caller.
struct OwnBlocks {
  template <class Value>
  Value* provide(long long numberOfValues) {
    return systemMallocArray<Value>(numberOfValues);
  }
  /// Shrinks a block to the length of its result.
  template <class Value>
  Value* shrunkTo(Value* block, long long numberOfValues) {
    if (numberOfValues < 1) return block;
    auto* smaller = static_cast<Value*>(systemRealloc(block, static_cast<size_t>(numberOfValues) * sizeof(Value)));
    return smaller != nullptr ? smaller : block;
  }
};

/// Allocates results in a list that the next call reuses.
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

/// The forward difference of the given order, for each coordinate: after `order` passes over a copy, item i is the difference of
/// the original items i to i + order. Order 0 is a plain copy.
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

/// Turns a text with line breaks into continuous text.
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

  /// Copies a run of whitespace as one blank, as one line end if it has two or more, or not at all if it has one line end and
  /// follows a hyphen; and the value after it, if there is one.
  void copyRunOfWhitespace() {
    const bool followsHyphen = position_ > 0 && text_[position_ - 1] == hyphenCharacter;
    int lineEnds = 0;
    for (; position_ < text_.size() && isWhiteCharacter(text_[position_]); position_++)
      lineEnds += text_[position_] == lineEndCharacter;
    const bool hasNext = position_ < text_.size();

    if (lineEnds == 1 && followsHyphen) {
      if (hasNext && !isUpperCaseCharacter(text_[position_])) takeHyphenBack();
    } else {
      write(lineEnds >= 2 ? lineEndCharacter : blankCharacter);
    }
    if (hasNext) write(text_[position_++]);
  }

  void takeHyphenBack() {
    written_--;
    if (normalised_[written_] != hyphenCharacter) dbPrintf(0, "da stimmt was nicht\n");
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

/// A bar can be as short as one quantum, so a few items could span billions of bar lines. More markers than this are refused; 24
/// hours of music have fewer.
constexpr long long mostBarMarkers = 1000000;

template <int coordinates, class Room>
int* preProcessedMidi(Room room, const PreprocessingSettings& settings, std::span<const int> original, int* resultLength) {
  using Items = MidiItems<coordinates>;
  if (settings.coordinateDimension != coordinates) return nullptr;
  const BarLines bars{barLengthInQuanta(
      settings, "getPreprocessed Sequence: illegal values for timeSignature, assuming 4/4 time signature...\n")};
  const size_t numberOfItems = original.size() / coordinates;
  const long long markers = Items::numberOfMarkers(original, numberOfItems, bars);
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
    for (long long n = bars.markersBetween(previous[1], next[1]); n > 0; n--, item += coordinates) Items::writeMarker(item);
    Items::writeItem(item, previous, next, bars.barLength);
    item += coordinates;
  }
  *resultLength = static_cast<int>(length);
  return result;
}

template <class Value>
bool isEmpty(std::span<const Value> originalSequence) {
  if (originalSequence.data() != nullptr && !originalSequence.empty()) return false;
  dbPrintf(0, "Warning from getProcessedSequence: originalSequence is empty\n");
  return true;
}

/// All types except the number codes: differences, text and MIDI items.
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
      return preProcessedMidi<2>(room, settings, originalSequence, resultLength);
    case ZQPreProcessingTypeMidiTriple_NDMT:
      return preProcessedMidi<3>(room, settings, originalSequence, resultLength);
    case ZQPreProcessingTypeMidiGMQuadruple_NDMTS:
      return preProcessedMidi<4>(room, settings, originalSequence, resultLength);
    default:
      return nullptr;
  }
}

}  // namespace

PreprocessingSettings preprocessingSettingsOf(const ZQMatrixMediumInfo& info) {
  return {info.getPreProcessingType(), info.getCoordinateDimension(), info.getMidiTimeSignatureNom(),
          info.getMidiTimeSignatureDenom(), info.getOcronType()};
}

long long barLengthOrZero(const PreprocessingSettings& settings) {
  if (settings.midiTimeSignatureNom == 0 || settings.midiTimeSignatureDenom == 0) return 0;
  const long long quantaOfBeats = static_cast<long long>(settings.midiTimeSignatureNom) * quantaPerWholeNote;
  return std::max(quantaOfBeats / settings.midiTimeSignatureDenom, 0LL);
}

long long barLengthInQuanta(const PreprocessingSettings& settings, const char* illegalTimeSignatureMessage) {
  const long long barLength = barLengthOrZero(settings);
  if (barLength > 0) return barLength;
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
