// Start-up of the screen, step by step, and a frame in each state with few and with many lines of
// release notes.

#include <memory>

#include "bench/bench_device.h"
#include "bench/instructions.h"
#include "platform/posix/call_hook.h"
#include "render/raw_texture.h"
#include "support/logger.h"
#include "support/string_table.h"
#include "support/system_settings.h"
#include "ui/screen_layout.h"
#include "ui/simple_ui.h"

namespace {

void countStartUp() {
    const BenchDevice device;
    device.makeInstallation();
    const std::string guiData = "/FlashDisk/VELD/ORBUI/data/";
    SystemSettings::instance().dataFolder = guiData;
    Logger::instance().setPath("/FlashDisk/VELD/Updater-log.txt");
    FontSet fonts;
    std::unique_ptr<ImageRenderer> image;
    countInstructions("start-up: fonts and their program", [&] {
        fonts.loadFonts(0);
        return 1U;
    });
    countInstructions("start-up: texts", [] {
        StringTable::instance().setLanguage(0);
        return 1U;
    });
    countInstructions("start-up: image program", [&] {
        image = std::make_unique<ImageRenderer>();
        return 1U;
    });
    countInstructions("start-up: background", [&] {
        loadRawLuminanceTexture((guiData + layout::BACKGROUND_FILE).c_str(),
                                layout::BACKGROUND_SIDE, 0);
        return 1U;
    });
    countInstructions("start-up: whole screen", [] {
        SimpleUI screen;
        screen.init(layout::SCREEN_WIDTH, layout::SCREEN_HEIGHT);
        return 1U;
    });
}

void countFrame(SimpleUI& screen, const std::string& name) {
    // Not counted: the first frame in a state may build a GL program.
    screen.draw();
    countInstructions("frame: " + name, [&] {
        const uint64_t before = nullGlDrawCalls();
        screen.draw();
        return nullGlDrawCalls() - before;
    });
}

void countFrames(std::size_t lines) {
    // Makes the launch fail so that the process does not exit.
    setCallHook([](const HookedCall& call) {
        const std::string name = call.name;
        return name == "CreateProcessW" || name == "Sleep" ? ERROR_FILE_NOT_FOUND : ERROR_SUCCESS;
    });
    const BenchDevice device;
    device.makeInstallation();
    const std::string notes = std::to_string(lines) + " lines";
    SimpleUI screen;
    screen.init(layout::SCREEN_WIDTH, layout::SCREEN_HEIGHT);
    if (lines == 0)
        countFrame(screen, "waiting");
    device.makeKey(2, 1, lines);
    screen.tick();
    countFrame(screen, "ready, " + notes);
    screen.onKey(VK_HOME);
    countFrame(screen, "updating, " + notes);
    if (lines == 0) {
        // A stray file in the staging folder makes the update fail.
        device.write("FlashDisk/VELD/Update/stray", "");
    }
    for (int i = 0; i < 3; ++i)
        screen.tick();
    countFrame(screen, (lines == 0 ? "failed, " : "complete, ") + notes);
    setCallHook({});
}

}  // namespace

void countScreen() {
    countStartUp();
    for (const std::size_t lines : {0U, 50U, 10000U})
        countFrames(lines);
}
