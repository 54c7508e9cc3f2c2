// Fuzzes the reader of ".fnt" files: it must not read beyond the end, or invent glyphs or pairs.

#include <cstdlib>

#include "render/font_file.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
    FontData font;
    parseFont(data, size, font);
    // The result cannot contain more than the bytes can encode.
    if (font.glyphs.size() > size / 20 || font.kerning.size() > size / 10 ||
        font.pageNames.size() > size)
        std::abort();
    return 0;
}
