// Reads the faces (fonts of one size) of a key, and lists characters for messages.
#pragma once

#include <set>
#include <string>

#include "render/font_file.h"

// Loads a face of the key that is plugged into the current device. It has no glyphs when it is
// missing.
FontData loadKeyFace(const std::string& faceName);

// Formats characters for a message: "é" (U+00E9), ...
std::string listCharacters(const std::set<WCHAR>& characters);
