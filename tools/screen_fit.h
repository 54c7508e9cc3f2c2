// Whether a text is where the updater's screen wants it.
#pragma once

#include <string>

#include "tools/drawn_text.h"

// What is wrong with the width of a text that must not go beyond `rightEdge`, as what follows its
// name in a message: "ends at x 512, beyond 488". Empty when nothing is.
std::string widthFault(const DrawnText& text, int rightEdge);

// What is wrong with the place of the word that a key marker lies behind in the text of `key`, in
// the same form. Empty when nothing is, and for a text without a marker.
std::string markerFault(const std::string& key, const WideString& text, const DrawnText& drawn);
