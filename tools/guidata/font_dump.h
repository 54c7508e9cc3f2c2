// The content of a ".fnt" file as text, for inspection and for comparison with other readers.
#pragma once

#include <string>

#include "render/font_file.h"

// Returns the font as JSON, with one glyph or kerning pair per line, in ascending order.
std::string fontAsJson(const FontData& font);
