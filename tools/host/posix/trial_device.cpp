#include "tools/host/trial_device.h"

#include <string_view>

#include "platform/posix/call_hook.h"
#include "platform/posix/files/device.h"
#include "platform/posix/processes/device_processes.h"
#include "support/logger.h"
#include "update/key_layout.h"

namespace fs = std::filesystem;

static_assert(std::string_view(keylayout::FLASH_ROOT).substr(1, sizeof host::FLASH_DISK - 1) ==
                  host::FLASH_DISK,
              "the platform and the engine mean the same flash disk");

namespace {

// Drops the engine's debugger messages, which are not meant for the user of this tool.
DWORD keepTracesQuiet(const HookedCall& call) {
    return std::string(call.name) == "OutputDebugStringW" ? ERROR_GEN_FAILURE : ERROR_SUCCESS;
}

}  // namespace

TrialDevice::TrialDevice(const fs::path& key)
    : previous_(deviceRoot()), folder_(fs::temp_directory_path() / "updatekey-device") {
    const fs::path flash = root() / fs::path(flashRoot()).relative_path();
    for (const std::string folder : {keylayout::APPLICATION, keylayout::GUI})
        fs::create_directories(flash / folder);
    const fs::path plug = fs::path(usbRoot()).relative_path().parent_path();
    fs::create_directory_symlink(fs::canonical(key), root() / plug);
    setDeviceRoot(root().string());
    setCallHook(keepTracesQuiet);
    Logger::instance().setPath(flashRoot() + keylayout::LOG);
}

TrialDevice::~TrialDevice() {
    setCallHook({});
    setDeviceRoot(previous_.string());
}

const std::string& TrialDevice::usbRoot() {
    static const std::string ROOT = keylayout::USB_ROOT;
    return ROOT;
}

const std::string& TrialDevice::flashRoot() {
    static const std::string ROOT = keylayout::FLASH_ROOT;
    return ROOT;
}
