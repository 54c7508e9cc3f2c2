// A device folder for a fuzz target that reads its input from a file: one a process, in memory
// where that can be, gone when the process ends.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "platform/posix/call_hook.h"
#include "platform/posix/device.h"

class FuzzDevice {
  public:
    FuzzDevice() {
        std::string pattern = (std::filesystem::temp_directory_path() / "fuzz-XXXXXX").string();
        root_ = ::mkdtemp(pattern.data());
        setDeviceRoot(root_);
        // Traces would drown the fuzzer's own lines.
        setCallHook([](const HookedCall& call) {
            const std::string name = call.name;
            return name == "OutputDebugStringW" ? ERROR_GEN_FAILURE : ERROR_SUCCESS;
        });
    }
    FuzzDevice(const FuzzDevice&) = delete;
    FuzzDevice& operator=(const FuzzDevice&) = delete;
    ~FuzzDevice() {
        setCallHook({});
        std::error_code error;
        std::filesystem::remove_all(root_, error);
    }

    // Writes a file; `path` is relative to the device's root.
    void write(const std::string& path, const uint8_t* data, std::size_t size) const {
        const std::filesystem::path file = std::filesystem::path(root_) / path;
        std::filesystem::create_directories(file.parent_path());
        std::ofstream(file, std::ios::binary)
            .write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
    }

    std::string read(const std::string& path) const {
        std::ifstream file(std::filesystem::path(root_) / path, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    }

  private:
    std::string root_;
};
