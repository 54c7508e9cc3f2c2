// What one frame of each state asks of GL: the steps in their order, and where each text stands.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <sstream>
#include <string>
#include <vector>

#include "platform/posix/call_hook.h"
#include "render/shader_program.h"
#include "support/text.h"
#include "tests/support/device_folder.h"
#include "tests/support/font_bytes.h"
#include "tests/support/recording_gl.h"
#include "ui/simple_ui.h"

namespace {

constexpr const char* DATA = "FlashDisk/VELD/ORBUI/data/";
constexpr int ATLAS = 256;

// A face in which every character is 10 pixels wide and 1 high, and its code is its place in the
// atlas: what has been drawn can be read back from the texture coordinates.
std::string readableFace() {
    std::vector<Glyph> glyphs;
    for (uint16_t code = ' '; code < 0x7F; ++code)
        glyphs.push_back({code, code, 0, 1, 1, 0, 0, 10, 0, 0});
    return fontBytes(20, ATLAS, glyphs);
}

using Calls = std::vector<std::string>;
using Lines = std::vector<std::string>;  // "48 155 text"

class Frame : public ::testing::Test {
  protected:
    void SetUp() override {
        RecordingGl::reset();
        programCache().clear();
        for (const char* face : {"SegoeUI_24px", "SegoeUI_13px"})
            device.write(std::string(DATA) + "fonts/" + face + ".fnt", readableFace());
        device.write(std::string(DATA) + "fonts/page.raw");
        device.write(std::string(DATA) + "lang/StringTable_en.txt",
                     utf16Bytes(widen("#\r\n"
                                      "STR_KESTRELUPDATER title\r\n"
                                      "STR_PLEASEINSERTUPDATEKEY insert\r\n"
                                      "STR_PRESSSTOPTOCANCEL stop\r\n"
                                      "STR_PRESSSTARTTOUPDATE start\r\n"
                                      "STR_PERFORMINGUPDATE performing \r\n"
                                      "STR_UDPATECOMPLETE complete\r\n"
                                      "STR_UDPATEFAILED failed\r\n"
                                      "STR_VERSIONUNCHANGED unchanged\r\n"
                                      "STR_PRESSANYKEYTORESTART anykey\r\n")));
        device.write(std::string(DATA) + "KSTRL-menubg4.raw");
        device.write("FlashDisk/VELD/KSTRL/a");
        setCallHook([](const HookedCall& call) {
            const std::string name = call.name;
            return name == "Sleep" || name == "CreateProcessW" ? ERROR_FILE_NOT_FOUND
                                                               : ERROR_SUCCESS;
        });
    }

    void plugIn(const std::string& notes) const {
        device.write("USB HD/VELD/KSTRL/a");
        device.write("USB HD/VELD/ORBUI/data/b");
        device.write("USB HD/VELD/kstrXReleaseNotes.txt", notes);
    }

    // Draws a frame and reads back what its texts say.
    Lines draw() {
        gl.calls.clear();
        screen.draw();
        Lines lines;
        float lastTop = -1;
        float left = 0;
        float top = 0;
        char separator = 0;
        for (const std::string& call : gl.calls) {
            std::istringstream values(call.substr(std::min<std::size_t>(5, call.size())));
            float bottom = 0;
            float z = 0;
            float u = 0;
            const bool isPosition = call.rfind("  0: ", 0) == 0;
            if (isPosition && values >> left >> bottom >> z >> separator >> left >> top)
                continue;
            if (call.rfind("  1: ", 0) != 0 || separator != '|' || !(values >> u))
                continue;
            separator = 0;
            if (top != lastTop)
                lines.push_back(std::to_string(std::lround(left)) + " " +
                                std::to_string(std::lround(top)) + " ");
            lastTop = top;
            lines.back() += static_cast<char>(std::lround(u * ATLAS));
        }
        return lines;
    }

    DeviceFolder device;
    RecordingGl& gl = RecordingGl::instance();
    SimpleUI screen;
};

TEST_F(Frame, TextsStandWhereEachStateHasThem) {
    screen.init(1024, 768);
    EXPECT_EQ(draw(), (Lines{"48 15 title v1.1", "48 155 insert", "48 205 stop"}));

    plugIn("KSTRL Release 2\nsecond\n\nfourth\nnot shown");
    screen.tick();
    const std::function<void()> tick = [this] { screen.tick(); };
    const std::pair<std::function<void()>, Lines> steps[] = {
        {[] {}, {"48 195 start", "48 245 stop"}},
        {[this] { screen.onKey(VK_HOME); }, {"48 205 performing 0%"}},
        {tick, {"48 205 performing 50%"}},
        {tick, {"48 205 performing 100%"}},
        {tick, {"48 205 complete"}},
        {tick, {"48 205 complete", "48 255 Attempted to restart..."}},
    };
    for (const auto& [step, lines] : steps) {
        step();
        Lines expected = {"48 15 title v1.1"};
        expected.insert(expected.end(), lines.begin(), lines.end());
        expected.insert(expected.end(),
                        {"500 235 KSTRL Release 2", "500 257 second", "500 301 fourth"});
        EXPECT_EQ(draw(), expected);
    }
}

TEST_F(Frame, AFailureAsksForAnyKeyAndTheNoteStandsBelow) {
    screen.init(1024, 768);
    plugIn("");
    device.write("FlashDisk/VELD/Update/stray/x");
    screen.tick();
    screen.onKey(VK_HOME);
    for (int i = 0; i < 3; ++i)
        screen.tick();
    Lines expected = {"48 15 title v1.1", "48 205 failed", "48 255 unchanged", "48 305 anykey"};
    EXPECT_EQ(draw(), expected);
    screen.onKey(VK_END);
    expected.push_back("48 355 Attempted to restart...");
    EXPECT_EQ(draw(), expected);
}

TEST_F(Frame, AFailedLaunchIsNotedInEveryState) {
    screen.init(1024, 768);
    screen.onKey(VK_END);
    EXPECT_EQ(draw().back(), "48 255 Attempted to restart...");
    plugIn("");
    screen.tick();
    EXPECT_EQ(draw().back(), "48 295 Attempted to restart...");
    screen.onKey(VK_HOME);
    EXPECT_EQ(draw().back(), "48 255 Attempted to restart...");
}

TEST_F(Frame, DrawsBackgroundThenMarkersThenTexts) {
    std::filesystem::remove_all(device.root() / DATA / "fonts");
    screen.init(1024, 768);
    EXPECT_EQ(gl.calls.front(), "glClearColor(0.2, 0.2, 0.2, 0)");
    EXPECT_TRUE(device.exists("FlashDisk/VELD/Updater-log.txt"));
    plugIn("KSTRL Release 2\n");
    screen.tick();
    EXPECT_EQ(draw(), Lines());
    const std::string image = std::to_string(getProgram(programCache(), "imagerenderer"));
    const std::string gui = std::to_string(getProgram(programCache(), "gui"));
    const Calls shape = {"glVertexAttribPointer(0, 2, GL_INT, 0, 0)",
                         "glVertexAttribPointer(1, 3, GL_FLOAT, 0, 0)"};
    const Calls textSteps = {"glEnable(GL_BLEND)",
                             "glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA)",
                             "glDisable(GL_BLEND)"};
    Calls expected;
    const auto add = [&](const Calls& calls) {
        expected.insert(expected.end(), calls.begin(), calls.end());
    };
    const auto addQuad = [&](const char* positions, const char* others) {
        add({"glEnableVertexAttribArray(0)", "glEnableVertexAttribArray(1)",
             "glDrawElements(GL_TRIANGLES, GL_UNSIGNED_SHORT, 0 1 2 3 0 2)", positions, others,
             "glDisableVertexAttribArray(0)", "glDisableVertexAttribArray(1)"});
    };
    add({"glDisable(GL_BLEND)", "glUseProgram(" + image + ")",
         "glGetUniformLocation(" + image + ", prmtx)", "glUniformMatrix4fv(2, 1, 0)",
         "glActiveTexture(GL_TEXTURE0)", gl.callsOf("glBindTexture").back(), "glUniform1i(4, 0)",
         "glVertexAttribPointer(0, 2, GL_INT, 0, 0)",
         "glVertexAttribPointer(1, 2, GL_FLOAT, 0, 0)"});
    addQuad("  0: 0 0 | 1024 0 | 1024 768 | 0 768", "  1: 0 0.75 | 1 0.75 | 1 0 | 0 0");
    add({"glUseProgram(0)", "glGetAttribLocation(" + gui + ", a_position)",
         "glGetAttribLocation(" + gui + ", a_colors)", "glUseProgram(" + gui + ")",
         "glGetUniformLocation(" + gui + ", prmtx)", "glUniformMatrix4fv(2, 1, 0)"});
    add(shape);
    addQuad("  0: 135 529 | 247 529 | 247 565 | 135 565", "  1: 0 1 0 | 0 1 0 | 0 1 0 | 0 1 0");
    add(shape);
    addQuad("  0: 135 478 | 228 478 | 228 514 | 135 514", "  1: 1 0 0 | 1 0 0 | 1 0 0 | 1 0 0");
    add({"glUseProgram(0)"});
    // The faces are there, without glyphs: texts and notes switch blending all the same.
    add(textSteps);
    add(textSteps);
    EXPECT_EQ(gl.calls, expected);
}

}  // namespace
