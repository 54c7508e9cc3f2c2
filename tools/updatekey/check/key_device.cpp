#include "tools/updatekey/check/key_device.h"

#include "platform/posix/call_hook.h"
#include "platform/posix/files/device.h"
#include "support/logger.h"
#include "tools/updatekey/check/key_paths.h"

namespace fs = std::filesystem;

namespace {

// Drops the engine's debugger messages, which are not meant for the user of this tool.
DWORD keepTracesQuiet(const HookedCall& call) {
    return std::string(call.name) == "OutputDebugStringW" ? ERROR_GEN_FAILURE : ERROR_SUCCESS;
}

}  // namespace

KeyDevice::KeyDevice(const fs::path& key)
    : previousRoot_(deviceRoot()), folder_(fs::temp_directory_path() / "updatekey-device") {
    const fs::path flash = root() / fs::path(keylayout::FLASH_ROOT).relative_path();
    for (const std::string folder : {keylayout::APPLICATION, keylayout::GUI})
        fs::create_directories(flash / folder);
    const fs::path plug = fs::path(keylayout::USB_ROOT).relative_path().parent_path();
    fs::create_directory_symlink(fs::canonical(key), root() / plug);
    setDeviceRoot(root().string());
    setCallHook(keepTracesQuiet);
    Logger::instance().setPath(std::string(keylayout::FLASH_ROOT) + keylayout::LOG);
}

KeyDevice::~KeyDevice() {
    setCallHook({});
    setDeviceRoot(previousRoot_);
}
