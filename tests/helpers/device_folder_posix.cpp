#include <signal.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>

#include "platform/posix/call_hook.h"
#include "platform/posix/files/device.h"
#include "platform/posix/processes/device_processes.h"
#include "tests/helpers/device_folder.h"

DeviceFolder::DeviceFolder() {
    std::string pattern = (std::filesystem::temp_directory_path() / "updater-test-XXXXXX").string();
    if (::mkdtemp(pattern.data()) == nullptr)
        std::abort();
    root_ = pattern;
    setDeviceRoot(pattern);
}

DeviceFolder::~DeviceFolder() {
    setCallHook({});
    setDeviceRoot(root_.string());
    for (const host::DeviceProcess& application : host::deviceProcesses())
        ::kill(static_cast<pid_t>(application.id), SIGKILL);
    namespace fs = std::filesystem;
    std::error_code ignored;
    const auto isOnDevice = [&](const fs::directory_entry& descriptor) {
        return fs::read_symlink(descriptor, ignored).string().rfind(root_.string() + "/", 0) == 0;
    };
    if (std::count_if(fs::directory_iterator("/proc/self/fd"), fs::directory_iterator(),
                      isOnDevice) > 1) {
        std::fputs("A call left a file open: more is open than the log.\n", stderr);
        std::abort();
    }
    fs::remove_all(root_, ignored);
}

void DeviceFolder::setLanguage(int language) const {
    write("registry.reg",
          "Windows Registry Editor Version 5.00\n\n"
          "[HKEY_LOCAL_MACHINE\\" +
              std::string(CONFIG_KEY) + "]\n\"LANGUAGE\"=dword:" + std::to_string(language) + "\n");
}

bool underWine() {
    return false;
}
