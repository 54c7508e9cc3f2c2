#include <cstdlib>

#include "platform/posix/call_hook.h"
#include "platform/posix/device.h"
#include "tests/support/device_folder.h"

DeviceFolder::DeviceFolder() {
    std::string pattern = (std::filesystem::temp_directory_path() / "device-XXXXXX").string();
    root_ = ::mkdtemp(pattern.data());
    setDeviceRoot(root_.string());
}

DeviceFolder::~DeviceFolder() {
    setCallHook({});
    std::error_code error;
    std::filesystem::remove_all(root_, error);
}

void DeviceFolder::setLanguage(int language) const {
    write("registry.reg",
          "Windows Registry Editor Version 5.00\n\n"
          "[HKEY_LOCAL_MACHINE\\SOFTWARE\\VELD\\KESTREL\\SYSTEM_CONFIG]\n"
          "\"LANGUAGE\"=dword:" +
              std::to_string(language) + "\n");
}

bool underWine() {
    return false;
}
