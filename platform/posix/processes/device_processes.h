// Finds the host processes that belong to the simulated device: those whose program lies below the
// device folder. Files are compared by device and inode. A process in another mount or process
// namespace (a container, for example) does not belong to the device, nor does a script, whose
// program is its interpreter. A process that cannot be identified with certainty is never ended.
#pragma once

#include <string>
#include <vector>

#include "platform/posix/files/descriptor.h"
#include "platform/posix/win32_api.h"

namespace host {

// The folder of the device that is its flash disk.
constexpr const char FLASH_DISK[] = "FlashDisk";

// Returns the target of a link, such as those of /proc; empty when there is none.
std::string readLink(const std::string& path);

struct DeviceProcess {
    DWORD id;
    std::string name;  // file name of the program
};

// Returns the running processes of the device, in any order.
std::vector<DeviceProcess> deviceProcesses();

// Opens process `id` as a descriptor, which keeps referring to this process when the id is reused.
// Returns 0 or the Windows error: 87 when there is no such process, 5 when it is not the device's.
DWORD openDeviceProcess(DWORD id, Descriptor& process);

}  // namespace host
