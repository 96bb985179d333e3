// Messages of the program on standard error. The word that says how serious a message is has a colour on terminals.
#pragma once

#include <string>

// Prints "jobx: <line>", with the program's name in the colour of errors.
void PrintError(const std::string& line);

// Prints "jobx: warning: <line>".
void PrintWarning(const std::string& line);

// Prints "jobx: note: <line>".
void PrintNote(const std::string& line);

// Prints "jobx: <line>".
void PrintMessage(const std::string& line);
