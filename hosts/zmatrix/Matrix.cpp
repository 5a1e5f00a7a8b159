#include "Matrix.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstdlib>

#include "Failure.h"
#include "Inputs.h"
#include "Overheard.h"
#include "Tiers.h"

namespace {

// Three languages, each with its letters and its words, and room for one pair more.
constexpr int numberOfIDsWithWords = 8;

// Rows of line feeds that the library puts behind each series that it keeps.
constexpr int rowsBehindASeries = 4;

// What the library says when a track finds no sub-matrix.
const char* const noFreeID = "could not find a free matrixID";

const char* const noTexts = "a matrix of the base tier stores values, it learns nothing";

[[noreturn]] void refuse(const std::string& what) {
  throw Failure{ExitCode::badInput, what};
}

// An integer of 1, 2 or 4 bytes, the lowest first; a negative size is a signed one.
int unpack(const char* bytes, int size) {
  const int length = std::min(std::abs(size), 4);
  unsigned int value = 0;
  for (int at = 0; at < length; ++at) value |= static_cast<unsigned int>(static_cast<unsigned char>(bytes[at])) << (8 * at);
  if (size == -1) return static_cast<std::int8_t>(value);
  if (size == -2) return static_cast<std::int16_t>(value);
  return static_cast<int>(value);
}

// Takes the messages that tell how many words were too long out of what was overheard, and returns the number.
int takeWordsLeftOut(std::vector<Overheard::Kind>& kinds) {
  const std::string sign = "numberOfUnknownSymbols = ";
  int words = 0;
  const auto tellsOfWords = [&](const Overheard::Kind& kind) {
    const std::size_t at = kind.first[0].find(sign);
    if (at != std::string::npos) words = std::atoi(kind.first[0].c_str() + at + sign.size());
    return at != std::string::npos;
  };
  kinds.erase(std::remove_if(kinds.begin(), kinds.end(), tellsOfWords), kinds.end());
  return words;
}

template <class Functions>
class MatrixOf : public Matrix {
 public:
  using Handle = typename Functions::Handle;

  MatrixOf(Handle* handle, Loudness loudness) : handle_(handle, Functions::destroy) { setLoudness(loudness); }

  Tier tier() const override { return Functions::number; }
  int numberOfIDs() const override { return Functions::numberOfIDs(matrix()); }
  int blockSize() const override { return Functions::blockSize(matrix()); }
  int maximalStack() const override { return Functions::maximalStack(matrix()); }
  void select(int id) override { Functions::setCurrentID(matrix(), id); }
  Loudness loudness() const override { return loudness_; }

  void setLoudness(Loudness loudness) override {
    loudness_ = loudness;
    Functions::setDebugDevice(matrix(), loudness.printsMessages() ? 1 : 0);
    Functions::setDebugLevel(matrix(), loudness.level);
  }

  Header header() const override {
    Header header{Functions::description(matrix()), Functions::formatVersion(matrix()), 0, Functions::idsInUse(matrix())};
    if constexpr (Functions::learns) header.updates = Functions::updates(matrix());
    return header;
  }

  const ZQMatrixProperties& record(int id) override {
    const int selected = Functions::currentID(matrix());
    select(id);
    const ZQMatrixProperties* record = Functions::snapshot(Functions::info(matrix()));
    select(selected);
    if (record == nullptr) throw Failure{ExitCode::limit, "out of memory"};
    return *record;
  }

  std::vector<const ZQMatrixProperties*> history() override {
    const Hush hush(*this);  // the library finds the end of the history by a record that it can't read
    int count = 0;
    Functions::readHistory(matrix(), &count);
    std::vector<const ZQMatrixProperties*> records;
    for (int index = 0; index < count; ++index) {
      auto* info = Functions::historyRecord(matrix(), index);
      if (info == nullptr) break;
      records.push_back(Functions::snapshot(info));
    }
    return records;
  }

  zq_loadReport loadReport() override {
    zq_loadReport report;
    Functions::loadReport(matrix(), &report);
    return report;
  }

  bool save(const std::string& path) override {
    errno = 0;
    return Functions::save(matrix(), path.c_str()) == 1;
  }

  void prepareForTexts(int phraseLimit) override {
    if constexpr (Functions::learns) {
      Functions::setTextProfile(matrix());
      setPhraseLimit(phraseLimit);
    } else {
      refuse(noTexts);
    }
  }

  void reserveIDs(int count) override { Functions::reserveIDs(matrix(), count); }

  void prepareForMusic([[maybe_unused]] const MusicSettings& settings) override {
    if constexpr (Functions::learns) {
      const int limit = phraseLimit();
      setMusicProfile(settings.preprocessing);
      setPhraseLimit(limit);
      Functions::setGlobalGrid(matrix(), settings.grid);
      Functions::setGlobalDurationGrid(matrix(), settings.durationGrid);
      Functions::setTracks(matrix(), static_cast<int>(settings.tracks));
      Functions::setChannelFilter(matrix(), settings.skippedChannels.data());
      // a feed takes the grids of its first track from the sub-matrix that is current when it begins, which is the first
      select(0);
      Functions::setGrid(matrix(), settings.grid);
      Functions::setDurationGrid(matrix(), settings.durationGrid);
      if (keepsHistory_) keepHistory();
    } else {
      refuse(noTexts);
    }
  }

  MusicSettings musicSettings() const override {
    MusicSettings settings{};
    if constexpr (Functions::learns) {
      settings = {Functions::globalPreprocessing(matrix()),
                  Functions::globalGrid(matrix()),
                  Functions::globalDurationGrid(matrix()),
                  static_cast<Tracks>(Functions::tracks(matrix())),
                  {}};
      std::copy_n(Functions::channelFilter(matrix()), settings.skippedChannels.size(), settings.skippedChannels.begin());
    }
    return settings;
  }

  void prepareForNumbers([[maybe_unused]] const NumberSettings& settings, [[maybe_unused]] int phraseLimit) override {
    if constexpr (Functions::learns) {
      Functions::setSeriesProfile(matrix());
      Functions::setGlobalPreprocessing(matrix(), settings.preprocessing);
      Functions::setGlobalOcronType(matrix(), settings.ocronType);
      setPhraseLimit(phraseLimit);
      select(0);
      Functions::applyGlobals(matrix());
      Functions::setMaximalIndex(matrix(), settings.maxIndex);
    } else {
      refuse(noTexts);
    }
  }

  NumberSettings numberSettings() override {
    NumberSettings settings{};
    if constexpr (Functions::learns) {
      select(0);
      settings = {record(0).preProcessingType, Functions::ocronType(matrix()), record(0).maximalMatrixIndex};
    }
    return settings;
  }

  // Of a series the sub-matrix has the limit, since it was set up before it learned; a feed sets its own up from the global one.
  void setPhraseLimit([[maybe_unused]] int phraseLimit) override {
    if constexpr (Functions::learns) {
      Functions::setPhraseLimit(matrix(), phraseLimit);
      if (record(0).matrixType == ZQMatrixTypeIntegerSeries && isOccupied(0)) {
        select(0);
        Functions::setOwnPhraseLimit(matrix(), phraseLimit);
      }
    }
  }

  int phraseLimit() const override {
    if constexpr (Functions::learns) return Functions::phraseLimit(matrix());
    return 0;
  }

  void setWordLimit([[maybe_unused]] int wordLimit) override {
    if constexpr (Functions::hasSymbols) s_setGlobalSymbolMaxPhraseLengthForUpdateWithSequence(matrix(), wordLimit);
  }

  void prepareForWords(int wordLimit) override {
    if constexpr (Functions::hasSymbols) {
      s_setMaxNumberOfMatrices(matrix(), numberOfIDsWithWords);
      s_setMatrixAILevel(matrix(), 1);
      s_setGlobalSymbolDefaultMatrixPropertiesForSymbols(matrix());
      setWordLimit(wordLimit);
    } else {
      refuse("only a matrix of the full tier learns words");
    }
  }

  void keepHistory() override {
    keepsHistory_ = true;
    if constexpr (Functions::learns) {
      Functions::setAddUpdateInfo(matrix(), 1);
      if (record(0).matrixType == ZQMatrixTypeIntegerSeries) {
        select(0);
        Functions::setOwnAddUpdateInfo(matrix(), 1);
      }
    }
    if constexpr (Functions::hasSymbols) s_setGlobalSymbolAddUpdateInfo(matrix(), 1);
  }

  bool hasWords() const override {
    if constexpr (Functions::hasSymbols) return s_getMatrixAILevel(matrix()) == 1;
    return false;
  }

  Learned learnText(const std::string& path) override {
    if constexpr (Functions::learns) {
      std::vector<long long> before;
      for (int id = 0; id < numberOfIDs(); ++id) before.push_back(itemsLearned(id));
      int length = 0;
      Overheard talk(loudness_.level == 0);
      const int result = Functions::learnFile(matrix(), path.c_str(), &length);
      refreshWords();
      talk.end();
      const int wordsLeftOut = takeWordsLeftOut(talk.kinds());
      talk.tell();
      int id = 0;
      while (id < numberOfIDs() && (itemsLearned(id) == before[id] || !holdsText(id))) ++id;
      if (id == numberOfIDs()) id = -1;
      if (result < 1 && !isExcused(result, id, path)) {
        throw Failure{ExitCode::limit, "the matrix could not take all of " + path + ": lower --max-phrase, or learn fewer texts"};
      }
      return {id, wordsLeftOut};
    } else {
      refuse(noTexts);
    }
  }

  int learnMusic([[maybe_unused]] const std::string& path, [[maybe_unused]] Kind kind) override {
    if constexpr (Functions::learns) {
      int notes = 0;
      const Loudness wanted = loudness_;
      if (wanted.level < 0) setLoudness({0});
      Overheard talk(loudness_.level == 0);
      select(0);
      if (kind == Kind::kern) {
        Functions::learnKern(matrix(), path.c_str(), &notes);
      } else {
        Functions::learnMidi(matrix(), path.c_str(), &notes);
      }
      talk.end();
      setLoudness(wanted);
      for (const Overheard::Kind& kindOfTalk : talk.kinds()) {
        if (kindOfTalk.first[0].find(noFreeID) == std::string::npos) continue;
        throw Failure{ExitCode::limit, "the model has " + std::to_string(numberOfIDs()) +
                                           " sub-matrices, each for one meter, kind and sound, and " + path +
                                           " needs one more: learn its files and this one into a new model"};
      }
      return notes;
    } else {
      refuse(noTexts);
    }
  }

  void learnSeries([[maybe_unused]] const std::vector<int>& series, [[maybe_unused]] const std::string& path) override {
    if constexpr (Functions::learns) {
      Functions::setNameOfFile(matrix(), path.c_str());
      Functions::addNameOfFile(matrix(), path.c_str());
      const Hush hush(*this);  // what can't be coded the caller has told by now
      if (Functions::learnSeries(matrix(), series.data(), static_cast<int>(series.size())) >= 1) return;
      throw Failure{ExitCode::limit, "the matrix could not take all of " + path + ": lower --max-phrase, or learn fewer numbers"};
    } else {
      refuse(noTexts);
    }
  }

  // The root of a sub-matrix counts its items, and the root's handle is the ID.
  long long itemsLearned([[maybe_unused]] int id) const override {
    if constexpr (Functions::learns) {
      auto* root = id > maximalStack() ? nullptr : Functions::elementAt(matrix(), id);
      return root == nullptr ? 0 : Functions::itemsBehind(root);
    } else {
      return 0;
    }
  }

  std::vector<int> lastSeriesLearned([[maybe_unused]] int id) override {
    std::vector<int> items;
    if constexpr (Functions::learns) {
      select(id);
      const ZQMatrixProperties& info = record(id);
      const char* bytes = Functions::lastSeries(matrix());
      const auto* sizes = Functions::sizesOfCoordinates(matrix());
      const int coordinates = (info.lengthOfUpdateSequence - rowsBehindASeries) * info.coordinateDimension;
      for (int at = 0; bytes != nullptr && sizes != nullptr && at < coordinates; ++at) {
        const int size = sizes[at % info.coordinateDimension];
        items.push_back(unpack(bytes, size));
        bytes += std::abs(size);
      }
    }
    return items;
  }

  int countUnknownWords([[maybe_unused]] int id, [[maybe_unused]] const std::string& text) override {
    int unknown = 0;
    if constexpr (Functions::hasSymbols) {
      const Hush hush(*this);  // it would tell the number that is returned
      const std::vector<int> items = itemsOf(text);
      int symbols = 0;
      int lineFeeds = 0;
      select(id);
      s_Free(s_getNextLevelSymbolsFromOriginalObjects(matrix(), items.data(), static_cast<int>(items.size()), &symbols, &unknown,
                                                      &lineFeeds));
    }
    return unknown;
  }

  void setMethod([[maybe_unused]] Method method) override {
    if constexpr (Functions::learns) Functions::setMethod(matrix(), static_cast<int>(method));
  }

  void seed([[maybe_unused]] long long value) override {
    if constexpr (Functions::learns) Functions::setRandomValue(matrix(), Functions::currentID(matrix()), value);
  }

  void setContext([[maybe_unused]] const std::vector<int>& items) override {
    if constexpr (Functions::learns) {
      Functions::setContext(matrix(), items.data(), static_cast<int>(items.size()), 1);
    }
  }

  std::vector<int> context() override {
    std::vector<int> items;
    if constexpr (Functions::learns) {
      int length = 0;
      int dimension = 0;
      int* flat = Functions::context(Functions::info(matrix()), &length, &dimension);
      if (flat != nullptr) items.assign(flat, flat + length);
      s_Free(flat);
    }
    return items;
  }

  int lengthOfContext() const override {
    if constexpr (Functions::learns) return Functions::lengthOfContext(matrix());
    return 0;
  }

  void forgetWords() override {
    if constexpr (Functions::hasSymbols) s_setMatrixAILevel(matrix(), 0);
  }

  std::optional<int> nextItem() override {
    const int* item = nullptr;
    if constexpr (Functions::learns) {
      double probability = 0;
      double stopProbability = 0;
      item = Functions::nextItem(matrix(), &probability, &stopProbability);
    }
    if (item == nullptr) return std::nullopt;
    return *item;
  }

  std::string wordOf([[maybe_unused]] int symbol) override {
    std::string word;
    if constexpr (Functions::hasSymbols) {
      int length = 0;
      int* letters = zq_createPhraseOfSymbol(matrix(), symbol, &length);
      for (int at = 0; letters != nullptr && at < length; ++at) word += static_cast<char>(letters[at]);
      s_Free(letters);
    }
    return word;
  }

  bool writeMusic([[maybe_unused]] int count, [[maybe_unused]] const std::string& path) override {
    if constexpr (Functions::learns) {
      const Hush hush(*this);  // it remarks on each note that it puts right
      return Functions::writeMidi(matrix(), count, path.c_str(), nullptr) == 1;
    }
    return false;
  }

  std::vector<int> preprocess([[maybe_unused]] const std::vector<int>& items) override {
    std::vector<int> stored;
    if constexpr (Functions::learns) {
      const Hush hush(*this);
      int length = 0;
      int* result =
          items.empty() ? nullptr : Functions::preprocess(matrix(), items.data(), static_cast<int>(items.size()), &length);
      if (result != nullptr) stored.assign(result, result + length);
      s_Free(result);
    }
    return stored;
  }

  std::vector<Successor> successorsOf([[maybe_unused]] const std::vector<int>& storedItems) override {
    std::vector<Successor> successors;
    if constexpr (Functions::learns) {
      const int handle = storedItems.empty()
                             ? Functions::currentID(matrix())
                             : Functions::handleOf(matrix(), storedItems.data(), static_cast<int>(storedItems.size()));
      int count = 0;
      int* handles = handle < 0 ? nullptr : Functions::successorsOf(matrix(), handle, &count);
      for (int at = 0; handles != nullptr && at < count; ++at) {
        const int* item = Functions::itemAt(matrix(), handles[at]);
        auto* element = Functions::elementAt(matrix(), handles[at]);
        if (item != nullptr) successors.push_back({*item, Functions::countOf(element), Functions::startsOf(element)});
      }
      s_Free(handles);
    }
    return successors;
  }

  double drawFraction() override {
    if constexpr (Functions::learns) {
      return static_cast<double>(Functions::drawRandomValue(matrix(), Functions::currentID(matrix()))) / 2147483648.0;
    }
    return 0;
  }

 protected:
  // Of a sound matrix the library may have much to remark, such as each symbol that no level of words goes with: told is what it
  // says of one with faults.
  TestResult selfTest(int id, int which) override {
    select(id);
    TestResult result{};
    Overheard talk(loudness_.level == 0);
    result.isSound =
        Functions::selfTest(matrix(), which, &result.writtenElements, &result.endElements, 0) == 1;  // 0: nothing is cut off
    talk.end();
    if (!result.isSound) talk.tell();
    return result;
  }

 private:
  // Words of earlier texts are found again only so: learning a text moves their letters.
  void refreshWords() {
    if constexpr (Functions::hasSymbols) {
      if (hasWords()) zq_refreshSymbolLinks(matrix());
    }
  }

  void setMusicProfile(int preprocessing) {
    if (preprocessing == ZQPreProcessingTypeMidiNoteAndModQuanta) {
      Functions::setPitchAndBarTimeProfile(matrix());
    } else if (preprocessing == ZQPreProcessingTypeMidiTriple_NDMT) {
      Functions::setTripleProfile(matrix());
    } else if (preprocessing == ZQPreProcessingTypeMidiGMQuadruple_NDMTS) {
      Functions::setQuadrupleProfile(matrix());
    } else {
      Functions::setPitchAndTimeProfile(matrix());
    }
  }

  Handle* matrix() const { return handle_.get(); }
  bool holdsText(int id) { return record(id).matrixType == ZQMatrixTypeANSIText; }

  // With the level of words 0 also says that the text has no word that is a symbol, which is no fault of the matrix.
  bool isExcused(int result, int id, const std::string& path) {
    if (!hasWords() || result != 0) return false;
    if (id < 0) return isBlank(readFile(path));
    const ZQMatrixProperties& letters = record(id);
    return letters.numberOfSymbols == 0 || letters.currentMatrixIDLevelUp >= 0;
  }

  std::unique_ptr<Handle, decltype(Functions::destroy)> handle_;
  Loudness loudness_{0};
  bool keepsHistory_ = false;
};

template <class Functions>
std::unique_ptr<Matrix> createOf(Loudness loudness) {
  auto* handle = Functions::create(loudness.printsMessages() ? 1 : 0, loudness.level, "");
  if (handle == nullptr) throw Failure{ExitCode::limit, "no memory for a matrix"};
  return std::make_unique<MatrixOf<Functions>>(handle, loudness);
}

// Read in silence: while it reads, the library would send its messages to where the file says, a file of its own if need be.
template <class Functions>
std::unique_ptr<Matrix> loadOf(const std::string& path, Loudness loudness) {
  auto* handle = Functions::load(path.c_str(), -1);
  if (handle == nullptr) refuse("cannot read " + path + ": it is damaged, or needs more memory than there is");
  return std::make_unique<MatrixOf<Functions>>(handle, loudness);
}

}  // namespace

std::unique_ptr<Matrix> Matrix::create(Tier tier, Loudness loudness) {
  if (tier == Tier::full) return createOf<FullTier>(loudness);
  if (tier == Tier::medium) return createOf<MediumTier>(loudness);
  return createOf<BaseTier>(loudness);
}

std::unique_ptr<Matrix> Matrix::load(const std::string& path, Loudness loudness) {
  requireReadable(path);
  switch (s_getMatrixInfoTypeFromFile(path.c_str())) {
    case ZQMatrixInfoTypeFull:
      return loadOf<FullTier>(path, loudness);
    case ZQMatrixInfoTypeMedium:
      return loadOf<MediumTier>(path, loudness);
    case ZQMatrixInfoTypeBase:
      return loadOf<BaseTier>(path, loudness);
    default:
      refuse("cannot read " + path + ": it holds no matrix (`zmatrix learn` makes such a file)");
  }
}

bool Matrix::isSound() {
  bool sound = true;
  for (int id = 0; id < numberOfIDs(); ++id) {
    if (isOccupied(id) && !scan(id).isSound) sound = false;
  }
  return sound;
}

std::vector<int> itemsOf(const std::string& text) {
  std::vector<int> items;
  for (const char byte : text) items.push_back(static_cast<unsigned char>(byte));
  return items;
}

long long Matrix::itemsLearned() const {
  long long sum = 0;
  for (int id = 0; id < numberOfIDs(); ++id) sum += itemsLearned(id);
  return sum;
}

const char* nameOf(Tier tier) {
  static const char* const names[] = {"base", "medium", "full"};
  return names[static_cast<int>(tier)];
}

const char* languageOf(const ZQMatrixProperties& record) {
  static const char* const names[] = {"unknown language", "German", "English", "French", "Spanish"};
  const int language = record.language;
  return names[language >= ZQLanguageGerman && language <= ZQLanguageSpanish ? language : 0];
}
