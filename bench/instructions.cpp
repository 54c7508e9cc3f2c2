// The program whose instructions scripts/lib/check-instructions counts: the start of the screen,
// step by step; a frame in each state with few and with many lines of release notes; and the
// engine's work per file. Prints a line for each measurement: its name, its units (such as draw
// calls or files), and its heap allocations.
//
// Usage: instructions FOLDER   with the devices that scripts/lib/check-instructions makes

#include <valgrind/callgrind.h>

#include <cstdio>
#include <filesystem>
#include <memory>

#include "bench/counted_heap.h"
#include "bench/null_gl.h"
#include "platform/posix/call_hook.h"
#include "platform/posix/files/device.h"
#include "render/raw_texture.h"
#include "support/logger.h"
#include "support/string_table.h"
#include "support/system_settings.h"
#include "ui/screen_layout.h"
#include "ui/simple_ui.h"

namespace {

namespace fs = std::filesystem;

fs::path devices;

void useDevice(const std::string& name) {
    setDeviceRoot((devices / name).string());
}

// Plugs in the key of a device.
void plugIn(const std::string& name) {
    fs::rename(devices / name / "key", devices / name / "USB HD");
}

// Runs `work`, which returns its number of units, between two callgrind dumps, the second of which
// carries `name`.
template <typename Work>
void count(const std::string& name, Work work) {
    const uint64_t before = heapCount().allocations;
    CALLGRIND_ZERO_STATS;
    const uint64_t units = work();
    CALLGRIND_DUMP_STATS_AT(name.c_str());
    std::printf("%s\t%llu\t%llu\n", name.c_str(), static_cast<unsigned long long>(units),
                static_cast<unsigned long long>(heapCount().allocations - before));
}

template <typename Work>
void countOnce(const std::string& name, Work work) {
    count(name, [&work] {
        work();
        return uint64_t{1};
    });
}

void countStart() {
    useDevice("start");
    const std::string guiData = "/FlashDisk/VELD/ORBUI/data/";
    SystemSettings::instance().dataFolder = guiData;
    FontSet fonts;
    std::unique_ptr<ImageRenderer> image;
    countOnce("start-up: fonts and their program", [&] { fonts.loadFonts(0); });
    countOnce("start-up: texts", [] { StringTable::instance().setLanguage(0); });
    countOnce("start-up: image program", [&] { image = std::make_unique<ImageRenderer>(); });
    countOnce("start-up: background", [&] {
        loadRawLuminanceTexture((guiData + layout::BACKGROUND_FILE).c_str(),
                                layout::BACKGROUND_SIDE, 0);
    });
    countOnce("start-up: whole screen", [] {
        SimpleUI screen;
        screen.init(layout::SCREEN_WIDTH, layout::SCREEN_HEIGHT);
    });
}

void countFrame(SimpleUI& screen, const std::string& name) {
    // Not counted: the first frame in a state may build a GL program.
    screen.draw();
    count("frame: " + name, [&] {
        const uint64_t before = nullGlDrawCalls();
        screen.draw();
        return nullGlDrawCalls() - before;
    });
}

// The key of the device `lines` has as many lines of release notes. The update of the device "0"
// fails.
void countFrames(const std::string& lines) {
    useDevice(lines);
    const std::string notes = lines + " lines";
    const bool fails = lines == "0";
    SimpleUI screen;
    screen.init(layout::SCREEN_WIDTH, layout::SCREEN_HEIGHT);
    if (fails)
        countFrame(screen, "waiting");
    plugIn(lines);
    screen.tick();
    countFrame(screen, "ready, " + notes);
    screen.onKey(VK_HOME);
    countFrame(screen, "updating, " + notes);
    for (int i = 0; i < 3; ++i)
        screen.tick();
    countFrame(screen, (fails ? "failed, " : "complete, ") + notes);
}

// Makes the protected steps of an update callable.
class OpenUpdater : public Updater {
  public:
    uint64_t files() const { return totalFiles; }
    bool hasFilesToCopy() const { return !filesToCopy.empty(); }
};

void countEngine() {
    useDevice("engine");
    plugIn("engine");
    OpenUpdater updater;
    countOnce("engine: look for a key", [&] { updater.pollMedia(); });
    count("engine: list, per file", [&] {
        updater.startUpdate();
        return updater.files();
    });
    count("engine: copy, per file", [&] {
        while (updater.hasFilesToCopy())
            updater.step();
        return updater.files();
    });
    count("engine: delete the backup and swap, per file", [&] {
        updater.step();
        return updater.files();
    });
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2)
        return 2;
    devices = argv[1];
    Logger::instance().setPath("/FlashDisk/VELD/Updater-log.txt");
    countStart();
    // Makes the launch fail so that the process does not exit.
    setCallHook([](const HookedCall& call) {
        const std::string name = call.name;
        return name == "CreateProcessW" || name == "Sleep" ? ERROR_FILE_NOT_FOUND : ERROR_SUCCESS;
    });
    for (const char* const lines : {"0", "50", "10000"})
        countFrames(lines);
    setCallHook({});
    countEngine();
}
