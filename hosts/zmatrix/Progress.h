// A progress line on stderr. It is drawn only if stderr is a terminal and the results go to a file, so that it can't mix with
// results. A pipe doesn't count as a file, since it may lead to a pager on the same terminal.
#pragma once

#include <string>

class Progress {
 public:
  /// `results` is the path of the Output. Nothing is drawn if NO_COLOR is set or TERM is dumb.
  Progress(bool wanted, const std::string& results);
  ~Progress();
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;

  bool isShown() const { return shown_; }
  /// Redraws the line if it changed. `fraction` is from 0 to 1.
  void show(const std::string& what, double fraction);
  /// Erases the line.
  void clear();
  /// Erases the line of whichever object drew it.
  static void clearAll();

 private:
  bool shown_;
  std::string drawn_;
  std::size_t drawnWidth_ = 0;
};
