// Tests that the device reads the generated fonts as the tools wrote them.

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "render/font_file.h"
#include "render/font_layout.h"
#include "tools/host/host_file.h"
#include "tools/host/process.h"

namespace {

using Json = nlohmann::json;

Json whatTheDeviceReads(const std::filesystem::path& path) {
    const std::string bytes = readHostFile(path);
    FontData font;
    EXPECT_TRUE(parseFont(reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size(), font))
        << path;
    Json glyphs = Json::array();
    for (const auto& [code, glyph] : font.glyphs) {
        Json& fields = glyphs.emplace_back();
        forEachField(glyph, [&fields](auto field) { fields.push_back(field); });
    }
    Json kernings = Json::array();
    for (const auto& [pair, amount] : font.kerning)
        kernings.push_back({pair.first, pair.second, amount});
    return {font.lineHeight, font.base, font.atlasSize, font.pageNames, glyphs, kernings};
}

Json whatTheToolWrote(const std::filesystem::path& path) {
    Json dump = Json::parse(outputOf({FONTBAKE, "--dump", path.string()}));
    for (Json& glyph : dump["chars"])
        glyph = {glyph["id"],     glyph["x"],       glyph["y"],       glyph["width"],
                 glyph["height"], glyph["xoffset"], glyph["yoffset"], glyph["xadvance"],
                 glyph["page"],   glyph["chnl"]};
    for (Json& pair : dump["kernings"])
        pair = {pair["first"], pair["second"], pair["amount"]};
    return {dump["lineHeight"], dump["base"],  dump["scaleW"],
            dump["pages"],      dump["chars"], dump["kernings"]};
}

TEST(FontFiles, AreReadAsTheyWereWritten) {
    int count = 0;
    for (const auto& entry : std::filesystem::directory_iterator(FONTS)) {
        if (entry.path().extension() != ".fnt")
            continue;
        ++count;
        EXPECT_EQ(whatTheDeviceReads(entry), whatTheToolWrote(entry)) << entry.path();
    }
    EXPECT_GT(count, 0);
}

}  // namespace
