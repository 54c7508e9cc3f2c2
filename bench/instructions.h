// Marks stretches of the program whose instructions callgrind counts.
#pragma once

#include <functional>
#include <string>

// Runs `work` between two dumps of callgrind, the second of which carries `name`. Prints the name,
// the units that the work is made of (such as glyphs, or files) as it returns them, and the heap
// allocations that it made.
void countInstructions(const std::string& name, const std::function<uint64_t()>& work);

void countScreen();
void countEngine();

// The draw calls that the GL that does nothing has seen.
uint64_t nullGlDrawCalls();
