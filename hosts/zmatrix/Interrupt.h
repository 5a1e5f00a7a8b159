// Removes an unfinished file when SIGINT, SIGTERM or SIGHUP ends the command.
#pragma once

#include <string>

/// Sets the file to remove. There is one at a time: a new path replaces the previous one, an empty path means none.
void removeAtInterrupt(const std::string& path);
