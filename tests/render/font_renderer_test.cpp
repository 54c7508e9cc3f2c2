// Tests that glyphs are drawn at the instrument's coordinates, and that each language gets its
// face.

#include "render/font_renderer.h"

#include <gtest/gtest.h>

#include <sstream>

#include "platform/posix/call_hook.h"
#include "render/font_set.h"
#include "render/matrix.h"
#include "render/shader_program.h"
#include "support/logger.h"
#include "support/system_settings.h"
#include "tests/helpers/font_bytes.h"
#include "tests/helpers/log_text.h"
#include "tests/helpers/recording_gl.h"

namespace {

using Quads = std::vector<std::string>;

constexpr float MODELVIEW[16] = {3, 0};

Glyph glyph(uint32_t id, int16_t yoffset, uint16_t width, int16_t xadvance, uint8_t page = 0) {
    return {id, 8, 16, width, 12, 99, yoffset, xadvance, page, 15};
}

std::string quad(float left, float top, float right, float bottom) {
    std::ostringstream text;
    text << left << ' ' << bottom << " 0 | " << left << ' ' << top << " 0 | " << right << ' ' << top
         << " 0 | " << right << ' ' << bottom << " 0";
    return text.str();
}

class FontRendererTest : public testing::Test {
  protected:
    FontRendererTest() {
        RecordingGl::reset();
        SystemSettings::instance().dataFolder = "/data/";
        Logger::instance().setPath("/log.txt");
        device.write("/data/fonts/page.raw", "coverage");
    }

    // Draws at (100, 50) and returns the corners of the quads.
    template <typename Text>
    Quads draw(const FontRenderer& face, const Text& text, bool kerned = true,
               const float* modelview = nullptr) {
        gl.calls.clear();
        float projection[16];
        orthoMatrix(0, 4, 2, 0, -1, 3, projection);
        face.drawText(text, 100, 50, 1, 0.5F, 0.25F, projection, kerned, modelview);
        EXPECT_FALSE(gl.arrays[2].enabled || gl.arrays[3].enabled);
        Quads found;
        for (const std::string& call : gl.calls)
            if (call.compare(0, 5, "  2: ") == 0)
                found.push_back(call.substr(5));
        return found;
    }

    DeviceFolder device;
    RecordingGl& gl = RecordingGl::instance();
};

TEST_F(FontRendererTest, PlacesTheGlyphs) {
    device.write("/data/fonts/F.fnt",
                 fontBytes(20, 64,
                           {glyph('A', 2, 10, 9), glyph('B', 3, 8, 7), glyph(0xE9, 0, 5, 5),
                            glyph(0x30A2, 0, 24, 24), glyph(0x4E00, -1, 30, -24),
                            glyph('P', 0, 8, 8, 1), glyph(0x9FFF, 0, 3, 3)},
                           kerningRecord('A', 'B', -3) + kerningRecord('\n', 'B', 2) +
                               kerningRecord(0x30A2, 0x9FFF, -3)));
    FontRenderer face("F", nullptr);
    const float behind = 100 + 65512 * (2.0F / 3);
    const std::pair<LPCWSTR, Quads> texts[] = {
        // Kerning moves the glyph but not the pen. Line breaks are skipped, but form pairs.
        {TEXT("ABB"), {quad(100, 52, 110, 64), quad(106, 53, 114, 65), quad(116, 53, 124, 65)}},
        {TEXT("\uFEFFA\uFEFF\r\nB"), {quad(100, 52, 110, 64), quad(111, 53, 119, 65)}},
        // Narrowed; negative metrics are read as large positive ones.
        {TEXT("\u30A2\u9FFFA"),
         {quad(100, 50, 116, 62), quad(113, 50, 115, 62), quad(118, 52, 128, 64)}},
        {TEXT("\u4E00A"), {quad(100, 65585, 120, 65597), quad(behind, 52, behind + 10, 64)}},
        // Without a glyph, and without the page of its glyph.
        {TEXT("\u20ACPA\u20AC\u20AD"), {quad(100, 52, 110, 64)}},
    };
    for (const auto& [text, quads] : texts)
        EXPECT_EQ(draw(face, WideText(text)), quads) << narrow(text);
    // Narrow text is widened byte by byte, up to its NUL.
    EXPECT_EQ(draw(face, std::string("\xE9\0A", 3)), Quads{quad(100, 50, 105, 62)});
    EXPECT_EQ(draw(face, std::string("AB"), false, MODELVIEW)[1], quad(109, 53, 117, 65));
    EXPECT_EQ(gl.matrices[1], std::vector<float>(MODELVIEW, MODELVIEW + 16));
    EXPECT_EQ(gl.matrices[2],
              (std::vector<float>{0.5F, 0, 0, 0, 0, -1, 0, 0, 0, 0, -0.5F, 0, -1, 1, -0.5F, 1}));
    face.setKerning('A', 'B', 4);
    EXPECT_EQ(draw(face, WideText(TEXT("AB")))[1], quad(113, 53, 121, 65));

    EXPECT_EQ(face.textWidth(TEXT("\u30A2A\u20AC\u4E00")), 33U + 65512U);
    EXPECT_EQ(face.textWidth("\xE9"), 5U);
    draw(FontRenderer("F", nullptr), WideText(TEXT("\u20AC")));
    EXPECT_EQ(logMessages(device, "log.txt"),
              "  ** Warning ** Unrecognized Char: 8364  20ac\n"
              "  ** Warning ** Unrecognized Char: 8365  20ad\n");
}

TEST_F(FontRendererTest, AFaceWithoutFilesMakesNoGlCalls) {
    const FontRenderer face("G", nullptr);
    draw(face, WideText(TEXT("A")));
    EXPECT_TRUE(gl.calls.empty());
    EXPECT_EQ(face.textWidth("A"), 0U);
    device.write("/data/fonts/H.fnt");
    for (const uintmax_t size : {16U << 20U, (16U << 20U) + 1}) {
        std::filesystem::resize_file(device.root() / "data/fonts/H.fnt", size);
        FontRenderer("H", nullptr);
    }
    EXPECT_EQ(logMessages(device, "log.txt"),
              "\n    *** ERROR *** Font file /data/fonts/G.fnt not found.\n\n\n"
              "\n    *** ERROR *** Font file /data/fonts/H.fnt is too large.\n\n\n");
}

TEST_F(FontRendererTest, LoadsItsKerningFileAndAllPages) {
    const std::string font =
        std::string("BMF\3") + commonBlock(1, 1, 2) +
        block(3, std::string("o\ne.png\0two.png\0", 16)) + block(3, std::string("x\0", 2)) +
        block(4, glyphRecord(glyph('A', 0, 1, 1)) + glyphRecord(glyph('B', 0, 1, 1, 1))) +
        block(5, kerningRecord('A', 'A', 5));
    device.write("/data/fonts/F.fnt", font);
    device.write("/data/fonts/F.kern", utf16Bytes(TEXT("AA 7\r\n")));
    device.write("/data/fonts/two.raw", "abcd");
    device.write("/data/fonts/.raw", "efgh");  // a page name that is only an extension
    {
        const FontRenderer face("F", this);
        EXPECT_EQ(face.context(), this);
        EXPECT_EQ(face.findKerning('A', 'A'), 7);
        EXPECT_EQ(face.findKerning('A', 'B'), std::nullopt);
        draw(face, WideText(TEXT("B")));
        EXPECT_EQ(gl.calls,
                  (Quads{"glUseProgram(" +
                             std::to_string(getProgram(programCache(), "fontrenderer")) + ')',
                         "glActiveTexture(0)", "glBindTexture(1)", "glUniform1i(4, 0)",
                         "glUniform3f(3, 1, 0.5, 0.25)", "glDrawElements(4, 0 1 2 3 0 2)",
                         "  2: " + quad(100, 50, 101, 62), "  3: 4 14 | 4 8 | 4.5 8 | 4.5 14"}));
        EXPECT_EQ(gl.texturePixels[1], (std::vector<unsigned char>{'a', 'b', 'c', 'd'}));
        EXPECT_EQ(gl.texturePixels[2], (std::vector<unsigned char>{'e', 'f', 'g', 'h'}));
        EXPECT_NE(device.read("/log.txt").find("File /data/fonts/o?e.raw not found."),
                  std::string::npos);
    }
    EXPECT_EQ(gl.callsOf("glDeleteTextures"), Quads{"glDeleteTextures(3, 0 1 2)"});
}

TEST_F(FontRendererTest, SetPicksTheNearestFace) {
    const std::pair<const char*, unsigned> faces[] = {
        {"SegoeUI_10px", 10},   {"SegoeUI_13px", 13},   {"SegoeUI_18px", 18},
        {"SegoeUI_24px", 24},   {"MeiryoUI_24px", 124}, {"MeiryoUI_36px", 136},
        {"FangSong_24px", 224}, {"FangSong_36px", 236}};
    for (const auto& [name, lineHeight] : faces)
        device.write(std::string("/data/fonts/") + name + ".fnt", fontBytes(lineHeight, 1, {}));
    FontSet fonts;
    EXPECT_EQ(fonts.getFont(13), nullptr);
    const auto picked = [&](int32_t language) {
        EXPECT_TRUE(fonts.loadFonts(language)) << language;
        std::string lineHeights;
        for (const int size : {-1, 11, 12, 15, 16, 20, 21, 28, 29, 1000})
            lineHeights += std::to_string(fonts.getFont(size)->lineHeight()) + ' ';
        return lineHeights;
    };
    for (const int32_t latin : {0, 1, 2, 3, 6})
        EXPECT_EQ(picked(latin), "10 10 13 13 18 18 24 24 10 10 ");
    EXPECT_EQ(picked(4), "124 124 124 124 136 136 136 136 124 124 ");
    EXPECT_EQ(picked(5), "224 224 224 224 236 236 236 236 224 224 ");

    gl.calls.clear();
    EXPECT_FALSE(fonts.loadFonts(LANGUAGE_COUNT));
    EXPECT_EQ(fonts.getFont(24), nullptr);
    EXPECT_EQ(gl.callsOf("glDeleteTextures").size(), 2U);

    // Memory runs out after the second face's first page; the third face's page is too large.
    const std::string twoPages = std::string("BMF\3") + commonBlock(13, 1, 1) + pageBlock();
    device.write("/data/fonts/SegoeUI_13px.fnt", twoPages + block(3, std::string("last.png\0", 9)));
    device.write("/data/fonts/last.raw");
    setCallHook([](const HookedCall& call) -> DWORD {
        if (call.arguments[0] == "/data/fonts/last.raw")
            throw std::bad_alloc();
        return ERROR_SUCCESS;
    });
    EXPECT_FALSE(fonts.loadFonts(0));
    EXPECT_EQ(fonts.getFont(24)->lineHeight(), 10U);
    EXPECT_EQ(gl.callsOf("glDeleteTextures").size(), 3U);
    setCallHook({});
    device.write("/data/fonts/SegoeUI_18px.fnt", fontBytes(18, 65535, {}));
    Logger::instance().open();
    EXPECT_FALSE(fonts.loadFonts(0));
    EXPECT_EQ(fonts.getFont(24)->lineHeight(), 13U);
    EXPECT_EQ(logMessages(device, "log.txt"),
              "\n    *** ERROR *** Font SegoeUI_18px asks for too much memory.\n\n");
}

}  // namespace
