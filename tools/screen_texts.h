// The texts that the updater's screen looks up in the string tables, and the space that it has for
// them.
#pragma once

#include <map>
#include <string>

#include "platform/win32.h"

struct TextUse {
    int rightEdge = 0;  // right limit of the text in pixels, the smallest of all states
    WideString suffix;  // the longest text that the screen appends to it
};

using ScreenTexts = std::map<std::string, TextUse>;

// Returns every text of the screen's layout, by key.
ScreenTexts screenTexts();
