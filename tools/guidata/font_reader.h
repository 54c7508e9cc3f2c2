// Reads faces for the tools with the device's own reader.
#pragma once

#include <string>

#include "render/font_file.h"

// Reads the ".fnt" file at `path` on this computer. Returns false, with `error` naming the file,
// when it cannot be read or contains no glyphs.
bool readFont(const std::string& path, FontData& font, std::string& error);
