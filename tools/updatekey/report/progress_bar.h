// Progress bars on the terminal. Nothing is drawn when standard error is not a terminal.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "tools/updatekey/check/prediction.h"

// Redraws the bar at each call, and removes it at 100 percent.
Progress makeProgressBar();

// One bar per task, one below the other. Threads may report at the same time.
std::function<void(std::size_t place, int percent)> makeStickBars(
    const std::vector<std::string>& names);

// Shows the seconds elapsed and the limit.
std::function<void(double seconds)> makeClock(int limit);
