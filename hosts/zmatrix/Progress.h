// One line on a terminal that shows how far a long run is. It is drawn only where it can't get between results: where standard
// error is a terminal and the results go to a file. A pipe doesn't count as one, since it may lead to a pager on that terminal.
#pragma once

#include <string>

class Progress {
 public:
  /// `results` is the path that results go to, as an Output takes it. NO_COLOR and a terminal that can't move back in a line
  /// (TERM=dumb) draw nothing either.
  Progress(bool wanted, const std::string& results);
  ~Progress();
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;

  bool isShown() const { return shown_; }
  /// Draws the line anew if its picture changes. `fraction` runs from 0 to 1.
  void show(const std::string& what, double fraction);
  /// Takes the line away, so that other lines can be printed.
  void clear();
  /// Takes away the line of whichever object has drawn one.
  static void clearAll();

 private:
  bool shown_;
  std::string drawn_;
  std::size_t drawnWidth_ = 0;
};
