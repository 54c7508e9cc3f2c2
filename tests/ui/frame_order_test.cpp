// What one frame asks of GL: the steps in their order.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/posix/call_hook.h"
#include "render/shader_program.h"
#include "tests/support/device_folder.h"
#include "tests/support/recording_gl.h"
#include "ui/simple_ui.h"

namespace {

using Calls = std::vector<std::string>;

TEST(Frame, DrawsBackgroundThenMarkersThenTexts) {
    RecordingGl::reset();
    RecordingGl& gl = RecordingGl::instance();
    const DeviceFolder device;
    for (const char* const file :
         {"FlashDisk/VELD/ORBUI/data/KSTRL-menubg4.raw", "FlashDisk/VELD/KSTRL/a",
          "USB HD/VELD/KSTRL/a", "USB HD/VELD/ORBUI/data/b"})
        device.write(file);
    device.write("USB HD/VELD/kstrXReleaseNotes.txt", "KSTRL Release 2\n");
    SimpleUI screen;
    screen.init(1024, 768);
    EXPECT_EQ(gl.calls.front(), "glClearColor(0.2, 0.2, 0.2, 0)");
    EXPECT_TRUE(device.exists("FlashDisk/VELD/Updater-log.txt"));
    setCallHook([](const HookedCall& call) {
        return std::string(call.name) == "Sleep" ? ERROR_FILE_NOT_FOUND : ERROR_SUCCESS;
    });
    screen.tick();
    gl.calls.clear();
    screen.draw();
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
