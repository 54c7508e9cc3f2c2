// A bar on the terminal while a key is tried out; nothing when standard error is none.
#pragma once

#include "tools/updatekey/prediction.h"

// Draws the bar on each call, and takes it away at 100 per cent.
Progress makeProgressBar();
