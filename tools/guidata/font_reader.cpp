#include "tools/guidata/font_reader.h"

#include <stdexcept>

#include "tools/host/host_file.h"

FontData readFont(const std::string& path) {
    const std::string bytes = readHostFile(path);
    FontData font;
    parseFont(reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size(), font);
    if (font.glyphs.empty())
        throw std::runtime_error(path + ": is not a .fnt file, or has no glyphs");
    return font;
}
