// The codings of integers by their names in the command.
#pragma once

#include <string>
#include <vector>

#include "Matrix.h"

struct NumberCoding {
  const char* name;
  int preprocessing;
  int ocronType;        ///< the default of --ocron-type; 0 for codings without ocrons
  const char* learned;  ///< what is learned, for a message
};

/// Null if no coding has this name.
const NumberCoding* findNumberCoding(const std::string& name);
/// Null if no coding has this preprocessing.
const NumberCoding* findNumberCoding(int preprocessing);
std::vector<std::string> namesOfNumberCodings();

/// True if each number is learned as the symbols of its ocron.
bool isOcronCoding(int preprocessing);
/// True if each number is learned as its gocron.
bool isGocronCoding(int preprocessing);
/// True if the coding uses the library's number functions (Arithmetic.h).
bool isArithmetic(int preprocessing);
