#include "tools/guidata/font_dump.h"

#include <sstream>

namespace {

std::string quoted(const std::string& text) {
    std::string result = "\"";
    for (const char character : text) {
        if (character == '"' || character == '\\')
            result += '\\';
        result += character;
    }
    return result + '"';
}

void dumpGlyph(std::ostream& out, const Glyph& glyph) {
    out << R"({"id": )" << glyph.id << R"(, "x": )" << glyph.x << R"(, "y": )" << glyph.y
        << R"(, "width": )" << glyph.width << R"(, "height": )" << glyph.height
        << R"(, "xoffset": )" << glyph.xoffset << R"(, "yoffset": )" << glyph.yoffset
        << R"(, "xadvance": )" << glyph.xadvance << R"(, "page": )" << unsigned{glyph.page}
        << R"(, "chnl": )" << unsigned{glyph.channel} << "}";
}

}  // namespace

std::string fontAsJson(const FontData& font) {
    std::ostringstream out;
    out << "{\n\"lineHeight\": " << font.lineHeight << ",\n\"base\": " << font.base
        << ",\n\"scaleW\": " << font.atlasSize << ",\n\"pages\": [";
    const char* separator = "";
    for (const std::string& name : font.pageNames) {
        out << separator << quoted(name);
        separator = ", ";
    }
    out << "],\n\"chars\": [";
    separator = "\n";
    for (const auto& [code, glyph] : font.glyphs) {
        out << separator;
        dumpGlyph(out, glyph);
        separator = ",\n";
    }
    out << "],\n\"kernings\": [";
    separator = "\n";
    for (const auto& [pair, amount] : font.kerning) {
        out << separator << R"({"first": )" << pair.first << R"(, "second": )" << pair.second
            << R"(, "amount": )" << amount << "}";
        separator = ",\n";
    }
    out << "]\n}\n";
    return out.str();
}
