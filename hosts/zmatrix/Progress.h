// One line on a terminal that shows how far a long run is; nothing at all where standard error is no terminal.
#pragma once

#include <string>

class Progress {
 public:
  explicit Progress(bool wanted);
  ~Progress();
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;

  bool isShown() const { return shown_; }
  /// Draws the line anew if its picture changes. `fraction` runs from 0 to 1.
  void show(const std::string& what, double fraction);
  /// Takes the line away, so that other lines can be printed.
  void clear();

 private:
  bool shown_;
  std::string drawn_;
};
