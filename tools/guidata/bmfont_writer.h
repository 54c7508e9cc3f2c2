// Writes the ".fnt" file of a face: the published BMFont binary format, version 3.
#pragma once

#include <string>

#include "render/font_file.h"

// Returns the bytes of the file. The device ignores `emSize` (in pixels) and the font's name. All
// five blocks are written, because the device reads five; the kerning block may be empty. All page
// names must have the same length.
std::string encodeBmFont(const FontData& font, const std::string& fontName, int emSize);
