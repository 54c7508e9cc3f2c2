// The ".fnt" file of a baked face: the published BMFont binary format, version 3.
#pragma once

#include <string>

#include "render/font_file.h"

// The file's bytes. `emSize` is in pixels and kept for those who look into the file, like the
// font's name. There are always five blocks, since the device asks for five; the one of the kerning
// pairs may be empty. The names of the pages must all have one length.
std::string encodeBmFont(const FontData& font, const std::string& fontName, int emSize);
