// How the command reports errors: a verb throws a Failure, main prints its text and returns its code.
#pragma once

#include <string>

enum class ExitCode {
  done = 0,
  usage = 2,     ///< the command line is wrong
  badInput = 3,  ///< an input can't be read or holds nothing to learn
  limit = 4,     ///< a limit was reached: memory, the matrix, the disk
  damaged = 5,   ///< a model is damaged, or a self-test found a fault
};

struct Failure {
  ExitCode code;
  std::string text;
};
