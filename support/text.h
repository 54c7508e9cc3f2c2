// Conversion between the narrow strings of paths, logs and keys and the wide ones of the system.
//
// Both go character by character. Narrow text is one byte a character, so nothing outside Latin-1
// survives a round trip. It becomes "?", which stands in no path: the low bytes of U+012E and
// U+012F are "." and "/", and by them a name would lead out of its folder.
#pragma once

#include <string>

#include "platform/win32.h"

// Each byte becomes the character of that number: 0xE9 becomes U+00E9, never U+FFE9.
WideString widen(const std::string& narrow);

// Each character keeps its number; one above 0xFF becomes "?".
std::string narrow(const WideString& wide);
