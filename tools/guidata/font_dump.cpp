#include "tools/guidata/font_dump.h"

#include <nlohmann/json.hpp>

namespace {

using Json = nlohmann::ordered_json;

// Bytes that are not UTF-8 are shown as replacement characters.
std::string text(const Json& json) {
    return json.dump(-1, ' ', false, Json::error_handler_t::replace);
}

std::string linesOf(const Json& entries) {
    std::string lines;
    for (const Json& entry : entries)
        lines += (lines.empty() ? "\n" : ",\n") + text(entry);
    return lines;
}

}  // namespace

std::string fontAsJson(const FontData& font) {
    Json glyphs = Json::array();
    for (const auto& [code, glyph] : font.glyphs)
        glyphs.push_back({{"id", glyph.id},
                          {"x", glyph.x},
                          {"y", glyph.y},
                          {"width", glyph.width},
                          {"height", glyph.height},
                          {"xoffset", glyph.xoffset},
                          {"yoffset", glyph.yoffset},
                          {"xadvance", glyph.xadvance},
                          {"page", glyph.page},
                          {"chnl", glyph.channel}});
    Json kernings = Json::array();
    for (const auto& [pair, amount] : font.kerning)
        kernings.push_back({{"first", pair.first}, {"second", pair.second}, {"amount", amount}});
    const Json head = {{"lineHeight", font.lineHeight},
                       {"base", font.base},
                       {"scaleW", font.atlasSize},
                       {"pages", font.pageNames}};
    std::string json = text(head);
    json.pop_back();
    return json + ",\n\"chars\":[" + linesOf(glyphs) + "],\n\"kernings\":[" + linesOf(kernings) +
           "]}\n";
}
