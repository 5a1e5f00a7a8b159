// What the library says while it works. Its messages are for those who work on it, so they come out only where they are asked
// for: all of them as they come with --debug, and with --verbose those that an Overheard has kept, of each kind the first few and
// how many more there were, since a message may come up thousands of times.
#pragma once

#include <string>
#include <vector>

class Overheard {
 public:
  /// From now on to end() each message is kept here. Nothing is kept if not `wanted`. One at a time may listen.
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
  /// In the order in which they came up; those beyond a bound stand together in the last.
  std::vector<Kind>& kinds() { return kinds_; }
  /// Prints what was kept on standard error, if --verbose was given.
  void tell() const;

 private:
  static void hear(int level, const char* text, void* overheard);
  void keep(const std::string& message);

  bool listens_;
  std::vector<Kind> kinds_;
};
