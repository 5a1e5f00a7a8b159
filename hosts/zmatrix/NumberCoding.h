// The ways in which integers are learned, by the names that the command has for them.
#pragma once

#include <string>
#include <vector>

#include "Matrix.h"

struct NumberCoding {
  const char* name;
  int preprocessing;
  int ocronType;  ///< of the ocrons or gocrons, unless another is asked for; 0 for codings without
  const char* learned;
};

/// Null for a name that is no coding.
const NumberCoding* findNumberCoding(const std::string& name);
/// Null for a preprocessing that the command has no name for.
const NumberCoding* findNumberCoding(int preprocessing);
std::vector<std::string> namesOfNumberCodings();

/// Each number is learned as a run of symbols.
bool isOcronCoding(int preprocessing);
/// Each number is learned as the number that its ocron's symbols spell.
bool isGocronCoding(int preprocessing);
/// The numbers are coded by the prime tables and number functions of the process.
bool isArithmetic(int preprocessing);
