// Control of the instrument's other processes.
#pragma once

#include <string>

// Ends every process whose executable file is named exactly `name`. Does not wait for them to be
// gone; one that cannot be ended is left running, and nothing is reported.
void terminateProcessByName(const std::string& name);
