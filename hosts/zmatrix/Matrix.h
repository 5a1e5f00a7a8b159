// A matrix as the verbs see it, whatever its tier. It holds texts of different languages in different sub-matrices, each under an
// ID of its own; what is asked of a sub-matrix names its ID or goes to the one that was selected.
#pragma once

#include <zmatrix/zmatrix.h>

#include <memory>
#include <string>

/// Full: learns sequences and has symbols for words. Medium: learns sequences.
enum class Tier { medium = ZQMatrixInfoTypeMedium, full = ZQMatrixInfoTypeFull };

const char* nameOf(Tier tier);

/// How the next item is chosen, in the numbers of the flat interface.
enum class Method { best = 1, middle = 2, random = 3 };

/// How loud the library is: its level of messages, -1 for silence.
struct Loudness {
  int level;
};

class Matrix {
 public:
  /// An empty one that takes texts. Throws a Failure if there is no memory for it.
  static std::unique_ptr<Matrix> create(Tier tier, Loudness loudness, int phraseLimit);
  virtual ~Matrix() = default;

  virtual Tier tier() const = 0;
  virtual int numberOfIDs() const = 0;
  virtual int blockSize() const = 0;
  virtual int maximalStack() const = 0;
  virtual void select(int id) = 0;

  /// Throws a Failure if the matrix can't take all of the file.
  virtual void learn(const std::string& path) = 0;
  /// Items that the sub-matrix has learned: about one a byte of text. May be asked while a text is being learned.
  virtual long long itemsLearned(int id) const = 0;
  long long itemsLearned() const;

  /// All counters and settings of a sub-matrix; what the tier doesn't have is 0. Lives until the next call for this ID.
  virtual const ZQMatrixProperties& record(int id) = 0;

  struct TestResult {
    bool isSound;
    int writtenElements;  ///< as the test counted them
    int endElements;
  };
  /// Scans the block, follows each element of the sub-matrix to its root and counts anew.
  TestResult scan(int id) { return selfTest(id, 1); }
  /// Walks the sub-matrix from its root and counts anew.
  TestResult walk(int id) { return selfTest(id, 2); }

  // Continuing, with the sub-matrix that was selected.
  virtual void setMethod(Method method) = 0;
  virtual void seed(long long value) = 0;
  /// Makes the text the context of what comes next; returns how many of its last items the sub-matrix knows together.
  virtual int setContext(const std::string& text) = 0;
  /// The next byte; at the end of a sequence a line feed, as the library's own writer has it.
  virtual char nextByte() = 0;

 protected:
  virtual TestResult selfTest(int id, int which) = 0;
};

const char* languageOf(const ZQMatrixProperties& record);
