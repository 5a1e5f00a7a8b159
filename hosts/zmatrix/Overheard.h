// Collects the library's errors and warnings. With --verbose the first few messages of each kind are printed, and how many more
// there were, since a message can repeat thousands of times. --debug makes the library print its messages itself.
#pragma once

#include <string>
#include <vector>

class Overheard {
 public:
  /// Collects messages until end(), if `wanted`. Only one Overheard at a time may collect.
  explicit Overheard(bool wanted);
  ~Overheard() { end(); }
  Overheard(const Overheard&) = delete;
  Overheard& operator=(const Overheard&) = delete;

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
  void tell() const;

 private:
  static void receive(int level, const char* text, void* overheard);
  void keep(const std::string& message);

  bool listens_;
  std::vector<Kind> kinds_;
};
