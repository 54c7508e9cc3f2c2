#include "tools/host/virtual_screen.h"

#include <chrono>
#include <stdexcept>
#include <thread>

#include "platform/instrument_screen.h"
#include "tools/host/host_file.h"

namespace fs = std::filesystem;

VirtualScreen::VirtualScreen() : folder_(fs::temp_directory_path() / "screen") {
    const fs::path number = folder_.path() / "number";
    const fs::path errors = folder_.path() / "errors";
    const std::string size = std::to_string(instrument::SCREEN_WIDTH) + "x" +
                             std::to_string(instrument::SCREEN_HEIGHT) + "x24";
    server_.emplace(Command{{"Xvfb", "-displayfd", "1", "-screen", "0", size, "-nolisten", "tcp"},
                            {},
                            {},
                            number,
                            errors});
    // The server takes a free number and prints it when it is ready.
    while (readHostFileIfThere(number).find('\n') == std::string::npos) {
        if (server_->hasEnded())
            throw std::runtime_error("the virtual screen cannot be started: " +
                                     readHostFileIfThere(errors));
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    const std::string printed = readHostFile(number);
    name_ = ":" + printed.substr(0, printed.find('\n'));
}
