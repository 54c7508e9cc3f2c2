#include "tools/guidata/bmfont_writer.h"

#include <iterator>

#include "render/font_layout.h"

namespace {

// Appends a number in as many bytes as its type has.
template <typename Number>
void put(std::string& bytes, Number number) {
    const auto bits = static_cast<uint32_t>(number);
    for (std::size_t i = 0; i < sizeof number; ++i)
        bytes += static_cast<char>(bits >> (8 * i) & 0xFF);
}

void putBlock(std::string& bytes, FontBlock type, const std::string& content) {
    put(bytes, type);
    put(bytes, static_cast<uint32_t>(content.size()));
    bytes += content;
}

std::string infoBlock(const std::string& fontName, int emSize) {
    std::string block;
    put(block, static_cast<int16_t>(-emSize));  // negative: the size of the em
    constexpr unsigned char REST[] = {
        0xC0,           // smooth, and Unicode
        0,              // no character set, because the font is Unicode
        100,  0,        // per cent: not stretched
        1,              // no supersampling
        0,    0, 0, 0,  // no padding inside a cell
        1,    1,        // horizontal and vertical spacing between cells
        0,              // no outline
    };
    return block.append(std::begin(REST), std::end(REST)) + fontName + '\0';
}

std::string commonBlock(const FontData& font) {
    std::string block;
    const auto pages = static_cast<uint32_t>(font.pageNames.size());
    for (const uint32_t value : {font.lineHeight, font.base, font.atlasSize, font.atlasSize, pages})
        put(block, static_cast<uint16_t>(value));
    // Not packed into channels; each of the four channels holds the glyphs' coverage.
    return block + std::string(5, '\0');
}

std::string pagesBlock(const FontData& font) {
    std::string block;
    for (const std::string& name : font.pageNames)
        block += name + '\0';
    return block;
}

std::string charsBlock(const FontData& font) {
    std::string block;
    for (const auto& [code, glyph] : font.glyphs)
        forEachField(glyph, [&block](auto field) { put(block, field); });
    return block;
}

std::string kerningBlock(const FontData& font) {
    std::string block;
    for (const auto& [pair, amount] : font.kerning) {
        put(block, pair.first);
        put(block, pair.second);
        put(block, amount);
    }
    return block;
}

}  // namespace

std::string encodeBmFont(const FontData& font, const std::string& fontName, int emSize) {
    std::string bytes(std::begin(FONT_HEADER), std::end(FONT_HEADER));
    putBlock(bytes, InfoBlock, infoBlock(fontName, emSize));
    putBlock(bytes, CommonBlock, commonBlock(font));
    putBlock(bytes, PagesBlock, pagesBlock(font));
    putBlock(bytes, CharsBlock, charsBlock(font));
    putBlock(bytes, KerningBlock, kerningBlock(font));
    return bytes;
}
