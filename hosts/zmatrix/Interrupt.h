// What an interrupt (Ctrl-C, a hang-up, a polite kill) has to remove before it ends the command.
#pragma once

#include <string>

/// The one file that is being written now. A new name replaces the old one; an empty one means none.
void removeAtInterrupt(const std::string& path);
