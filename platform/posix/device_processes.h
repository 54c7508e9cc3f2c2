// Which processes of the host are the simulated device's: those whose program, or the script that
// their program reads, lies below the device folder. Files are compared by device and inode; a
// process that sees other files or numbers processes otherwise than the updater (in a container,
// say) is none of the device's. What is in doubt is the host's: it is never ended.
#pragma once

#include <string>
#include <vector>

#include "platform/posix/win32_api.h"

namespace host {

struct DeviceProcess {
    DWORD id;
    std::string name;  // of the program's or the script's file
};

// Those that run now, by number.
std::vector<DeviceProcess> deviceProcesses();

// A descriptor that holds process `id`, so that the number cannot come to mean another one. Returns
// -1 with errno ESRCH when there is none, and EPERM when it is not the device's.
int openDeviceProcess(DWORD id);

}  // namespace host
