// Reads faces for the tools with the device's own reader.
#pragma once

#include <string>

#include "render/font_file.h"

// Reads the ".fnt" file at `path` on this computer. Throws std::runtime_error,
// naming the file, when it cannot be read or contains no glyphs.
FontData readFont(const std::string& path);
