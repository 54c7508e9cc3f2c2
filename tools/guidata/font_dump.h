// What a ".fnt" file holds, for people and for comparison with other readers.
#pragma once

#include <string>

#include "render/font_file.h"

// The font as JSON text, one glyph or kerning pair a line, in ascending order.
std::string fontAsJson(const FontData& font);
