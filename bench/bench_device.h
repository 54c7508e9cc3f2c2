// A simulated device for measurements, in a folder of its own below the temporary folder (TMPDIR).
// Unlike the DeviceFolder of the tests it starts no second process, which would be measured too.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

class BenchDevice {
  public:
    // Creates the folder and makes it the device root of this process and its children.
    BenchDevice();
    BenchDevice(const BenchDevice&) = delete;
    BenchDevice& operator=(const BenchDevice&) = delete;
    ~BenchDevice();

    const std::filesystem::path& root() const { return root_; }

    // Writes a file below the root, and creates its parent folders.
    void write(const std::string& path, const std::string& bytes) const;

    // Creates an update key: half of the files in "KSTRL", the other half in subfolders of the GUI
    // data, each with `size` bytes; and `lines` lines of release notes.
    void makeKey(std::size_t files, std::size_t size, std::size_t lines) const;

    // Creates a key with one file of that size, and a small second one that makes the key valid.
    void makeKeyOfOneFile(std::size_t size) const;

    // Creates an installation whose "KSTRL.exe" is a program that exits at once.
    void makeInstallation() const;

    // Creates the GUI data of the simulated instrument.
    void makeGuiData(const std::string& folder) const;

  private:
    std::filesystem::path root_;
};
