// Marks the parts of the program whose instructions callgrind counts.
#pragma once

#include <functional>
#include <string>

// Runs `work` between two callgrind dumps, the second of which carries `name`. Prints the name, the
// number of units (such as glyphs or files) that `work` returns, and its heap allocations.
void countInstructions(const std::string& name, const std::function<uint64_t()>& work);

void countScreen();
void countEngine();

// Returns the number of draw calls made to the null GL.
uint64_t nullGlDrawCalls();
