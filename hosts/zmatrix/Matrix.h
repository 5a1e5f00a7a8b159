// A matrix as the verbs see it, whatever its tier. It holds texts of different languages in different sub-matrices, each under an
// ID of its own; what is asked of a sub-matrix names its ID or goes to the one that was selected.
#pragma once

#include <zmatrix/zmatrix.h>
#include <zmatrix/zq_types.h>

#include <array>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Kind.h"
#include "Scores.h"

/// Full: learns sequences and has symbols for words. Medium: learns sequences. Base: stores values.
enum class Tier { base = ZQMatrixInfoTypeBase, medium = ZQMatrixInfoTypeMedium, full = ZQMatrixInfoTypeFull };

const char* nameOf(Tier tier);

/// What a text is a sequence of.
enum class Level { letters, words };

/// How the next item is chosen, in the numbers of the flat interface.
enum class Method { best = 1, middle = 2, random = 3 };

/// Which tracks of a piece are learned: each by itself, all merged into one, or both; in the numbers of the flat interface.
enum class Tracks { single = 0, merged = 1, both = 2 };

/// How loud the library is: its level of messages, -1 for silence. Errors and warnings (level 0) are there for who listens; they
/// are printed, as all messages are then, only from level 1 on.
struct Loudness {
  int level;

  bool printsMessages() const { return level > 0; }
};

class Matrix {
 public:
  /// An empty one. Throws a Failure if there is no memory for it.
  static std::unique_ptr<Matrix> create(Tier tier, Loudness loudness);
  /// The one in a file, of the tier that the file names. Throws a Failure if it can't be read.
  static std::unique_ptr<Matrix> load(const std::string& path, Loudness loudness);
  virtual ~Matrix() = default;

  /// What stands before the records in a file.
  struct Header {
    std::string description;
    int formatVersion;
    int updates;
    int idsInUse;
  };
  virtual Tier tier() const = 0;
  virtual Header header() const = 0;
  virtual int numberOfIDs() const = 0;
  virtual int blockSize() const = 0;
  virtual int maximalStack() const = 0;
  virtual void select(int id) = 0;
  virtual void setLoudness(Loudness loudness) = 0;
  virtual Loudness loudness() const = 0;

  /// All counters and settings of a sub-matrix; what the tier doesn't have is 0. Lives until the next call for this ID.
  virtual const ZQMatrixProperties& record(int id) = 0;
  bool isOccupied(int id) { return record(id).numberOfMatrixElements > 0; }
  /// The records of past saves that came with the file, the oldest first. They live as long as the matrix.
  virtual std::vector<const ZQMatrixProperties*> history() = 0;

  struct TestResult {
    bool isSound;
    int writtenElements;  ///< as the test counted them
    int endElements;
  };
  /// Scans the block, follows each element of the sub-matrix to its root and counts anew.
  TestResult scan(int id) { return selfTest(id, 1); }
  /// Walks the sub-matrix from its root and counts anew.
  TestResult walk(int id) { return selfTest(id, 2); }
  /// Scans every sub-matrix that holds anything, which takes longer than learning it did.
  bool isSound();
  /// What the load of its file found. A load drops what it can't trust, so that damage to a file shows here, at a small part of a
  /// scan's cost.
  virtual zq_loadReport loadReport() = 0;

  /// Puts the matrix into a file in place of what was there. False, with errno set as far as known, if it can't.
  virtual bool save(const std::string& path) = 0;

  // Learning. The base tier throws a Failure, as the medium tier does for words.

  // The next five are to be called for an empty matrix.

  /// Room for that many sub-matrices, at least.
  virtual void reserveIDs(int count) = 0;
  virtual void prepareForTexts(int phraseLimit) = 0;
  /// Besides the letters it will learn sequences of up to `wordLimit` words.
  virtual void prepareForWords(int wordLimit) = 0;
  struct MusicSettings {
    int preprocessing;
    int grid;
    int durationGrid;
    Tracks tracks;
    std::array<char, 16> skippedChannels;  ///< 1 for one that is left out
  };
  /// May be called again between files. The phrase limit stays.
  virtual void prepareForMusic(const MusicSettings& settings) = 0;
  virtual MusicSettings musicSettings() const = 0;
  struct NumberSettings {
    int preprocessing;
    int ocronType;
    int maxIndex;
  };
  virtual void prepareForNumbers(const NumberSettings& settings, int phraseLimit) = 0;
  virtual NumberSettings numberSettings() = 0;
  virtual void setPhraseLimit(int phraseLimit) = 0;
  virtual int phraseLimit() const = 0;
  virtual void setWordLimit(int wordLimit) = 0;
  /// From now on a save adds what was learned to the history.
  virtual void keepHistory() = 0;
  virtual bool hasWords() const = 0;
  struct Learned {
    int id;            ///< the ID that learned the file, -1 if it held nothing
    int wordsLeftOut;  ///< as they were too long
  };
  /// Learns a text, as words alone if the matrix has them. `name` is its file's. Throws a Failure if the matrix can't take all.
  virtual Learned learnText(const std::vector<int>& items, const std::string& name) = 0;
  /// Sets the links of all words anew. Learning keeps them, but other hosts may have left a model with links that went astray.
  virtual void refreshWords() = 0;
  /// MIDI or kern: each track goes to a sub-matrix of its meter, kind and sound. Returns the notes taken. Throws a Failure if no
  /// sub-matrix is left for one.
  virtual int learnMusic(const std::string& path, Kind kind) = 0;
  /// The same of a score, each run of it. Throws a Failure if the matrix can't take all of it.
  virtual FeedReport learnScore(const zq_Score& score, const std::string& path, bool leavesOutPercussion) = 0;
  struct Readings {
    bool hasClassic;
    bool hasExact;
  };
  /// How the music that it holds was read.
  virtual Readings readings() = 0;
  /// The tempo of the music that the sub-matrix has learned, in quarter notes a minute; 0 where none is known.
  virtual double learnedTempo(int id) = 0;
  /// A series of integers into the selected sub-matrix, under the name of the file it is from. Throws a Failure if the matrix
  /// can't take all of it.
  virtual void learnSeries(const std::vector<int>& series, const std::string& path) = 0;
  /// Items that the sub-matrix has learned: about one a character of text. May be asked while a text is being learned.
  virtual long long itemsLearned(int id) const = 0;
  long long itemsLearned() const;
  /// The series of items that the sub-matrix learned last, flat, as long as it keeps a history.
  virtual std::vector<int> lastSeriesLearned(int id) = 0;
  /// Words of a text that the sub-matrix has no symbol for.
  virtual int countUnknownWords(int id, const std::vector<int>& items) = 0;

  // Continuing, with the sub-matrix that was selected.

  virtual void setMethod(Method method) = 0;
  virtual void seed(long long value) = 0;
  /// Makes these items the context of what comes next, flat, item after item; of a text on the level of words too if the matrix
  /// has it.
  virtual void setContext(const std::vector<int>& items) = 0;
  /// The context as it was set, or came with the file.
  virtual std::vector<int> context() = 0;
  /// How many of the last items of the context the sub-matrix knows together.
  virtual int lengthOfContext() const = 0;
  /// Goes on without the level of words.
  virtual void forgetWords() = 0;
  /// The next item of a single coordinate, none at the end of a sequence.
  virtual std::optional<int> nextItem() = 0;
  /// What a symbol of the sub-matrix stands for.
  virtual std::vector<int> wordOf(int symbol) = 0;

  /// Writes the context and up to `count` notes that come next. True if the file could be written.
  virtual bool writeMusic(int count, const std::string& path) = 0;
  /// The same as a score, in a tempo of quarter notes a minute, or in the one that was learned. Throws a Failure if there is
  /// none.
  virtual Score compose(int count, std::optional<double> tempo) = 0;

  // The same step by step, for sequences that the caller codes and decodes.

  /// The items as the sub-matrix stores them.
  virtual std::vector<int> preprocess(const std::vector<int>& items) = 0;
  struct Successor {
    int item;
    int count;   ///< how often it was learned there
    int starts;  ///< how often it began a sequence; an item behind others never does
  };
  /// What followed these stored items; nothing for a sequence that was not learned.
  virtual std::vector<Successor> successorsOf(const std::vector<int>& storedItems) = 0;
  /// The letters that follow a beginning of sentences, with the number of sentences that go on so. None if the counts can't tell.
  virtual std::optional<std::vector<Successor>> sentenceStarts(const std::vector<int>& beginning) = 0;
  /// 0 to 1, from the generator that seed() sets.
  virtual double drawFraction() = 0;

 protected:
  virtual TestResult selfTest(int id, int which) = 0;
};

/// Keeps the library from warning while something is tried that may well fail; who asked for notes gets everything.
class Hush {
 public:
  explicit Hush(Matrix& matrix) : matrix_(matrix), before_(matrix.loudness()) {
    if (before_.level == 0) matrix_.setLoudness({-1});
  }
  ~Hush() { matrix_.setLoudness(before_); }
  Hush(const Hush&) = delete;
  Hush& operator=(const Hush&) = delete;

 private:
  Matrix& matrix_;
  Loudness before_;
};

const char* languageOf(const ZQMatrixProperties& record);
