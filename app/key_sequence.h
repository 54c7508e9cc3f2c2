// The hidden sequence of function keys that quits the updater.
#pragma once

#include "platform/win32.h"

// Records a key press. Returns true when the presses of F1 to F6 since the last press of any other
// key are exactly the sequence. After a wrong press of F1 to F6, another key must be pressed before
// the sequence can be entered again.
bool completesQuitSequence(WPARAM virtualKey);
