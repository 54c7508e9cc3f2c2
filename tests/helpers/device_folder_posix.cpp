#include "platform/posix/call_hook.h"
#include "platform/posix/device.h"
#include "tests/helpers/device_folder.h"
#include "tests/helpers/scratch.h"

DeviceFolder::DeviceFolder() : root_(makeScratchFolder()) {
    setDeviceRoot(root_.string());
}

DeviceFolder::~DeviceFolder() {
    setCallHook({});
    removeScratchFolder(root_);
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
