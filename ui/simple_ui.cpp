// The screen's logic: set-up, frames and keys.

#include "ui/simple_ui.h"

#include <cstdlib>
#include <new>

#include "render/raw_texture.h"
#include "render/shader_program.h"
#include "support/logger.h"
#include "support/path_constants.h"
#include "support/string_table.h"
#include "support/system_config.h"
#include "support/system_settings.h"
#include "support/text.h"

SimpleUI::~SimpleUI() {
    fontSet.clear();
    imageRenderer.reset();
}

void SimpleUI::init(uint32_t width, uint32_t height) {
    screenWidth = width;
    screenHeight = height;
    glClearColor(0.2F, 0.2F, 0.2F, 0.0F);

    // Both separators side by side: the device accepts it, and every path of the GUI data, the
    // log's included, has always been derived from this form.
    const std::string guiData = INSTALL_ROOT + "/ORBUI/data/";
    SystemSettings::instance().dataFolder = guiData;
    Logger::instance().setPath(guiData + "../../Updater-log.txt");

    const int32_t language = SystemConfig::instance().getLanguage();
    fontSet.loadFonts(language);
    StringTable::instance().setLanguage(language);

    constexpr int32_t BACKGROUND_SIDE = 1024;
    imageRenderer.reset(new (std::nothrow) ImageRenderer);
    backgroundTexture =
        loadRawLuminanceTexture((guiData + "KSTRL-menubg4.raw").c_str(), BACKGROUND_SIDE, 0);
    // Built now, so that no frame waits for the compiler.
    getProgram(programCache(), "gui");
}

void SimpleUI::tick() {
    constexpr DWORD MEDIA_POLL_PAUSE = 100;
    if (!updater.isMediaReady()) {
        updater.pollMedia();
        Sleep(MEDIA_POLL_PAUSE);
    } else if (!restartAttempted && updater.getState() == UpdateComplete) {
        launchMainApp();
    }

    if (autoMode) {
        if (updater.getState() == ReadyToUpdate) {
            updater.startUpdate();
            updater.step();
            return;
        }
        // Tried on every frame: nobody is there to press a key.
        if (updater.getState() == UpdateComplete)
            launchMainApp();
    }
    updater.step();
}

void SimpleUI::onKey(WPARAM virtualKey) {
    // STOP always stops, also in the middle of an update, which is then abandoned.
    if (updater.getState() == UpdateFailed || virtualKey == VK_END) {
        restart();
    } else if (virtualKey == VK_HOME) {
        if (updater.getState() == ReadyToUpdate && updater.isMediaReady())
            updater.startUpdate();
    }
}

// The way out by key: starts the main application, or leaves without it if that failed before.
void SimpleUI::restart() {
    if (restartAttempted)
        std::exit(0);
    launchMainApp();
}

void SimpleUI::launchMainApp() {
    const WideString path = widen(INSTALL_ROOT + "KSTRL\\KSTRL.exe");
    if (CreateProcessW(path.c_str(), nullptr, nullptr, nullptr, FALSE, 0, nullptr, nullptr, nullptr,
                       nullptr) == TRUE)
        std::exit(0);
    restartAttempted = true;
}

void SimpleUI::setLaunchArguments(const std::string& first, const std::string& second) {
    launchArgument1 = first;
    launchArgument2 = second;
}

void SimpleUI::setAutoMode() {
    autoMode = true;
}
