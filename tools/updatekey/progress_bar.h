// A bar on the terminal while a key is tried out; nothing when standard error is none.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "tools/updatekey/prediction.h"

// Draws the bar on each call, and takes it away at 100 per cent.
Progress makeProgressBar();

// A bar for each of several pieces of work, one below the other, that threads may report on at
// once; nothing when standard error is no terminal.
std::function<void(std::size_t place, int percent)> makeStickBars(
    const std::vector<std::string>& names);

// Shows the seconds that have passed, and the limit; nothing when standard error is no terminal.
std::function<void(double seconds)> makeClock(int limit);
