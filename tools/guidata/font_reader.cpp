#include "tools/guidata/font_reader.h"

#include <stdexcept>

#include "tools/guidata/source_lines.h"

FontData readFont(const std::string& path) {
    const std::string bytes = readSource(path);
    FontData font;
    parseFont(reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size(), font);
    if (font.glyphs.empty())
        throw std::runtime_error(path + ": is not a .fnt file, or has no glyphs");
    return font;
}
