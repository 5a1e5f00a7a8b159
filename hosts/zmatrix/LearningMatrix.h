// Learning: preparing a matrix for texts, words, music or numbers, and feeding it. The base tier throws a Failure.
#pragma once

#include <algorithm>
#include <cstdlib>
#include <string>
#include <vector>

#include "Failure.h"
#include "StoredMatrix.h"
#include "TextFile.h"

/// Two each for German, English, unknown language and one more: letters and words.
inline constexpr int numberOfIDsWithWords = 8;

/// Throws the Failure of a tier that can't learn this.
[[noreturn]] void refuseToLearn(const std::string& what = "a matrix of the base tier can't learn, it only stores values");

/// Throws a Failure if one of the library's messages says that no sub-matrix was free for a track.
void requireRoomForTracks(const std::vector<LibraryMessages::Kind>& kinds, int numberOfIDs, const std::string& path);

/// Throws a Failure if a score was not learned completely. A null report means that memory ran out.
void requireAllTaken(const zq_ScoreFeedReport* report, int numberOfIDs, const std::string& path);

template <class Functions>
class LearningMatrix : public StoredMatrix<Functions> {
 public:
  using Store = StoredMatrix<Functions>;
  using Store::isOccupied;
  using Store::itemsLearned;
  using Store::messageLevel;
  using Store::numberOfIDs;
  using Store::record;
  using Store::select;
  using Store::setMessageLevel;
  using Store::Store;
  using typename Store::Learned;
  using typename Store::MusicSettings;
  using typename Store::NumberSettings;
  using typename Store::Readings;

  void prepareForTexts(int phraseLimit) override {
    if constexpr (Functions::learns) {
      Functions::setTextProfile(matrix());
      setPhraseLimit(phraseLimit);
    } else {
      refuseToLearn();
    }
  }

  void prepareForMusic([[maybe_unused]] const MusicSettings& settings) override {
    if constexpr (Functions::learns) {
      const int limit = phraseLimit();
      setMusicProfile(settings.preprocessing);
      setPhraseLimit(limit);
      Functions::setGlobalGrid(matrix(), settings.grid);
      Functions::setGlobalDurationGrid(matrix(), settings.durationGrid);
      Functions::setTracks(matrix(), static_cast<int>(settings.tracks));
      Functions::setChannelFilter(matrix(), settings.skippedChannels.data());
      // a feed takes the grids for its first track from the current sub-matrix, which learnMusic makes ID 0
      select(0);
      Functions::setGrid(matrix(), settings.grid);
      Functions::setDurationGrid(matrix(), settings.durationGrid);
      if (keepsHistory_) keepHistory();
    } else {
      refuseToLearn();
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
      refuseToLearn();
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

  // The sub-matrix of a series is set up before it learns, so its own limit is set too. Other feeds set up their sub-matrices
  // from the global limit.
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
      refuseToLearn("only a matrix of the full tier learns words");
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

  Learned learnText([[maybe_unused]] const std::vector<int>& items, [[maybe_unused]] const std::string& name) override {
    if constexpr (Functions::learns) {
      const int length = static_cast<int>(items.size());
      LibraryMessages messages(messageLevel().level == 0);
      const int id = Functions::prepareForText(matrix(), items.data(), length, name.c_str());
      const long long before = id < 0 ? 0 : itemsLearned(id);
      int wordsLeftOut = 0;
      const int result = id < 0 ? -1 : learnItems(items, wordsLeftOut);
      messages.end();
      messages.print();
      if (result < 1 && !isExcused(result, id, items)) {
        throw Failure{ExitCode::limit,
                      "the matrix is too small for all of " + name + ": lower --max-phrase, or learn fewer texts"};
      }
      return {itemsLearned(id) == before && wordsLeftOut == 0 ? -1 : id, wordsLeftOut};
    } else {
      refuseToLearn();
    }
  }

  void refreshWords() override {
    if constexpr (Functions::hasSymbols) {
      if (hasWords()) zq_refreshSymbolLinks(matrix());
    }
  }

  int learnMusic([[maybe_unused]] const std::string& path, [[maybe_unused]] Kind kind) override {
    if constexpr (Functions::learns) {
      int notes = 0;
      const MessageLevel wanted = messageLevel();
      if (wanted.level < 0) setMessageLevel({0});
      LibraryMessages messages(messageLevel().level == 0);
      select(0);
      if (kind == Kind::kern) {
        Functions::learnKern(matrix(), path.c_str(), &notes);
      } else {
        Functions::learnMidi(matrix(), path.c_str(), &notes);
      }
      messages.end();
      setMessageLevel(wanted);
      requireRoomForTracks(messages.kinds(), numberOfIDs(), path);
      return notes;
    } else {
      refuseToLearn();
    }
  }

  FeedReport learnScore([[maybe_unused]] const zq_Score& score, [[maybe_unused]] const std::string& path,
                        [[maybe_unused]] bool leavesOutPercussion) override {
    if constexpr (Functions::learns) {
      const MutedMessages muted(*this);  // the report has the same information
      FeedReport report(Functions::learnScore(matrix(), &score, path.c_str(), leavesOutPercussion ? 1 : 0),
                        zq_deleteScoreFeedReport);
      requireAllTaken(report.get(), numberOfIDs(), path);
      return report;
    } else {
      refuseToLearn();
    }
  }

  Readings readings() override {
    int readings = 0;
    if constexpr (Functions::learns) readings = Functions::learnedReadings(matrix());
    return {(readings & 1) != 0, (readings & 2) != 0};
  }

  double learnedTempo([[maybe_unused]] int id) override {
    if constexpr (Functions::learns) {
      select(id);
      return Functions::learnedTempo(matrix());
    }
    return 0;
  }

  void learnSeries([[maybe_unused]] const std::vector<int>& series, [[maybe_unused]] const std::string& path) override {
    if constexpr (Functions::learns) {
      Functions::setNameOfFile(matrix(), path.c_str());
      Functions::addNameOfFile(matrix(), path.c_str());
      const MutedMessages muted(*this);  // the caller has already reported what can't be coded
      if (Functions::learnSeries(matrix(), series.data(), static_cast<int>(series.size())) >= 1) return;
      throw Failure{ExitCode::limit,
                    "the matrix is too small for all of " + path + ": lower --max-phrase, or learn fewer numbers"};
    } else {
      refuseToLearn();
    }
  }

 protected:
  using Store::matrix;

 private:
  // Learns into the selected sub-matrix. Its index limit of 500,000 is raised only for characters above U+7A120.
  int learnItems(const std::vector<int>& items, [[maybe_unused]] int& wordsLeftOut) {
    const int greatest = items.empty() ? 0 : *std::max_element(items.begin(), items.end());
    if (greatest > Functions::maximalIndex(matrix())) Functions::setMaximalIndex(matrix(), greatestCharacter);
    const int length = static_cast<int>(items.size());
    if constexpr (Functions::hasSymbols) {
      if (hasWords()) return zq_updateMatrixWithWordsOfLongANSISequence(matrix(), items.data(), length, &wordsLeftOut);
    }
    return Functions::learnCharacters(matrix(), items.data(), length);
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

  // For words the result 0 also means that no word of the text became a symbol, which is not an error.
  bool isExcused(int result, int id, const std::vector<int>& items) {
    if (!hasWords() || result != 0 || id < 0) return false;
    const ZQMatrixProperties& letters = record(id);
    return isBlank(items) || letters.numberOfSymbols == 0 || letters.currentMatrixIDLevelUp >= 0;
  }

  bool keepsHistory_ = false;
};
