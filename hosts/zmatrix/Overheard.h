// What the library says while it works, kept back so that a message that comes up thousands of times doesn't flood the user: told
// are the first few messages of each kind and how many more there were.
#pragma once

#include <string>
#include <thread>
#include <vector>

class Overheard {
 public:
  /// From now on to end() nothing that goes to stdout comes out. If not `wanted` everything comes out as ever, and nothing is
  /// kept.
  explicit Overheard(bool wanted);
  ~Overheard() { end(); }
  Overheard(const Overheard&) = delete;
  Overheard& operator=(const Overheard&) = delete;

  void end();

  /// Messages that differ in their numbers alone.
  struct Kind {
    std::string shape;  ///< the message with each number as a #
    std::vector<std::string> first;
    long long count;
  };
  /// In the order in which they came up; those beyond a bound stand together in the last. To be asked after end().
  std::vector<Kind>& kinds() { return kinds_; }
  /// Prints on standard error what was kept. To be called after end().
  void tell() const;

 private:
  void listen();
  void keep(const std::string& message);

  int source_ = -1;  ///< the end of the pipe that is read here
  int before_ = -1;  ///< what stdout was
  std::thread listener_;
  std::vector<Kind> kinds_;
};
