// Collects the library's errors and warnings. With --verbose the first few messages of each kind are printed, and how many more
// there were, since a message can repeat thousands of times. --debug makes the library print its messages itself.
#pragma once

#include <string>
#include <vector>

class LibraryMessages {
 public:
  /// Collects messages until end(), if `wanted`. Only one LibraryMessages at a time may collect.
  explicit LibraryMessages(bool wanted);
  ~LibraryMessages() { end(); }
  LibraryMessages(const LibraryMessages&) = delete;
  LibraryMessages& operator=(const LibraryMessages&) = delete;

  void end();

  /// Messages that differ only in their numbers.
  struct Kind {
    std::string shape;  ///< the message with each number as a #
    std::vector<std::string> first;
    long long count;
  };
  /// The first 8 kinds in the order in which they appeared; messages of further kinds are counted with the last.
  std::vector<Kind>& kinds() { return kinds_; }
  /// Prints the messages on stderr if --verbose was given.
  void print() const;

 private:
  static void receive(int level, const char* text, void* libraryMessages);
  void keep(const std::string& message);

  bool listens_;
  std::vector<Kind> kinds_;
};
