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
#include "ui/screen_layout.h"

SimpleUI::~SimpleUI() {
    fontSet.clear();
    imageRenderer.reset();
}

void SimpleUI::init(uint32_t width, uint32_t height) {
    screenWidth = width;
    screenHeight = height;
    glClearColor(0.2F, 0.2F, 0.2F, 0.0F);

    // INSTALL_ROOT ends in a backslash, so the path holds "\/". The device accepts it, and every
    // path of the GUI data and of the log contains it. Kept.
    const std::string guiData = INSTALL_ROOT + "/" + keylayout::GUI_DATA;
    SystemSettings::instance().dataFolder = guiData;
    Logger::instance().setPath(guiData + "../../" + keylayout::LOG);

    const int32_t language = SystemConfig::instance().getLanguage();
    fontSet.loadFonts(language);
    StringTable::instance().setLanguage(language);

    imageRenderer.reset(new (std::nothrow) ImageRenderer);
    backgroundTexture = loadRawLuminanceTexture((guiData + layout::BACKGROUND_FILE).c_str(),
                                                layout::BACKGROUND_SIDE, 0);
    // Builds the program now, so that no frame has to wait for the shader compiler.
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
        // Retried on every frame: in automatic mode nobody is there to press a key.
        if (updater.getState() == UpdateComplete)
            launchMainApp();
    }
    updater.step();
}

void SimpleUI::onKey(WPARAM virtualKey) {
    // STOP works in every state; pressed during an update, it abandons the update.
    if (updater.getState() == UpdateFailed || virtualKey == VK_END) {
        restart();
    } else if (virtualKey == VK_HOME && updater.getState() == ReadyToUpdate &&
               updater.isMediaReady()) {
        updater.startUpdate();
    }
}

// Starts the main application; when an earlier start has failed, exits without it.
void SimpleUI::restart() {
    if (restartAttempted)
        std::exit(0);
    launchMainApp();
}

void SimpleUI::launchMainApp() {
    const WideString path =
        widen(INSTALL_ROOT + keylayout::APPLICATION + PATH_SEPARATOR + keylayout::PROGRAM);
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
