#include "tools/guidata/font_reader.h"

#include "tools/host/host_file.h"

bool readFont(const std::string& path, FontData& font, std::string& error) {
    std::string bytes;
    if (!readHostFile(path, bytes, error))
        return false;
    parseFont(reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size(), font);
    if (font.glyphs.empty())
        error = path + ": is not a .fnt file, or has no glyphs";
    return !font.glyphs.empty();
}
