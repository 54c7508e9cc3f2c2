// The terminal that the program runs on.
#pragma once

#include <string>
#include <vector>

bool outputIsTerminal();
bool errorsAreTerminal();

// Returns the command line in UTF-8, without the name of the program. Call it first in main: it
// also prepares the standard streams for UTF-8.
std::vector<std::string> commandLine(int argc, char** argv);
