// Control of the instrument's other processes.
#pragma once

#include <string>

// Ends every process whose executable file is named exactly `name`, without waiting for it to exit.
// A process that cannot be ended is left running, and nothing is reported.
void terminateProcessByName(const std::string& name);
