// The interface of a matrix of any tier. A matrix has several sub-matrices, for instance one per language; a function takes the
// ID of a sub-matrix or works on the one that select() chose.
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

/// The items of a text.
enum class Level { letters, words };

/// How the next item is chosen. The numbers are those of the C interface.
enum class Method { best = 1, middle = 2, random = 3 };

/// Which tracks of a piece are learned: each by itself, all merged into one, or both. The numbers are those of the C interface.
enum class Tracks { single = 0, merged = 1, both = 2 };

/// The library's message level, -1 for none. At level 0 errors and warnings reach an LibraryMessages, but the library prints
/// nothing; from level 1 on it prints all messages up to the level.
struct MessageLevel {
  int level;

  bool printsMessages() const { return level > 0; }
};

class Matrix {
 public:
  /// An empty matrix. Throws a Failure if memory runs out.
  static std::unique_ptr<Matrix> create(Tier tier, MessageLevel messageLevel);
  /// Loads a matrix file; the file determines the tier. Throws a Failure if it can't be read.
  static std::unique_ptr<Matrix> load(const std::string& path, MessageLevel messageLevel);
  virtual ~Matrix() = default;

  /// Fields of the file header.
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
  virtual void setMessageLevel(MessageLevel messageLevel) = 0;
  virtual MessageLevel messageLevel() const = 0;

  /// All counters and settings of a sub-matrix; fields that the tier lacks are 0. Valid until the next call for this ID.
  virtual const ZQMatrixProperties& record(int id) = 0;
  bool isOccupied(int id) { return record(id).numberOfMatrixElements > 0; }
  /// The records of past saves in the file, the oldest first. Valid as long as the matrix.
  virtual std::vector<const ZQMatrixProperties*> history() = 0;

  struct TestResult {
    bool isSound;
    int writtenElements;  ///< as the test counted them
    int endElements;
  };
  /// Self-test: scans the block, follows each written element of the sub-matrix to its root and recounts.
  TestResult scan(int id) { return selfTest(id, 1); }
  /// Self-test: walks the sub-matrix from its root and recounts.
  TestResult walk(int id) { return selfTest(id, 2); }
  /// Scans every sub-matrix that isn't empty. Can take longer than learning did.
  bool isSound();
  /// What the load of the file dropped or rebuilt. This shows damage of the file without a scan.
  virtual zq_loadReport loadReport() = 0;

  /// Saves the matrix and replaces the file. False if that fails, with errno set if the cause is known, else 0.
  virtual bool save(const std::string& path) = 0;

  // Learning. The base tier throws a Failure, and so does the medium tier for words. reserveIDs and the prepareFor... functions
  // are for an empty matrix, except that prepareForMusic may be called again between files.

  /// Makes room for at least `count` sub-matrices.
  virtual void reserveIDs(int count) = 0;
  virtual void prepareForTexts(int phraseLimit) = 0;
  /// The matrix will learn runs of up to `wordLimit` words above the letters.
  virtual void prepareForWords(int wordLimit) = 0;
  struct MusicSettings {
    int preprocessing;
    int grid;
    int durationGrid;
    Tracks tracks;
    std::array<char, 16> skippedChannels;  ///< 1 for one that is left out
  };
  /// Leaves the phrase limit unchanged.
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
  /// From now on a save adds records to the history.
  virtual void keepHistory() = 0;
  virtual bool hasWords() const = 0;
  struct Learned {
    int id;            ///< the ID of the sub-matrix that learned the text, -1 if the text held nothing
    int wordsLeftOut;  ///< because they were too long
  };
  /// Learns a text, as words if the matrix has words. `name` is the file's name. Throws a Failure if the matrix is too small.
  virtual Learned learnText(const std::vector<int>& items, const std::string& name) = 0;
  /// Sets the links of all words again. Learning keeps them right, but a model from another host may contain stale ones.
  virtual void refreshWords() = 0;
  /// Learns a MIDI or kern file by the classic reading, each track in the sub-matrix of its meter, kind and sound. Returns the
  /// number of notes learned. Throws a Failure if no sub-matrix is free for a track.
  virtual int learnMusic(const std::string& path, Kind kind) = 0;
  /// Learns the runs of a score, each in the sub-matrix of its meter, kind and sound. Throws a Failure if the matrix is too
  /// small.
  virtual FeedReport learnScore(const zq_Score& score, const std::string& path, bool leavesOutPercussion) = 0;
  struct Readings {
    bool hasClassic;
    bool hasExact;
  };
  /// By which readings the music of the matrix was learned.
  virtual Readings readings() = 0;
  /// The median tempo that the sub-matrix has learned, in quarter notes per minute; 0 if none is known.
  virtual double learnedTempo(int id) = 0;
  /// Learns a series of integers into the selected sub-matrix; `path` is its file's name. Throws a Failure if the matrix is too
  /// small.
  virtual void learnSeries(const std::vector<int>& series, const std::string& path) = 0;
  /// Items that the sub-matrix has learned; about one per character of text. May be called from the progress callback.
  virtual long long itemsLearned(int id) const = 0;
  long long itemsLearned() const;
  /// The sequence that the sub-matrix learned last, item after item; empty unless the matrix keeps it for the history.
  virtual std::vector<int> lastSeriesLearned(int id) = 0;
  /// The number of words in a text that have no symbol in the sub-matrix.
  virtual int countUnknownWords(int id, const std::vector<int>& items) = 0;

  // Generating from the selected sub-matrix.

  virtual void setMethod(Method method) = 0;
  virtual void seed(long long value) = 0;
  /// Sets the context (the kernel), coordinate after coordinate; if the matrix has words, on the level of words too.
  virtual void setContext(const std::vector<int>& items) = 0;
  /// The context that was set or loaded.
  virtual std::vector<int> context() = 0;
  /// Length in items of the longest ending of the context that the sub-matrix has learned.
  virtual int lengthOfContext() const = 0;
  /// Switches the level of words off.
  virtual void switchWordsOff() = 0;
  /// The next item, for items of one coordinate; null at the end of a sequence.
  virtual std::optional<int> nextItem() = 0;
  /// The letters of a symbol of the sub-matrix.
  virtual std::vector<int> wordOf(int symbol) = 0;

  /// Writes the context and up to `count` generated notes as a MIDI file. False if the file can't be written.
  virtual bool writeMusic(int count, const std::string& path) = 0;
  /// The same as a score. The tempo is in quarter notes per minute; null means the learned one. Throws a Failure if memory runs
  /// out.
  virtual Score compose(int count, std::optional<double> tempo) = 0;

  // Generating step by step, for callers that encode, choose and decode items themselves.

  /// The items as the sub-matrix stores them.
  virtual std::vector<int> preprocess(const std::vector<int>& items) = 0;
  struct Successor {
    int item;
    int count;   ///< how often it followed the context
    int starts;  ///< how often the context with this item began a sequence
  };
  /// The items that followed these stored items; empty if these were not learned.
  virtual std::vector<Successor> successorsOf(const std::vector<int>& storedItems) = 0;
  /// The letters that follow a beginning of sentences, with the number of sentences that go on so. Null if the counts can't tell.
  virtual std::optional<std::vector<Successor>> sentenceStarts(const std::vector<int>& beginning) = 0;
  /// A random number from 0 to below 1, from the generator that seed() sets.
  virtual double drawFraction() = 0;

 protected:
  virtual TestResult selfTest(int id, int which) = 0;
};

/// Sets the message level to -1 for its lifetime, around calls whose warnings are expected. A level set by --debug stays.
class MutedMessages {
 public:
  explicit MutedMessages(Matrix& matrix) : matrix_(matrix), before_(matrix.messageLevel()) {
    if (before_.level == 0) matrix_.setMessageLevel({-1});
  }
  ~MutedMessages() { matrix_.setMessageLevel(before_); }
  MutedMessages(const MutedMessages&) = delete;
  MutedMessages& operator=(const MutedMessages&) = delete;

 private:
  Matrix& matrix_;
  MessageLevel before_;
};

const char* languageOf(const ZQMatrixProperties& record);
