// Continuing music: choosing the sub-matrix, and writing generated notes as a MIDI file.
#pragma once

#include <vector>

#include "Material.h"

class MusicContinuation : public Continuation {
 public:
  /// Chooses the sub-matrix of --matrix, else the one that knows the longest ending of the start; ties go to the one with the
  /// most notes. Throws a Failure if there is none, or if the start can't be read.
  MusicContinuation(Matrix& matrix, const GenerationOptions& options);

  std::string description() const override;
  void write(Output& output, Progress& progress) override;

 private:
  /// A track of the start: the record of the sub-matrix that would learn it, and its notes with four coordinates each.
  struct Voice {
    ZQMatrixProperties record;
    std::vector<std::vector<int>> notes;
  };
  std::vector<Voice> readStart() const;
  const Voice* voiceFor(int id) const;
  Reading readingOfStart() const;
  std::string classicMidi(int count);
  int goTo(int id);
  void moveToFirstBar(int id);
  void chooseFromAll();

  Matrix& matrix_;
  const GenerationOptions& options_;
  std::vector<Voice> voices_;
  int id_ = -1;
};
