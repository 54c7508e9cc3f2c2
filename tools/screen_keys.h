// The texts that the updater's screen looks up in the string tables, and the room that it has for
// them.
#pragma once

#include <map>
#include <string>

#include "platform/win32.h"

struct TextUse {
    int rightEdge = 0;  // the x in pixels that the text must not go beyond, in any state
    WideString suffix;  // the longest that the screen puts directly behind it
};

using ScreenKeys = std::map<std::string, TextUse>;

// By key, every text of the screen's layout.
ScreenKeys screenKeys();
