// Reads the faces that the tools look into with the device's own reader.
#pragma once

#include <string>

#include "render/font_file.h"

// What the ".fnt" file at `path` of the host holds. Returns false, with `error` naming the file,
// when it cannot be read or holds no glyphs.
bool readFont(const std::string& path, FontData& font, std::string& error);
