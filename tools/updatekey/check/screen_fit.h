// Checks whether a text fits its place on the updater's screen.
#pragma once

#include <string>

#include "tools/updatekey/check/drawn_text.h"

// Describes why a text exceeds `rightEdge`, to be appended to its name in a message: "ends at x
// 512, beyond 488". Returns an empty text when it fits.
std::string widthFault(const DrawnText& text, int rightEdge);

// Describes in the same form why START or STOP, in the text of `key`, is not where its marker is
// drawn. Returns an empty text when it is, and for a text without a marker.
std::string markerFault(const std::string& key, const WideString& text, const DrawnText& drawn);
