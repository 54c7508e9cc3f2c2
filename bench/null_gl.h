// A GL that does nothing but count.
#pragma once

#include <cstdint>

// Returns the number of draw calls so far.
uint64_t nullGlDrawCalls();
