// The faces of the key's own fonts.
#pragma once

#include <set>
#include <string>

#include "render/font_file.h"

// A face of the key that is plugged into the current device; without glyphs when it is missing.
FontData loadKeyFace(const std::string& faceName);

// The characters for a message: "é" (U+00E9), ...
std::string listCharacters(const std::set<WCHAR>& characters);
