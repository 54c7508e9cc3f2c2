#include "tools/host/trial_device.h"

#include <stdexcept>

#include "platform/win32.h"
#include "support/logger.h"
#include "support/text.h"
#include "update/key_layout.h"

namespace fs = std::filesystem;

namespace {

std::string installation;

// The engine's paths are Latin-1. A folder with other characters usually has a short name too.
std::string narrowPath(const fs::path& folder) {
    std::wstring path = folder.wstring();
    WCHAR shortPath[MAX_PATH] = {};
    if (narrow(path).find('?') != std::string::npos &&
        GetShortPathNameW(path.c_str(), shortPath, MAX_PATH) != 0)
        path = shortPath;
    if (narrow(path).find('?') != std::string::npos)
        throw std::runtime_error("the path of the folder for temporary files, " + folder.string() +
                                 ", has characters outside Latin-1; set TMP to another folder");
    return narrow(path);
}

}  // namespace

// The key is the current folder, so that its own path may have any characters and length.
TrialDevice::TrialDevice(const fs::path& key)
    : previous_(fs::current_path()), folder_(fs::temp_directory_path() / "updatekey-device") {
    for (const std::string folder : {keylayout::APPLICATION, keylayout::GUI})
        fs::create_directories(root() / folder);
    installation = narrowPath(root()) + "\\";
    fs::current_path(key);
    // An open log would keep the folder from being deleted.
    Logger::instance().setPath("NUL");
}

TrialDevice::~TrialDevice() {
    std::error_code ignored;
    fs::current_path(previous_, ignored);
}

// As long as the path on the device, because the engine finds no file whose path is too long.
const std::string& TrialDevice::usbRoot() {
    static const std::string ROOT = "././././";
    return ROOT;
}

const std::string& TrialDevice::flashRoot() {
    return installation;
}
