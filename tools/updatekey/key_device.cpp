#include "tools/updatekey/key_device.h"

#include <cerrno>
#include <cstdlib>
#include <stdexcept>
#include <system_error>

#include "platform/posix/call_hook.h"
#include "platform/posix/device.h"
#include "support/logger.h"

namespace fs = std::filesystem;

namespace {

// The engine's traces are for the debugger of the device, not for the user of this tool.
DWORD keepTracesQuiet(const HookedCall& call) {
    return std::string(call.name) == "OutputDebugStringW" ? ERROR_GEN_FAILURE : ERROR_SUCCESS;
}

}  // namespace

KeyDevice::KeyDevice(const fs::path& key)
    : previousRoot_(deviceRoot()),
      root_(makeTemporaryFolder(fs::temp_directory_path() / "updatekey-device")) {
    fs::create_directories(root_ / "FlashDisk/VELD/KSTRL");
    fs::create_directories(root_ / "FlashDisk/VELD/ORBUI");
    fs::create_directory_symlink(fs::canonical(key), root_ / "USB HD");
    setDeviceRoot(root_.string());
    setCallHook(keepTracesQuiet);
    Logger::instance().setPath("/FlashDisk/VELD/Updater-log.txt");
}

KeyDevice::~KeyDevice() {
    setCallHook({});
    setDeviceRoot(previousRoot_);
    removeTemporaryFolder(root_);
}

fs::path makeTemporaryFolder(const fs::path& stem) {
    std::string pattern = stem.string() + "-XXXXXX";
    if (::mkdtemp(pattern.data()) == nullptr)
        throw std::runtime_error("cannot make the folder " + pattern + ": " +
                                 std::generic_category().message(errno));
    return pattern;
}

void removeTemporaryFolder(const fs::path& folder) {
    std::error_code error;
    fs::remove_all(folder, error);
    if (!error)
        return;
    for (fs::recursive_directory_iterator entry(folder, error), end; entry != end;
         entry.increment(error)) {
        std::error_code ignored;
        if (entry->is_directory(ignored) && !entry->is_symlink(ignored))
            fs::permissions(entry->path(), fs::perms::owner_all, fs::perm_options::add, ignored);
    }
    fs::remove_all(folder, error);
}
