// What the command says beside its results: lines on standard error, each behind the command's name. How much is said is set once
// for the process, as standard error is one for the process.
#pragma once

#include <string>

enum class Talkativeness { quiet, usual, verbose };

void setTalkativeness(Talkativeness talkativeness);
bool isVerbose();

/// "zmatrix: TEXT", whatever was set: why a run failed.
void say(const std::string& text);
/// A line that --quiet silences.
void note(const std::string& text);
/// The same behind "warning: ".
void warn(const std::string& text);
