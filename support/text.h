// Conversion between narrow strings (paths, logs, keys) and the wide strings of the system.
//
// Both directions convert character by character, and a narrow character is one byte: only Latin-1
// survives a round trip. Anything else becomes "?", which no path contains. Keeping the low byte
// instead would turn U+012E and U+012F into "." and "/", and a name could lead out of its folder.
#pragma once

#include <string>

#include "platform/win32.h"

// Each byte becomes the character of that number: 0xE9 becomes U+00E9, never U+FFE9.
WideString widen(const std::string& narrow);

// Each character becomes the byte of its number; a character above 0xFF becomes "?".
std::string narrow(const WideString& wide);
