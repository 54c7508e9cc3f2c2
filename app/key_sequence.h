// The hidden sequence of function keys that quits the updater.
#pragma once

#include "platform/win32.h"

// Takes in a key that was pressed. Returns true if the function keys F1 to F6 pressed since the
// last key of another kind are exactly the sequence: an extra one spoils it until another kind of
// key.
bool completesQuitSequence(WPARAM virtualKey);
