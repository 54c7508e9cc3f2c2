#include "bench/bench_device.h"

#include <unistd.h>

#include <cstdlib>
#include <fstream>

#include "platform/posix/files/device.h"
#include "update/key_layout.h"

namespace fs = std::filesystem;

constexpr std::size_t FILES_PER_SUBFOLDER = 500;

BenchDevice::BenchDevice() {
    std::string pattern = (fs::temp_directory_path() / "bench-XXXXXX").string();
    root_ = ::mkdtemp(pattern.data());
    setDeviceRoot(root_.string());
    ::setenv("UPDATER_DEVICE", root_.c_str(), 1);
}

BenchDevice::~BenchDevice() {
    std::error_code error;
    fs::remove_all(root_, error);
}

void BenchDevice::write(const std::string& path, const std::string& bytes) const {
    fs::create_directories((root_ / path).parent_path());
    std::ofstream(root_ / path, std::ios::binary) << bytes;
}

void BenchDevice::makeKey(std::size_t files, std::size_t size, std::size_t lines) const {
    const std::string bytes(size, 'x');
    const std::string key = "USB HD/VELD/";
    const std::size_t half = files / 2;
    for (std::size_t i = 0; i < files; ++i) {
        // Files are created in the order of their names, so that the disk stores them in this
        // order.
        const std::string number = std::to_string(i);
        const std::string name = "file" + std::string(6 - number.size(), '0') + number + ".dat";
        const std::string folder =
            i < half ? "KSTRL/"
                     : "ORBUI/data/d" + std::to_string((i - half) / FILES_PER_SUBFOLDER) + "/";
        write(key + folder + name, bytes);
    }
    std::string notes = std::string(keylayout::VERSION_PREFIX) + "2.14.3\n";
    for (std::size_t i = 1; i < lines; ++i)
        notes += "- Depth slice " + std::to_string(i) + " is drawn as measured\n";
    write(key + keylayout::RELEASE_NOTES, lines > 0 ? notes : "");
}

void BenchDevice::makeKeyOfOneFile(std::size_t size) const {
    write("USB HD/VELD/KSTRL/file.dat", std::string(size, 'x'));
    write("USB HD/VELD/ORBUI/data/small.dat", "x");
}

void BenchDevice::makeInstallation() const {
    write("FlashDisk/VELD/KSTRL/KSTRL.exe", "#!/bin/sh\n");
    fs::permissions(root_ / "FlashDisk/VELD/KSTRL/KSTRL.exe", fs::perms::owner_all);
    makeGuiData("FlashDisk/VELD/ORBUI/data");
}

void BenchDevice::makeGuiData(const std::string& folder) const {
    fs::create_directories((root_ / folder).parent_path());
    fs::copy(GUIDATA, root_ / folder, fs::copy_options::recursive);
}
