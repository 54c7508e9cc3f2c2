// A simulated device for targets whose input is a file.
#pragma once

#include <cstdint>
#include <cstdlib>

#include "platform/posix/call_hook.h"
#include "tests/helpers/device_folder.h"

class FuzzDevice : public DeviceFolder {
  public:
    FuzzDevice() {
        // Traces would hide the fuzzer's own output.
        setCallHook([](const HookedCall& call) {
            const std::string name = call.name;
            return name == "OutputDebugStringW" ? ERROR_GEN_FAILURE : ERROR_SUCCESS;
        });
    }

    // Writes a file; `path` is relative to the device's root.
    void write(const std::string& path, const uint8_t* data, std::size_t size) const {
        DeviceFolder::write(path, std::string(reinterpret_cast<const char*>(data), size));
    }
};
